/// \file
/// What the save flows of both forms need.
#pragma once

#include <windows.h>

#include <cstdio>

#include "base/text_field.h"

/// The text of an edit field, cut to what a text field holds; empty when there is no field.
inline TextField ReadEditText(HWND edit) noexcept {
  TextField text;
  constexpr int room = sizeof text.units / sizeof text.units[0];
  if (edit) GetWindowTextW(edit, text.units, room);
  text.Terminate();
  return text;
}

/// True when there is a file at the path that can be read.
inline bool FileExists(LPCWSTR path) noexcept {
  FILE* const stream = _wfopen(path, TEXT("r"));
  if (!stream) return false;
  [[maybe_unused]] const int ignored = fclose(stream);
  return true;
}
