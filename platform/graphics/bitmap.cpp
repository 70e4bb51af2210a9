#include "graphics/bitmap.h"

#include <zlib.h>

#include <algorithm>
#include <new>

#include "graphics/nearest.h"

namespace phone {

namespace {

PixmanImage ImageOf(pixman_format_code_t format, int width, int height, std::uint32_t* top, std::ptrdiff_t pitch) {
  PixmanImage image(pixman_image_create_bits(format, width, height, top, static_cast<int>(pitch) * 4));
  if (image == nullptr) throw std::bad_alloc();
  return image;
}

}  // namespace

Bitmap::Bitmap(int width, int height, RowOrder order)
    : GraphicsObject(ObjectKind::bitmap), width_(width), height_(height) {
  // A bitmap without pixels still has one for pixman, which knows no empty images.
  const int columns = std::max(width, 1);
  const int rows = std::max(height, 1);
  memory_ = std::make_unique<std::uint32_t[]>(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows));
  const bool bottom_up = order == RowOrder::bottom_up;
  pitch_ = bottom_up ? -columns : columns;
  top_ = memory_.get() + (bottom_up ? std::ptrdiff_t{rows - 1} * columns : 0);
  opaque_ = ImageOf(PIXMAN_x8r8g8b8, columns, rows, top_, pitch_);
  translucent_ = ImageOf(PIXMAN_a8r8g8b8, columns, rows, top_, pitch_);
}

Ref<Bitmap> Bitmap::Create(int width, int height, RowOrder order) noexcept {
  if (width < 0 || height < 0 || width > kMaxExtent || height > kMaxExtent) return {};
  if (std::int64_t{width} * height > kMaxPixels) return {};
  try {
    return Ref<Bitmap>(new Bitmap(width, height, order));
  } catch (const std::bad_alloc&) {
    return {};
  }
}

pixman_image_t* Bitmap::Scaled(const Area& from, std::int64_t width, std::int64_t height) noexcept {
  if (from != scaled_.from || width != scaled_.width || height != scaled_.height) {
    scaled_.from = from;
    scaled_.width = width;
    scaled_.height = height;
    scaled_.exact = SetScale();
  }
  return scaled_.exact ? scaled_.image.get() : nullptr;
}

bool Bitmap::SetScale() noexcept {
  const std::optional<FixedScale> across = FindFixedScale(scaled_.from.x, scaled_.from.width, scaled_.width);
  const std::optional<FixedScale> down = FindFixedScale(scaled_.from.y, scaled_.from.height, scaled_.height);
  if (!across || !down) return false;
  if (scaled_.image == nullptr) {
    scaled_.image.reset(pixman_image_create_bits(PIXMAN_a8r8g8b8, width_, height_, top_, static_cast<int>(pitch_) * 4));
    if (scaled_.image == nullptr) return false;
    pixman_image_set_filter(scaled_.image.get(), PIXMAN_FILTER_NEAREST, nullptr, 0);
  }
  const pixman_transform_t transform = {{{across->step, 0, across->offset},  //
                                         {0, down->step, down->offset},
                                         {0, 0, pixman_fixed_1}}};
  return pixman_image_set_transform(scaled_.image.get(), &transform) != 0;
}

std::uint32_t Bitmap::Checksum() noexcept {
  if (!checksum_known_) {
    uLong sum = crc32(0, nullptr, 0);
    for (int y = 0; y < height_; ++y)
      sum = crc32(sum, reinterpret_cast<const Bytef*>(Row(y)), static_cast<uInt>(width_) * 4);
    checksum_ = static_cast<std::uint32_t>(sum);
    checksum_known_ = true;
  }
  return checksum_;
}

}  // namespace phone
