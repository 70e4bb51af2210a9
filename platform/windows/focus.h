/// \file
/// The keyboard focus, and the foreground.
#pragma once

#include "windows.h"

namespace phone {

/// Gives a window the focus, null: takes it away. WM_KILLFOCUS and WM_SETFOCUS are sent. Gives who had it.
HWND MoveFocus(HWND window);
/// A menu or message box takes the focus; when nothing of the kind is open any more, it goes back to who had it.
void HoldFocus();
void ReleaseHeldFocus();

/// The program is brought to the foreground and its main window gets the focus, as on coming back to it.
void EnterForeground();
/// A second start asks for this instance: handles what came in.
void HandleRaiseRequests();

}  // namespace phone
