/// \file
/// The desktop window that shows the phone's screen.
#pragma once

#include <SDL.h>

#include <memory>
#include <string>

#include "host.h"

namespace sdl {

struct Destroy {
  void operator()(SDL_Window* window) const { SDL_DestroyWindow(window); }
  void operator()(SDL_Renderer* renderer) const { SDL_DestroyRenderer(renderer); }
  void operator()(SDL_Texture* texture) const { SDL_DestroyTexture(texture); }
  void operator()(SDL_Cursor* cursor) const { SDL_FreeCursor(cursor); }
};

class Window {
 public:
  /// `scale` desktop pixels for one of the phone's; 0: the largest that fits the display, up to 3.
  explicit Window(int scale) : scale_(scale) {}

  /// Shows the screen; the first one opens the window. False when that cannot be done (SDL_GetError tells why).
  bool Show(const phone::ScreenImage& screen);
  /// Shows the last screen again.
  void Refresh();
  /// Milliseconds between two frames of the display the window is on.
  std::uint32_t FrameTime() const;

  void ShowCursor(phone::Cursor cursor);
  void Minimise();
  void Hide();
  void Raise();
  /// Adds a notice to the window's title; empty: none.
  void ShowNotice(const std::string& notice);

 private:
  bool Open(int width, int height);
  bool FitTexture(int width, int height);

  int scale_;
  std::unique_ptr<SDL_Window, Destroy> window_;
  std::unique_ptr<SDL_Renderer, Destroy> renderer_;
  std::unique_ptr<SDL_Texture, Destroy> texture_;
  std::unique_ptr<SDL_Cursor, Destroy> wait_cursor_;
};

}  // namespace sdl
