/// \file
/// The soft-key bars, one of which is shown at a time. A bar that could not be made is skipped.
#pragma once

#include "app/controller.h"

void HideBars(const CAppController& controller) noexcept;
/// Has the shell send the Back key to the program instead of acting on it, while the bar is shown.
void OverrideBackKey(HWND bar) noexcept;
/// Changes the label of the soft key with that command.
void LabelSoftKey(HWND bar, UINT command, LPCWSTR label) noexcept;
