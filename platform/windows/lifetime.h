/// \file
/// Making and destroying windows.
#pragma once

#include "windows.h"

namespace phone {

struct Window;

/// Destroys a window with all that it holds and owns. While a message box of it is open the box is answered first and
/// the window goes once the box's caller has returned. False for no window, and for one that is going already.
bool Destroy(HWND window);
/// Destroys what had to wait for message boxes, and hands a wish to close on to the main window. Only while no message
/// box is open, and from the program's own message loop. False when there was nothing of the kind to do.
bool FinishEndings();
/// Hides or shows a window.
void SetVisible(Window& window, bool visible);

}  // namespace phone
