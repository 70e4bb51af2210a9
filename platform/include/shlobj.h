/// \file
/// The shell's folders and path helpers.
#pragma once

#include "windows.h"

#define CSIDL_APPDATA 0x001A

/// The path of a special folder into a buffer of MAX_PATH code units, without a trailing separator; TRUE on success.
BOOL SHGetSpecialFolderPath(HWND owner, LPWSTR path, int folder, BOOL create);

/// Cuts the last element and its separator off a path. False when nothing was cut.
BOOL PathRemoveFileSpecW(LPWSTR path);
/// Cuts the folders off a path.
void PathStripPathW(LPWSTR path);
/// Cuts the extension and its dot off a path.
void PathRemoveExtensionW(LPWSTR path);
