/// \file
/// Reading and writing registry strings. Any thread.
#pragma once

#include <windows.h>

/// The text of a value into a buffer of `size` code units with its terminating zero; longer text is cut there, never
/// inside a surrogate pair. A failing status when the key or the value does not exist.
HRESULT RegistryGetString(HKEY root, LPCWSTR key, LPCWSTR value, LPWSTR text, UINT size);
HRESULT RegistrySetString(HKEY root, LPCWSTR key, LPCWSTR value, LPCWSTR text);
