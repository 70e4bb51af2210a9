/// \file
/// Keys and typed text, input methods included.
#pragma once

#include <SDL.h>

#include <map>

#include "hosts/sdl/input.h"
#include "hosts/sdl/overlay_pictures.h"

namespace sdl {

class Keyboard {
 public:
  /// Text is typed into an edit field only; elsewhere keys mean what stands on them, and no input method is at work.
  void SetTyping(bool typing);
  /// Tells input methods where the caret is, in the window's units.
  void PlaceCaret(const SDL_Rect& caret);
  bool Typing() const { return typing_; }
  const Composition& composition() const { return composition_; }

  void Press(const SDL_KeyboardEvent& event);
  void Release(const SDL_KeyboardEvent& event);
  void Type(const SDL_TextInputEvent& event);
  void Compose(const SDL_TextEditingEvent& event);

 private:
  bool typing_ = true;  ///< as SDL begins
  SDL_Rect caret_ = {0, 0, 0, 0};
  Composition composition_;
  SDL_Scancode untyped_ = SDL_SCANCODE_UNKNOWN;  ///< the key pressed last, when nothing was typed then
  bool repeats_untyped_ = false;                 ///< whether the text that comes next is a repeat of it
  std::map<SDL_Scancode, UINT> held_;            ///< the phone's keys that are down, by those of the keyboard
};

}  // namespace sdl
