/// \file
/// The shell's folders.
#pragma once

#include <windows.h>

#define CSIDL_APPDATA 0x001A

/// The path of a special folder into a buffer of MAX_PATH code units, without a trailing separator; TRUE on success.
BOOL SHGetSpecialFolderPath(HWND owner, LPWSTR path, int folder, BOOL create);
