/// \file
/// Pixels: four bytes each, blue, green, red and alpha in memory order.
#pragma once

#include <pixman.h>

#include <cstddef>
#include <cstdint>
#include <memory>

#include "graphics/area.h"
#include "graphics/object.h"

namespace phone {

struct PixmanRelease {
  void operator()(pixman_image_t* image) const noexcept { pixman_image_unref(image); }
};
using PixmanImage = std::unique_ptr<pixman_image_t, PixmanRelease>;

/// The largest extent: pixman's coordinates have 16 bits.
inline constexpr int kMaxExtent = 32767;  // px
inline constexpr std::int64_t kMaxPixels = std::int64_t{1} << 26;

enum class RowOrder { top_down, bottom_up };

class Bitmap : public GraphicsObject {
 public:
  /// Black and transparent at first. Null when the size is negative or absurd, or there is no memory.
  static Ref<Bitmap> Create(int width, int height, RowOrder order = RowOrder::top_down) noexcept;

  int width() const noexcept { return width_; }    // px
  int height() const noexcept { return height_; }  // px
  std::uint32_t* memory() const noexcept { return memory_.get(); }
  std::uint32_t* Row(int y) const noexcept { return top_ + y * pitch_; }

  /// The pixels for pixman, without their fourth byte and with it.
  pixman_image_t* opaque() const noexcept { return opaque_.get(); }
  pixman_image_t* translucent() const noexcept { return translucent_.get(); }

  /// The part `from` of the translucent pixels, scaled to a size. Null where pixman does not sample just the pixels
  /// that nearest.h names, or has no memory. It stays valid until the next call.
  pixman_image_t* Scaled(const Area& from, std::int64_t width, std::int64_t height) noexcept;

  /// CRC-32 of the pixels, rows from the top. It is kept until ForgetChecksum.
  std::uint32_t Checksum() noexcept;
  void ForgetChecksum() noexcept { checksum_known_ = false; }

  bool shared_with_program = false;  ///< the program fills the pixels itself
  bool drawn_into = false;           ///< a drawing call has had it as its target

 private:
  /// What was scaled last: what is drawn in every frame is drawn at the same size in most.
  struct ScaledPixels {
    PixmanImage image;
    Area from;
    std::int64_t width = 0;
    std::int64_t height = 0;
    bool exact = false;
  };

  Bitmap(int width, int height, RowOrder order);
  bool SetScale() noexcept;

  int width_ = 0;
  int height_ = 0;
  std::unique_ptr<std::uint32_t[]> memory_;
  std::uint32_t* top_ = nullptr;
  std::ptrdiff_t pitch_ = 0;  // pixels from one row to the one below
  PixmanImage opaque_;
  PixmanImage translucent_;
  ScaledPixels scaled_;
  bool checksum_known_ = false;
  std::uint32_t checksum_ = 0;
};

}  // namespace phone
