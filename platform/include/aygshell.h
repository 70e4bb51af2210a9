/// \file
/// The phone shell library: start-up, soft-key bars, the Back key.
#pragma once

#include <windows.h>
#include <commctrl.h>

#define SHCMBM_OVERRIDEKEY 0x0593u    ///< to a soft-key bar: wParam a key, lParam (flags to set << 16) | flags meant
#define SHMBOF_NODEFAULT 0x00000001u  ///< the shell does not act on the key
#define SHMBOF_NOTIFY 0x00000002u     ///< the shell sends the key to the bar's owner as WM_HOTKEY
#define VK_TBACK VK_ESCAPE            ///< the Back key
#define VK_TSOFT1 VK_F1               ///< the left soft key
#define VK_TSOFT2 VK_F2               ///< the right soft key
#define MOD_KEYUP 0x1000u             ///< in WM_HOTKEY: the key is released

struct SHMENUBARINFO {
  DWORD cbSize;
  HWND hwndParent;
  DWORD dwFlags;
  UINT nToolBarId;  ///< id of the SHMENUBAR resource
  HINSTANCE hInstRes;
  int nBmpId;
  int cBmpImages;
  HWND hwndMB;  ///< out: the bar
  COLORREF clrBk;
};

/// Once, before anything else of the shell.
BOOL SHInitExtraControls();
/// Makes a soft-key bar, visible, owned by the given window.
BOOL SHCreateMenuBar(SHMENUBARINFO* info);
/// Hands a Back key received as WM_HOTKEY to the window that has the focus; a field deletes a character on the press.
void SHSendBackToFocusWindow(UINT message, WPARAM wparam, LPARAM lparam);
/// Goes back to what was shown before the program.
BOOL SHNavigateBack();
