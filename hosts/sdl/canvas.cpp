#include "hosts/sdl/canvas.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "windows/style.h"

namespace sdl {
namespace {

/// The ways into a window, the fastest first.
enum class Way {
  accelerated_in_step,  ///< with the display's refresh, so that no frame is torn
  accelerated,
  software,
  surface,  ///< the window's own pixels, where not even a renderer can be had
};
constexpr Way kWays[] = {Way::accelerated_in_step, Way::accelerated, Way::software, Way::surface};

constexpr COLORREF kAround = phone::style::kSeam;  ///< beside the phone's screen

SDL_Renderer* OpenRenderer(SDL_Window* window, Way way) {
  switch (way) {
    case Way::accelerated_in_step:
      return SDL_CreateRenderer(window, -1, SDL_RENDERER_ACCELERATED | SDL_RENDERER_PRESENTVSYNC);
    case Way::accelerated: return SDL_CreateRenderer(window, -1, SDL_RENDERER_ACCELERATED);
    case Way::software: return SDL_CreateRenderer(window, -1, SDL_RENDERER_SOFTWARE);
    case Way::surface: break;
  }
  SDL_Surface* const surface = SDL_GetWindowSurface(window);
  return surface ? SDL_CreateSoftwareRenderer(surface) : nullptr;
}

}  // namespace

bool Canvas::Open(SDL_Window* window) {
  window_ = window;
  for (way_ = 0; way_ < std::size(kWays); ++way_)
    if (OpenWay()) return true;
  return false;
}

void Canvas::Abandon() {
  for (Sprite& layer : layers_) std::ignore = layer.texture.release();
  if (screen_) std::ignore = screen_->texture.release();
  std::ignore = renderer_.release();
  window_ = nullptr;
}

Size Canvas::OutputSize() const {
  Size size;
  if (renderer_) SDL_GetRendererOutputSize(renderer_.get(), &size.width, &size.height);
  return size;
}

void Canvas::SetScreen(const phone::ScreenImage& screen) {
  const bool fits = screen_ && screen_->pixels.width() == screen.width && screen_->pixels.height() == screen.height;
  if (!fits) screen_ = std::make_unique<Sprite>(Sprite{phone::Surface(screen.width, screen.height), {}, {}, true});
  for (int y = 0; y < screen.height; ++y) {
    const std::uint32_t* const row = screen.pixels + static_cast<std::ptrdiff_t>(y) * screen.stride;
    std::copy_n(row, screen.width, screen_->pixels.pixels() + static_cast<std::ptrdiff_t>(y) * screen.width);
  }
  screen_->stale = true;
}

void Canvas::SetLayers(std::vector<Layer> layers) {
  layers_.clear();
  for (Layer& layer : layers) layers_.push_back({std::move(layer.picture), layer.at, {}, true});
}

bool Canvas::Draw() {
  if (!window_) return true;
  while (!DrawOnce()) {
    // A way that was good may only have to be opened again: the window's pixels go with its size.
    if (OpenWay() && DrawOnce()) return true;
    do {
      if (++way_ >= std::size(kWays)) return false;
    } while (!OpenWay());
  }
  return true;
}

void Canvas::Resized() {
  if (way_ >= std::size(kWays) || kWays[way_] != Way::surface) return;
  DropTextures();
  renderer_.reset();
  OpenWay();
}

void Canvas::Lost() {
  DropTextures();
}

bool Canvas::OpenWay() {
  DropTextures();
  renderer_.reset();
  renderer_.reset(OpenRenderer(window_, kWays[way_]));
  return renderer_ != nullptr;
}

bool Canvas::DrawOnce() {
  SDL_Renderer* const renderer = renderer_.get();
  constexpr auto part = [](int shift) { return static_cast<Uint8>(kAround >> shift); };
  if (!renderer || SDL_SetRenderDrawColor(renderer, part(0), part(8), part(16), SDL_ALPHA_OPAQUE) != 0 ||
      SDL_RenderClear(renderer) != 0)
    return false;
  if (screen_) {
    const Size size = {screen_->pixels.width(), screen_->pixels.height()};
    if (!DrawSprite(*screen_, PlacePicture(size, OutputSize()))) return false;
  }
  for (Sprite& layer : layers_)
    if (!DrawSprite(layer, {layer.at.x, layer.at.y, layer.pixels.width(), layer.pixels.height()})) return false;
  SDL_RenderPresent(renderer);
  return kWays[way_] != Way::surface || SDL_UpdateWindowSurface(window_) == 0;
}

bool Canvas::DrawSprite(Sprite& sprite, const SDL_Rect& target) {
  const int width = sprite.pixels.width();
  if (!sprite.texture) {
    sprite.texture.reset(SDL_CreateTexture(renderer_.get(), SDL_PIXELFORMAT_RGB888, SDL_TEXTUREACCESS_STREAMING, width,
                                           sprite.pixels.height()));
    sprite.stale = true;
  }
  if (!sprite.texture) return false;
  const int pitch = width * static_cast<int>(sizeof(std::uint32_t));
  if (sprite.stale && SDL_UpdateTexture(sprite.texture.get(), nullptr, sprite.pixels.pixels(), pitch) != 0)
    return false;
  sprite.stale = false;
  return SDL_RenderCopy(renderer_.get(), sprite.texture.get(), nullptr, &target) == 0;
}

void Canvas::DropTextures() {
  if (screen_) screen_->texture.reset();
  for (Sprite& layer : layers_) layer.texture.reset();
}

}  // namespace sdl
