/// \file
/// The program's icon for the desktop.
#pragma once

#include <SDL.h>

namespace sdl {

/// Gives the window the largest picture of the program's icon that is a PNG file. Does nothing when there is none.
void SetIcon(SDL_Window* window);

}  // namespace sdl
