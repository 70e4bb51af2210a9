#include "graphics/surface.h"

#include <new>
#include <utility>

#include "graphics/raster.h"
#include "graphics/surface_pixels.h"

namespace phone {

Surface::Surface(int width, int height) : impl_(std::make_unique<Impl>()) {
  impl_->bitmap = Bitmap::Create(width, height);
  if (!impl_->bitmap) throw std::bad_alloc();
}

Surface::~Surface() = default;
Surface::Surface(Surface&&) noexcept = default;
Surface& Surface::operator=(Surface&&) noexcept = default;

int Surface::width() const {
  return impl_->bitmap->width();
}
int Surface::height() const {
  return impl_->bitmap->height();
}
std::uint32_t* Surface::pixels() {
  return impl_->bitmap->memory();
}

ScreenImage Surface::image() const {
  const Bitmap& bitmap = *impl_->bitmap;
  return {bitmap.memory(), bitmap.width(), bitmap.height(), bitmap.width()};
}

void Surface::Fill(const RECT& rect, COLORREF color) {
  constexpr std::uint8_t kOpaque = 255;
  FillPixels(*impl_->bitmap, AreaOf(rect), color, kOpaque);
}

void Surface::Blend(const RECT& rect, COLORREF color, std::uint8_t opacity) {
  FillPixels(*impl_->bitmap, AreaOf(rect), color, opacity);
}

void Surface::Copy(const Surface& from, int x, int y) {
  Bitmap& source = *from.impl_->bitmap;
  const std::optional<Area> visible = Intersect({x, y, source.width(), source.height()}, AreaOf(*impl_->bitmap));
  if (!visible) return;
  CopyPixels(*impl_->bitmap, *visible, source, static_cast<int>(visible->x - x), static_cast<int>(visible->y - y));
}

}  // namespace phone
