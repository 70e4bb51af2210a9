/// \file
/// Paths beside the program.
#pragma once

#include <shlobj.h>

#include "base/text_field.h"

/// The program's folder, without a closing separator; empty when it cannot be told.
inline TextField ProgramFolder(HINSTANCE instance) noexcept {
  TextField folder;
  constexpr DWORD room = sizeof folder.units / sizeof folder.units[0];
  if (GetModuleFileNameW(instance, folder.units, room) == 0) folder.units[0] = 0;
  PathRemoveFileSpecW(folder.units);
  return folder;
}

/// The path of something in the program's folder, given with its leading separator; false when it does not fit.
[[nodiscard]] inline bool ProgramPath(HINSTANCE instance, LPCWSTR relative, TextField& path) noexcept {
  path = ProgramFolder(instance);
  return path.Append(relative);
}
