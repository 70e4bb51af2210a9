/// \file
/// Status codes. An HRESULT is negative for a failure; an error is a positive number of the platform.
#pragma once

#include <windef.h>

#define S_OK (static_cast<HRESULT>(0))
#define S_FALSE (static_cast<HRESULT>(1))
#define E_NOTIMPL (static_cast<HRESULT>(0x80004001u))
#define E_NOINTERFACE (static_cast<HRESULT>(0x80004002u))
#define E_POINTER (static_cast<HRESULT>(0x80004003u))
#define E_FAIL (static_cast<HRESULT>(0x80004005u))         ///< general failure
#define E_OUTOFMEMORY (static_cast<HRESULT>(0x8007000Eu))  ///< no memory, or an object that is missing
#define E_INVALIDARG (static_cast<HRESULT>(0x80070057u))
#define REGDB_E_CLASSNOTREG (static_cast<HRESULT>(0x80040154u))

#define SUCCEEDED(status) (static_cast<HRESULT>(status) >= 0)
#define FAILED(status) (static_cast<HRESULT>(status) < 0)

#define ERROR_SUCCESS 0u
#define ERROR_FILE_NOT_FOUND 2u
#define ERROR_PATH_NOT_FOUND 3u
#define ERROR_ACCESS_DENIED 5u
#define ERROR_INVALID_HANDLE 6u
#define ERROR_NOT_ENOUGH_MEMORY 8u
#define ERROR_INVALID_DATA 13u
#define ERROR_NO_MORE_FILES 18u
#define ERROR_WRITE_FAULT 29u
#define ERROR_READ_FAULT 30u
#define ERROR_GEN_FAILURE 31u
#define ERROR_INVALID_PARAMETER 87u
#define ERROR_DISK_FULL 112u
#define ERROR_INSUFFICIENT_BUFFER 122u
#define ERROR_INVALID_NAME 123u
#define ERROR_ALREADY_EXISTS 183u
#define ERROR_FILENAME_EXCED_RANGE 206u
#define ERROR_NO_ASSOCIATION 1155u

/// The HRESULT of an error of the platform: 0x80070000 with the error's low 16 bits; zero and negative values as they
/// are.
inline constexpr HRESULT HRESULT_FROM_WIN32(DWORD error) noexcept {
  return static_cast<HRESULT>(error) <= 0 ? static_cast<HRESULT>(error)
                                          : static_cast<HRESULT>((error & 0xFFFFu) | 0x80070000u);
}
