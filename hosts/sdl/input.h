/// \file
/// The keyboard's keys as the phone's.
#pragma once

#include <SDL.h>

#include <cstdint>

#include "phone.h"

namespace sdl {

struct PhoneKey {
  UINT code = 0;         ///< virtual-key code; 0 for a key the phone has not
  bool repeats = false;  ///< goes on while it is held down
};

/// The phone's key for one of the keyboard's that types nothing.
PhoneKey KeyOf(const SDL_Keysym& key);
/// The same for what only an edit field knows.
PhoneKey FieldKeyOf(const SDL_Keysym& key);
/// The digit on a key of either row of digits, for where nothing is typed; 0 for another key.
WCHAR DigitOf(const SDL_Keysym& key);
phone::KeyModifiers ModifiersOf(std::uint16_t modifiers);

}  // namespace sdl
