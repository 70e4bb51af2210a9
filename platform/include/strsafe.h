/// \file
/// Bounded string copies. The destination is always terminated.
#pragma once

#include <windows.h>

#define STRSAFE_E_INSUFFICIENT_BUFFER (static_cast<HRESULT>(0x8007007Au))
#define STRSAFE_E_INVALID_PARAMETER E_INVALIDARG

/// Copies at most size - 1 code units; STRSAFE_E_INSUFFICIENT_BUFFER when the text was cut.
HRESULT StringCchCopyW(LPWSTR destination, std::size_t size, LPCWSTR source);
/// Appends; the same way.
HRESULT StringCchCatW(LPWSTR destination, std::size_t size, LPCWSTR source);
