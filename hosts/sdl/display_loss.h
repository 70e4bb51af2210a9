/// \file
/// A display that goes away while the program runs. Xlib's answer is to end the program in the middle of whatever it
/// does; here it ends in good order.
#pragma once

#include <SDL.h>

namespace sdl {

/// Why the program ends then.
inline constexpr char kDisplayLost[] = "the display has gone away";

/// From now on the loss of the display the window is on is noticed. Called on the thread that owns the window.
void SurviveDisplayLoss(SDL_Window* window);

/// True once the display is gone: nothing of SDL's video or events may be used any more. Any thread.
bool DisplayIsLost();

/// SDL_WaitEventTimeout, which returns also when the display goes away.
bool WaitForEvent(SDL_Event& event, int milliseconds);

}  // namespace sdl
