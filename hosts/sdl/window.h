/// \file
/// The desktop window that shows the phone's screen.
#pragma once

#include <SDL.h>

#include <memory>
#include <string>
#include <vector>

#include "host.h"
#include "hosts/sdl/canvas.h"
#include "hosts/sdl/geometry.h"
#include "hosts/sdl/window_state.h"

namespace sdl {

/// Where the phone's screen is in the window, in the window's pixels.
struct View {
  Size window;
  SDL_Rect screen = {0, 0, 0, 0};
  int scale = 1;  ///< px of the window for one of the phone's
};

class Window {
 public:
  /// Opens at this place and scale, as far as the displays allow.
  explicit Window(const WindowState& wanted) : state_(wanted) {}

  /// Shows the screen; the first one opens the window. False when that cannot be done (SDL_GetError tells why).
  bool Show(const phone::ScreenImage& screen);
  bool IsOpen() const { return window_ != nullptr; }
  /// Null until it is open.
  SDL_Window* handle() const { return window_.get(); }
  /// Shows everything again.
  void Refresh();
  /// What lies over the screen from now on.
  void SetLayers(std::vector<Layer> layers);
  View CurrentView() const;
  /// A place in the window (as mouse events tell it) in the window's pixels, and in the phone's; it may lie outside.
  SDL_Point ToPixels(int x, int y) const;
  SDL_Point ToScreen(int x, int y) const;
  /// A part of the phone's screen, in the window's pixels; and such a place as SDL is told of it.
  SDL_Rect PixelsOf(const RECT& part) const;
  SDL_Rect UnitsOf(const SDL_Rect& pixels) const;
  /// Milliseconds between two frames of the display the window is on.
  std::uint32_t FrameTime() const;

  /// What is to be remembered.
  const WindowState& State() const { return state_; }
  /// 0: what fits. Gives the scale that it has come to: the display may have no room for more.
  int SetScale(int scale);
  int Scale() const { return scale_; }
  void ToggleFullScreen();
  bool IsFullScreen() const;

  /// What the desktop does to the window.
  void HandleEvent(const SDL_WindowEvent& event);
  /// What the display held of the window is lost.
  void HandleReset();
  /// The display is gone: nothing of the window can be used or freed any more.
  void Abandon();

  void ShowCursor(phone::Cursor cursor);
  void Minimise();
  void Hide();
  void Raise();
  /// Adds a notice to the window's title; empty: none.
  void ShowNotice(const std::string& notice);

 private:
  /// What the desktop puts around the window, in its units.
  struct Frame {
    int top = 0;
    int left = 0;
    int bottom = 0;
    int right = 0;
  };

  bool Open();
  bool HasFlag(Uint32 flag) const;
  bool IsPlain() const;
  double Density() const;
  SDL_Rect UsableBounds() const;
  SDL_Point Centre() const;
  SDL_Point Place() const;
  Frame FrameSize() const;
  void MoveTo(SDL_Point place);
  int ApplyScale();
  void HandleSize();

  WindowState state_;
  Size screen_;
  int scale_ = 1;       ///< px for one of the phone's
  double density_ = 1;  ///< px of the display for one of the window's units
  std::unique_ptr<SDL_Window, Destroy> window_;
  Canvas canvas_;  ///< goes before the window
  std::unique_ptr<SDL_Cursor, Destroy> wait_cursor_;
};

}  // namespace sdl
