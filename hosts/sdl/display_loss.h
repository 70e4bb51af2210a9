/// \file
/// A display that goes away while the program runs.
#pragma once

#include <SDL.h>

namespace sdl {

/// From now on the loss of the display the window is on is noticed, and no longer ends the program on the spot.
void SurviveDisplayLoss(SDL_Window* window);

/// True once the display is gone: nothing of SDL's video may be used any more.
bool DisplayIsLost();

}  // namespace sdl
