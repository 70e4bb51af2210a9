/// \file
/// The keys that belong to the shell: the two soft keys, and Back.
#pragma once

#include "windows.h"

namespace phone {

struct SoftKey;

/// True when the key is the shell's. A soft key presses its button of the visible bar; Back goes to the bar's owner
/// when the bar asks for it, and otherwise back to what was shown before, on its release.
bool PressInShell(UINT key, bool repeated);
bool ReleaseInShell(UINT key);

/// lParam of WM_HOTKEY.
LPARAM HotKeyParameter(UINT key, bool released);

}  // namespace phone
