#include "graphics/bitmap.h"

#include <zlib.h>

#include <algorithm>
#include <new>

namespace phone {

Ref<Bitmap> Bitmap::Create(int width, int height, RowOrder order) {
  if (width < 0 || height < 0 || width > kMaxExtent || height > kMaxExtent) return {};
  // A bitmap without pixels still has one for pixman, which knows no empty images.
  const int columns = std::max(width, 1);
  const int rows = std::max(height, 1);
  const std::int64_t count = std::int64_t{columns} * rows;
  if (count > kMaxPixels) return {};

  Ref<Bitmap> bitmap(new (std::nothrow) Bitmap);
  if (!bitmap) return {};
  bitmap->width_ = width;
  bitmap->height_ = height;
  bitmap->memory_.reset(new (std::nothrow) std::uint32_t[static_cast<std::size_t>(count)]());
  if (bitmap->memory_ == nullptr) return {};
  const bool bottom_up = order == RowOrder::bottom_up;
  bitmap->pitch_ = bottom_up ? -columns : columns;
  bitmap->top_ = bitmap->memory_.get() + (bottom_up ? std::ptrdiff_t{rows - 1} * columns : 0);
  const int stride = static_cast<int>(bitmap->pitch_) * 4;
  bitmap->opaque_.reset(pixman_image_create_bits(PIXMAN_x8r8g8b8, columns, rows, bitmap->top_, stride));
  bitmap->translucent_.reset(pixman_image_create_bits(PIXMAN_a8r8g8b8, columns, rows, bitmap->top_, stride));
  if (bitmap->opaque_ == nullptr || bitmap->translucent_ == nullptr) return {};
  return bitmap;
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
