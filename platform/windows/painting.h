/// \file
/// What is invalid, and painting it.
#pragma once

#include "windows.h"

namespace phone {

struct Window;

/// Marks a part of the window (null: all of it) to be painted.
void Invalidate(Window& window, const RECT* rect);
/// The first visible window of the program with something to paint that it is not painting already; null when there is
/// none.
Window* FirstInvalid();
/// Has the window paint itself. A window that answers WM_PAINT without painting is taken as painted, so that it does
/// not keep the phone awake.
LRESULT SendPaint(HWND window);
/// Gives a window a surface of its size, which is invalid.
void ResizeWindowSurface(Window& window);

}  // namespace phone
