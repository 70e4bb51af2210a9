/// \file
/// What soft-key bars take over from toolbars.
#pragma once

#include <windows.h>

#define TB_SETBUTTONINFO 0x0440u  ///< change a button; wParam its command, lParam a TBBUTTONINFO
#define TBIF_TEXT 0x00000002u

struct TBBUTTONINFO {
  UINT cbSize;
  DWORD dwMask;
  int idCommand;
  int iImage;
  BYTE fsState;
  BYTE fsStyle;
  WORD cx;
  DWORD_PTR lParam;
  LPWSTR pszText;
  int cchText;
};
