/// \file
/// Window classes: the program's own, and EDIT, which is always there.
#pragma once

#include <string>
#include <string_view>

#include "windows.h"

namespace phone {

struct WindowClass {
  std::u16string name;
  WNDPROC procedure;
};

/// Null when there is no class of that name.
const WindowClass* FindWindowClass(std::u16string_view name);

}  // namespace phone
