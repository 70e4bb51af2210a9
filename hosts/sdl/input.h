/// \file
/// The keyboard's keys as the phone's.
#pragma once

#include <SDL.h>

#include "phone.h"

namespace sdl {

struct PhoneKey {
  UINT code;     ///< virtual-key code
  bool repeats;  ///< goes on while it is held down
};

/// The phone's key for one of the keyboard's that types nothing; code 0 for a key the phone has not.
PhoneKey KeyOf(SDL_Keycode key);

/// Types text into the phone, character by character.
void TypeText(const char* text);

}  // namespace sdl
