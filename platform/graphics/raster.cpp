#include "graphics/raster.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <new>
#include <vector>

namespace phone {

namespace {

/// The source pixels that a run of target pixels shows: floor((i + 1/2) * source / target) for i from first, found by
/// adding up instead of dividing.
class NearestSteps {
 public:
  NearestSteps(std::int64_t first, std::int64_t source, std::int64_t target) noexcept
      : step_(source / target), fraction_step_(2 * (source % target)), scale_(2 * target) {
    const std::int64_t position = (2 * first + 1) * source;
    index_ = position / scale_;
    fraction_ = position % scale_;
  }

  int Next() noexcept {
    const std::int64_t index = index_;
    index_ += step_;
    fraction_ += fraction_step_;
    if (fraction_ >= scale_) {
      fraction_ -= scale_;
      ++index_;
    }
    return static_cast<int>(index);
  }

 private:
  std::int64_t step_;
  std::int64_t fraction_step_;
  std::int64_t scale_;
  std::int64_t index_;
  std::int64_t fraction_;
};

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
    const int* const columns = columns_.data();
    for (int i = 0; i < width_; ++i) row[i] = pixels[columns[i]];
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

/// A mask of that opacity.
pixman_image_t* OpacityMask(std::uint8_t opacity) {
  static std::array<PixmanImage, 256> masks;
  PixmanImage& mask = masks[opacity];
  if (mask == nullptr) {
    const pixman_color_t color = {0, 0, 0, static_cast<std::uint16_t>(opacity * 257)};
    mask.reset(pixman_image_create_solid_fill(&color));
    if (mask == nullptr) throw std::bad_alloc();
  }
  return mask.get();
}

/// Blends an area that needs no scaling.
void BlendUnscaled(Bitmap& target, const Area& visible, Bitmap& source, int source_x, int source_y,
                   const Blending& blending) {
  constexpr std::uint8_t kOpaque = 255;
  pixman_image_t* const mask = blending.opacity == kOpaque ? nullptr : OpacityMask(blending.opacity);
  pixman_image_t* const pixels = blending.source_alpha ? source.translucent() : source.opaque();
  pixman_image_composite32(PIXMAN_OP_OVER, pixels, mask, target.opaque(), source_x, source_y, 0, 0,
                           static_cast<int>(visible.x), static_cast<int>(visible.y), static_cast<int>(visible.width),
                           static_cast<int>(visible.height));
}

/// A copy of a part of a bitmap, for drawing a bitmap on itself.
Ref<Bitmap> CopyOf(Bitmap& source, const Area& from) {
  Ref<Bitmap> copy = Bitmap::Create(static_cast<int>(from.width), static_cast<int>(from.height));
  if (!copy) throw std::bad_alloc();
  CopyPixels(*copy, AreaOf(*copy), source, static_cast<int>(from.x), static_cast<int>(from.y));
  return copy;
}

}  // namespace

std::optional<Area> Intersect(const Area& a, const Area& b) noexcept {
  const std::int64_t left = std::max(a.x, b.x);
  const std::int64_t top = std::max(a.y, b.y);
  const std::int64_t right = std::min(a.x + a.width, b.x + b.width);
  const std::int64_t bottom = std::min(a.y + a.height, b.y + b.height);
  if (left >= right || top >= bottom) return std::nullopt;
  return Area{left, top, right - left, bottom - top};
}

Area AreaOf(const RECT& rect) noexcept {
  return {rect.left, rect.top, std::int64_t{rect.right} - rect.left, std::int64_t{rect.bottom} - rect.top};
}

bool Contains(const Area& outer, const Area& inner) noexcept {
  return inner.x >= outer.x && inner.y >= outer.y && inner.x + inner.width <= outer.x + outer.width &&
         inner.y + inner.height <= outer.y + outer.height;
}

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
  if (whole.width == from.width && whole.height == from.height) {
    const auto source_x = static_cast<int>(from.x + visible.x - whole.x);
    const auto source_y = static_cast<int>(from.y + visible.y - whole.y);
    return BlendUnscaled(target, visible, source, source_x, source_y, blending);
  }
  RowScaler scaler(whole, visible, source, from);
  Bitmap& scratch = Scratch(static_cast<int>(visible.width));
  Area band = visible;
  for (std::int64_t done = 0; done < visible.height; done += band.height) {
    band.y = visible.y + done;
    band.height = std::min<std::int64_t>(visible.height - done, scratch.height());
    scaler.ForgetFormer();
    for (int row = 0; row < band.height; ++row) scaler.Next(scratch.Row(row));
    BlendUnscaled(target, band, scratch, 0, 0, blending);
  }
}

void FillPixels(Bitmap& target, const Area& area, COLORREF color, std::uint8_t opacity) {
  constexpr std::uint8_t kOpaque = 255;
  const std::optional<Area> visible = Intersect(area, AreaOf(target));
  if (!visible || opacity == 0) return;
  pixman_image_t* const mask = opacity == kOpaque ? nullptr : OpacityMask(opacity);
  pixman_image_composite32(PIXMAN_OP_OVER, SolidColor(color), mask, target.opaque(), 0, 0, 0, 0,
                           static_cast<int>(visible->x), static_cast<int>(visible->y), static_cast<int>(visible->width),
                           static_cast<int>(visible->height));
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
