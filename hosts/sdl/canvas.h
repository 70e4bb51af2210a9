/// \file
/// Brings pictures into a window, by the fastest way that works.
#pragma once

#include <SDL.h>

#include <memory>
#include <vector>

#include "graphics/surface.h"
#include "hosts/sdl/geometry.h"

namespace sdl {

struct Destroy {
  void operator()(SDL_Window* window) const { SDL_DestroyWindow(window); }
  void operator()(SDL_Renderer* renderer) const { SDL_DestroyRenderer(renderer); }
  void operator()(SDL_Texture* texture) const { SDL_DestroyTexture(texture); }
  void operator()(SDL_Cursor* cursor) const { SDL_FreeCursor(cursor); }
  void operator()(SDL_Surface* surface) const { SDL_FreeSurface(surface); }
};

/// A picture that lies over the phone's screen, in the window's own pixels.
struct Layer {
  phone::Surface picture;
  SDL_Point at;  ///< px, in the window
};

class Canvas {
 public:
  /// False when no way leads into the window (SDL_GetError tells why).
  bool Open(SDL_Window* window);
  /// Nothing is freed, because what it was made with is gone.
  void Abandon();

  /// The window's pixels.
  Size OutputSize() const;
  /// What is drawn from now on; the pixels are copied.
  void SetScreen(const phone::ScreenImage& screen);
  void SetLayers(std::vector<Layer> layers);
  /// Draws the screen in the middle, and the layers. False when no way works any more.
  bool Draw();

  /// The window has another size.
  void Resized();
  /// What the display held is lost.
  void Lost();

 private:
  struct Sprite {
    phone::Surface pixels;
    SDL_Point at = {0, 0};
    std::unique_ptr<SDL_Texture, Destroy> texture;
    bool stale = true;  ///< the texture does not show the pixels yet
  };

  bool OpenWay();
  bool DrawOnce();
  bool DrawSprite(Sprite& sprite, const SDL_Rect& target);
  void DropTextures();

  SDL_Window* window_ = nullptr;
  std::size_t way_ = 0;
  std::unique_ptr<SDL_Renderer, Destroy> renderer_;
  std::unique_ptr<Sprite> screen_;
  std::vector<Sprite> layers_;
};

}  // namespace sdl
