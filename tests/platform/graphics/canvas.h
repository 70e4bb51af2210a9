/// \file
/// A memory context with a bitmap of its own, for tests to draw on and to look at.
#pragma once

#include <algorithm>
#include <cstdint>
#include <random>
#include <string_view>

#include "wingdi.h"
#include "winuser.h"

class Canvas {
 public:
  /// A negative height: the rows lie top-down in memory.
  Canvas(int width, int height) : width_(width), height_(height < 0 ? -height : height), top_down_(height < 0) {
    BITMAPINFO info = {};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), width, height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    bitmap_ = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, reinterpret_cast<void**>(&bits_), nullptr, 0);
    dc = CreateCompatibleDC(nullptr);
    SelectObject(dc, bitmap_);
  }
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;
  ~Canvas() {
    DeleteDC(dc);
    DeleteObject(bitmap_);
  }

  HBITMAP bitmap() const { return bitmap_; }
  std::uint32_t& At(int x, int y) { return bits_[(top_down_ ? y : height_ - 1 - y) * width_ + x]; }
  std::uint32_t Color(int x, int y) { return At(x, y) & 0xFFFFFF; }

  void Fill(std::uint32_t pixel) {
    for (int i = 0; i < width_ * height_; ++i) bits_[i] = pixel;
  }

  /// Random premultiplied pixels.
  void FillWithNoise(unsigned seed) {
    std::minstd_rand random(seed);
    for (int i = 0; i < width_ * height_; ++i) {
      const std::uint32_t alpha = random() % 256;
      bits_[i] = alpha << 24;
      for (const int shift : {0, 8, 16}) bits_[i] |= static_cast<std::uint32_t>(random() % (alpha + 1)) << shift;
    }
  }

  /// The smallest rectangle that holds every pixel of another colour; empty when there is none.
  RECT Drawn(std::uint32_t background) {
    RECT found = {width_, height_, 0, 0};
    for (int y = 0; y < height_; ++y)
      for (int x = 0; x < width_; ++x)
        if (Color(x, y) != background)
          found = {std::min(found.left, x), std::min(found.top, y), std::max(found.right, x + 1),
                   std::max(found.bottom, y + 1)};
    return found;
  }

  HDC dc;

 private:
  int width_;
  int height_;
  bool top_down_;
  HBITMAP bitmap_;
  std::uint32_t* bits_ = nullptr;
};

inline HFONT MakeFont(LONG height, LONG weight = 220, std::u16string_view face = u"Verdana") {
  LOGFONTW description = {};
  description.lfHeight = height;
  description.lfWeight = weight;
  face.copy(description.lfFaceName, LF_FACESIZE - 1);
  return CreateFontIndirectW(&description);
}
