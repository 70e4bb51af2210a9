/// \file
/// The platform's basic types. Text is UTF-16; a WCHAR is one code unit.
#pragma once

#include <cstddef>
#include <cstdint>

using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using UINT = std::uint32_t;
using INT = std::int32_t;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using SHORT = std::int16_t;
using USHORT = std::uint16_t;
using BOOL = std::int32_t;
using WCHAR = char16_t;
using LPVOID = void*;
using LPWSTR = WCHAR*;
using LPCWSTR = const WCHAR*;

using DWORD_PTR = std::uintptr_t;  ///< as wide as a pointer
using SIZE_T = std::size_t;
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;
using HRESULT = std::int32_t;
using ATOM = WORD;
using COLORREF = DWORD;  ///< 0x00BBGGRR
using HANDLE = void*;
using HGDIOBJ = void*;

#define TRUE 1
#define FALSE 0
#define WINAPI
#define CALLBACK
#define MAX_PATH 260

#define TEXT_(quoted) u##quoted
#define TEXT(quoted) TEXT_(quoted)

/// Declares a handle type of its own, so that the compiler tells handles apart.
#define DECLARE_HANDLE(name) \
  struct name##__;           \
  using name = name##__*

DECLARE_HANDLE(HINSTANCE);
DECLARE_HANDLE(HWND);
DECLARE_HANDLE(HDC);
DECLARE_HANDLE(HBITMAP);
DECLARE_HANDLE(HFONT);
DECLARE_HANDLE(HBRUSH);
DECLARE_HANDLE(HICON);
DECLARE_HANDLE(HMENU);
DECLARE_HANDLE(HKEY);
using HCURSOR = HICON;
using HMODULE = HINSTANCE;

#define INVALID_HANDLE_VALUE (reinterpret_cast<HANDLE>(static_cast<LPARAM>(-1)))

#define LOWORD(value) (static_cast<WORD>((value)&0xFFFF))
#define HIWORD(value) (static_cast<WORD>((static_cast<DWORD>(value) >> 16) & 0xFFFF))
#define MAKELPARAM(low, high)                                       \
  (static_cast<LPARAM>(static_cast<DWORD>(static_cast<WORD>(low)) | \
                       (static_cast<DWORD>(static_cast<WORD>(high)) << 16)))

struct RECT {
  LONG left;
  LONG top;
  LONG right;   ///< first column outside
  LONG bottom;  ///< first row outside
};

struct POINT {
  LONG x;
  LONG y;
};

struct GUID {
  DWORD Data1;
  WORD Data2;
  WORD Data3;
  BYTE Data4[8];
};
using IID = GUID;
using CLSID = GUID;
using REFIID = const IID&;
using REFCLSID = const CLSID&;

inline bool operator==(const GUID& a, const GUID& b) noexcept {
  if (a.Data1 != b.Data1 || a.Data2 != b.Data2 || a.Data3 != b.Data3) return false;
  for (int i = 0; i < 8; ++i)
    if (a.Data4[i] != b.Data4[i]) return false;
  return true;
}
