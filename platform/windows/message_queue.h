/// \file
/// The message queue and the wait for messages, in which everything else on the phone happens.
#pragma once

#include "windows.h"

namespace phone {

void PostToWindow(HWND window, UINT message, WPARAM wparam, LPARAM lparam);

/// One turn of the wait in a message box: dispatches a message or does what else is due, or waits for input.
void TurnInBox();

}  // namespace phone
