/// \file
/// The platform's core headers together, and the program's entry point.
#pragma once

#include <winbase.h>
#include <windef.h>
#include <winerror.h>
#include <wingdi.h>
#include <winuser.h>

#define HKEY_CURRENT_USER (reinterpret_cast<HKEY>(static_cast<std::uintptr_t>(0x80000001u)))

/// Where the program begins. Gives its exit code.
int WINAPI WinMain(HINSTANCE instance, HINSTANCE previous, LPWSTR command_line, int show);
