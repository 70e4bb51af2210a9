/// \file
/// Building paths: of a file in a folder, and beside the program.
#pragma once

#include <shlwapi.h>

#include "base/text_field.h"

/// A path on its way: longer than any that the phone or a text field takes.
using LongPath = FixedText<512>;

/// The path of a file in a folder, which has no closing separator; false when it does not fit.
template <std::size_t Capacity>
[[nodiscard]] bool JoinPath(FixedText<Capacity>& path, LPCWSTR folder, LPCWSTR name) noexcept {
  return path.Assign(folder) && path.Append(TEXT("\\")) && path.Append(name);
}

/// The program's folder, without a closing separator; empty when it cannot be told.
inline TextField ProgramFolder(HINSTANCE instance) noexcept {
  TextField folder;
  constexpr DWORD room = sizeof folder.units / sizeof folder.units[0];
  if (GetModuleFileNameW(instance, folder.units, room) == 0) folder.units[0] = 0;
  PathRemoveFileSpecW(folder.units);
  return folder;
}

/// The path of something in the program's folder; false when it does not fit or the folder is not known.
[[nodiscard]] inline bool ProgramPath(HINSTANCE instance, LPCWSTR name, TextField& path) noexcept {
  const TextField folder = ProgramFolder(instance);
  return !folder.empty() && JoinPath(path, folder, name);
}
