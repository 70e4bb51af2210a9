/// \file
/// The shell's path helpers.
#pragma once

#include <windows.h>

/// Cuts the last element and its separator off a path. False when nothing was cut.
BOOL PathRemoveFileSpecW(LPWSTR path);
/// Cuts the extension and its dot off a path.
void PathRemoveExtensionW(LPWSTR path);
