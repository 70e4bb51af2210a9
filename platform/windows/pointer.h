/// \file
/// Clicks of a desktop's pointer, done with the keys of the phone, which has no touch screen.
#pragma once

#include "windows.h"
#include "windows/input.h"

namespace phone {

/// Whether there is something to click at a place of the screen.
bool CanClick(POINT at);
/// Does what a click stands for: at once where it is the phone's own affair, else by key presses that come before all
/// other waiting input.
void ClickAt(const Input& click);
/// Selects up to a place of the screen in the field that was clicked last.
void DragPointer(POINT at);

}  // namespace phone
