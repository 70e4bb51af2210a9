/// \file
/// The mouse on a phone without a touch screen: everything it does is a key press to the program.
#pragma once

#include <SDL.h>

namespace sdl {

class Mouse {
 public:
  /// Places are pixels of the phone's screen. A click of the left button; dragging begins.
  void Press(SDL_Point at);
  void Release() { dragging_ = false; }
  void Move(SDL_Point at);
  /// Whether Move has anything to do.
  bool Dragging() const { return dragging_; }
  /// Up and Down, once for each whole notch.
  void Turn(const SDL_MouseWheelEvent& event);

 private:
  bool dragging_ = false;
  SDL_Point last_ = {0, 0};
  float turned_ = 0;  ///< notches away from the person, not yet a whole one
};

}  // namespace sdl
