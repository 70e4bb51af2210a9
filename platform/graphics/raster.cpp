#include "graphics/raster.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <new>
#include <vector>

#include "graphics/nearest.h"

namespace phone {

namespace {

/// Scales one row after another; a row that shows the same source row as the one before is copied.
class RowScaler {
 public:
  RowScaler(const Area& whole, const Area& visible, const Bitmap& source, const Area& from)
      : source_(source),
        from_(from),
        same_width_(whole.width == from.width),
        first_x_(static_cast<int>(visible.x - whole.x)),
        width_(static_cast<int>(visible.width)),
        rows_(visible.y - whole.y, from.height, whole.height) {
    if (same_width_) return;
    if (columns_.size() < static_cast<std::size_t>(width_)) columns_.resize(static_cast<std::size_t>(width_));
    NearestSteps steps(first_x_, from.width, whole.width);
    for (int i = 0; i < width_; ++i) columns_[static_cast<std::size_t>(i)] = steps.Next();
  }

  void Next(std::uint32_t* row) noexcept {
    const int y = rows_.Next();
    if (former_ != nullptr && y == former_y_) {
      std::memcpy(row, former_, static_cast<std::size_t>(width_) * 4);
    } else {
      Scale(row, source_.Row(static_cast<int>(from_.y) + y) + from_.x);
    }
    former_ = row;
    former_y_ = y;
  }

  /// The row given last is about to be overwritten.
  void ForgetFormer() noexcept { former_ = nullptr; }

 private:
  void Scale(std::uint32_t* row, const std::uint32_t* pixels) noexcept {
    if (same_width_) {
      std::memcpy(row, pixels + first_x_, static_cast<std::size_t>(width_) * 4);
      return;
    }
    const int* column = columns_.data();
    std::uint32_t* const end = row + width_;
    // Four at a time: all are read before the first is written, so that the reads need not wait for the writes.
    for (; end - row >= 4; row += 4, column += 4) {
      const std::uint32_t four[4] = {pixels[column[0]], pixels[column[1]], pixels[column[2]], pixels[column[3]]};
      std::memcpy(row, four, sizeof four);
    }
    while (row < end) *row++ = pixels[*column++];
  }

  static std::vector<int> columns_;  // kept, so that scaling settles without allocation

  const Bitmap& source_;
  const Area from_;
  const bool same_width_;
  const int first_x_;
  const int width_;
  NearestSteps rows_;
  const std::uint32_t* former_ = nullptr;
  int former_y_ = 0;
};

std::vector<int> RowScaler::columns_;

/// A bitmap at least that wide and of about the same number of pixels whatever the width, for scaled pixels on their
/// way to be blended. Small enough to stay in the processor's cache.
Bitmap& Scratch(int width) {
  constexpr int kScratchPixels = 1 << 16;
  constexpr int kLeastWidth = 512;
  static Ref<Bitmap> scratch;
  if (!scratch || scratch->width() < width) {
    const int columns = std::max(width, kLeastWidth);
    scratch = Bitmap::Create(columns, std::max(kScratchPixels / columns, 1));
    if (!scratch) throw std::bad_alloc();
  }
  return *scratch;
}

/// A mask of that opacity; null for a mask that changes nothing.
pixman_image_t* OpacityMask(std::uint8_t opacity) {
  constexpr std::uint8_t kOpaque = 255;
  if (opacity == kOpaque) return nullptr;
  static std::array<PixmanImage, 256> masks;
  PixmanImage& mask = masks[opacity];
  if (mask == nullptr) {
    const pixman_color_t color = {0, 0, 0, static_cast<std::uint16_t>(opacity * 257)};
    mask.reset(pixman_image_create_solid_fill(&color));
    if (mask == nullptr) throw std::bad_alloc();
  }
  return mask.get();
}

/// Scales rows on their way to be blended.
void BlendScaledRows(Bitmap& target, const Area& whole, const Area& visible, const Bitmap& source, const Area& from,
                     pixman_image_t* mask, bool source_alpha) {
  RowScaler scaler(whole, visible, source, from);
  Bitmap& scratch = Scratch(static_cast<int>(visible.width));
  pixman_image_t* const pixels = source_alpha ? scratch.translucent() : scratch.opaque();
  Area band = visible;
  for (std::int64_t done = 0; done < visible.height; done += band.height) {
    band.y = visible.y + done;
    band.height = std::min<std::int64_t>(visible.height - done, scratch.height());
    scaler.ForgetFormer();
    for (int row = 0; row < band.height; ++row) scaler.Next(scratch.Row(row));
    Composite(target, band, pixels, mask, 0, 0);
  }
}

/// A copy of a part of a bitmap, for drawing a bitmap on itself.
Ref<Bitmap> CopyOf(Bitmap& source, const Area& from) {
  Ref<Bitmap> copy = Bitmap::Create(static_cast<int>(from.width), static_cast<int>(from.height));
  if (!copy) throw std::bad_alloc();
  CopyPixels(*copy, AreaOf(*copy), source, static_cast<int>(from.x), static_cast<int>(from.y));
  return copy;
}

}  // namespace

void CopyPixels(Bitmap& target, const Area& area, Bitmap& source, int source_x, int source_y) noexcept {
  const int x = static_cast<int>(area.x);
  const int y = static_cast<int>(area.y);
  const int rows = static_cast<int>(area.height);
  const std::size_t bytes = static_cast<std::size_t>(area.width) * 4;
  // A bitmap that is copied onto itself further down begins with the last row, so that no row is lost.
  const bool upwards = &target == &source && y > source_y;
  for (int i = 0; i < rows; ++i) {
    const int row = upwards ? rows - 1 - i : i;
    std::memmove(target.Row(y + row) + x, source.Row(source_y + row) + source_x, bytes);
  }
}

void StretchPixels(Bitmap& target, const Area& whole, const Area& visible, Bitmap& source, const Area& from) {
  if (&target == &source) {
    const Ref<Bitmap> copy = CopyOf(source, from);
    return StretchPixels(target, whole, visible, *copy, AreaOf(*copy));
  }
  RowScaler scaler(whole, visible, source, from);
  for (std::int64_t y = visible.y; y < visible.y + visible.height; ++y)
    scaler.Next(target.Row(static_cast<int>(y)) + visible.x);
}

void BlendPixels(Bitmap& target, const Area& whole, const Area& visible, Bitmap& source, const Area& from,
                 const Blending& blending) {
  if (blending.opacity == 0) return;
  if (&target == &source) {
    const Ref<Bitmap> copy = CopyOf(source, from);
    return BlendPixels(target, whole, visible, *copy, AreaOf(*copy), blending);
  }
  pixman_image_t* const mask = OpacityMask(blending.opacity);
  pixman_image_t* const pixels = blending.source_alpha ? source.translucent() : source.opaque();
  const Area part = {visible.x - whole.x, visible.y - whole.y, visible.width, visible.height};
  if (whole.width == from.width && whole.height == from.height)
    return Composite(target, visible, pixels, mask, from.x + part.x, from.y + part.y);
  // pixman is quick at scaling columns of translucent pixels. Everything else is quicker scaled first.
  if (blending.source_alpha && whole.width != from.width) {
    pixman_image_t* const scaled = source.Scaled(from, whole.width, whole.height);
    if (scaled != nullptr) return Composite(target, visible, scaled, mask, part.x, part.y);
  }
  BlendScaledRows(target, whole, visible, source, from, mask, blending.source_alpha);
}

void Composite(Bitmap& target, const Area& visible, pixman_image_t* source, pixman_image_t* mask, std::int64_t x,
               std::int64_t y) noexcept {
  pixman_image_composite32(PIXMAN_OP_OVER, source, mask, target.opaque(), static_cast<int>(x), static_cast<int>(y),
                           static_cast<int>(x), static_cast<int>(y), static_cast<int>(visible.x),
                           static_cast<int>(visible.y), static_cast<int>(visible.width),
                           static_cast<int>(visible.height));
}

void FillPixels(Bitmap& target, const Area& area, COLORREF color, std::uint8_t opacity) {
  const std::optional<Area> visible = Intersect(area, AreaOf(target));
  if (visible && opacity != 0) Composite(target, *visible, SolidColor(color), OpacityMask(opacity), 0, 0);
}

pixman_image_t* SolidColor(COLORREF color) {
  struct Entry {
    COLORREF color = 0;
    PixmanImage image;
  };
  static std::array<Entry, 16> entries;  // more colours than the phone's own parts and the program have
  static std::size_t oldest = 0;
  color &= 0xFFFFFF;
  for (const Entry& entry : entries)
    if (entry.image != nullptr && entry.color == color) return entry.image.get();

  const auto channel = [color](int shift) { return static_cast<std::uint16_t>(((color >> shift) & 0xFF) * 257); };
  const pixman_color_t wide = {channel(0), channel(8), channel(16), 0xFFFF};
  PixmanImage image(pixman_image_create_solid_fill(&wide));
  if (image == nullptr) throw std::bad_alloc();
  Entry& entry = entries[oldest];
  oldest = (oldest + 1) % entries.size();
  entry = {color, std::move(image)};
  return entry.image.get();
}

}  // namespace phone
