/// \file
/// Windows, messages, focus, message boxes, resources and drawn text.
#pragma once

#include <wingdi.h>

// --- Messages ---

#define WM_CREATE 0x0001u        ///< the window is being made
#define WM_DESTROY 0x0002u       ///< the window is going away
#define WM_SETFOCUS 0x0007u      ///< the window has got the focus
#define WM_KILLFOCUS 0x0008u     ///< the window has lost the focus
#define WM_SETTEXT 0x000Cu       ///< replace the window's text by the one lParam points at
#define WM_PAINT 0x000Fu         ///< something of the window is invalid
#define WM_CLOSE 0x0010u         ///< the window is asked to close
#define WM_QUIT 0x0012u          ///< ends the message loop
#define WM_WININICHANGE 0x001Au  ///< a setting of the phone has changed
#define WM_KEYDOWN 0x0100u       ///< a key is pressed
#define WM_KEYUP 0x0101u         ///< a key is released
#define WM_CHAR 0x0102u          ///< a character was typed
#define WM_COMMAND 0x0111u       ///< a soft key or menu item was chosen
#define WM_HOTKEY 0x0312u        ///< a key that a soft-key bar asked the shell for

#define VK_BACK 0x08
#define VK_RETURN 0x0D
#define VK_ESCAPE 0x1B
#define VK_SPACE 0x20
#define VK_END 0x23
#define VK_HOME 0x24
#define VK_LEFT 0x25
#define VK_UP 0x26
#define VK_RIGHT 0x27
#define VK_DOWN 0x28
#define VK_INSERT 0x2D
#define VK_DELETE 0x2E
#define VK_F1 0x70
#define VK_F2 0x71

#define HWND_BROADCAST (reinterpret_cast<HWND>(static_cast<LPARAM>(0xFFFF)))

struct MSG {
  HWND hwnd;
  UINT message;
  WPARAM wParam;
  LPARAM lParam;
  DWORD time;  ///< tick count, ms
  POINT pt;
};

#define PM_NOREMOVE 0x0000u
#define QS_SENDMESSAGE 0x0040u

/// Takes the next message, waiting for one. 0 for WM_QUIT, -1 for an error, otherwise another value. Messages sent from
/// other threads are executed inside.
BOOL GetMessageW(MSG* message, HWND window, UINT first, UINT last);
/// Like GetMessageW, without waiting; false when no message stands in the queue. With PM_NOREMOVE it stays there.
BOOL PeekMessageW(MSG* message, HWND window, UINT first, UINT last, UINT flags);
BOOL TranslateMessage(const MSG* message);
LRESULT DispatchMessageW(const MSG* message);
/// Has the window procedure handle the message, on the window's own thread, and gives its result. HWND_BROADCAST: every
/// top-level window, one after the other.
LRESULT SendMessageW(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
void PostQuitMessage(int exit_code);

// --- Windows ---

using WNDPROC = LRESULT(CALLBACK*)(HWND window, UINT message, WPARAM wparam, LPARAM lparam);

#define CS_VREDRAW 0x0001u
#define CS_HREDRAW 0x0002u

struct WNDCLASSW {
  UINT style;
  WNDPROC lpfnWndProc;
  int cbClsExtra;
  int cbWndExtra;
  HINSTANCE hInstance;
  HICON hIcon;
  HCURSOR hCursor;
  HBRUSH hbrBackground;
  LPCWSTR lpszMenuName;
  LPCWSTR lpszClassName;
};

#define WS_CHILD 0x40000000u
#define WS_VISIBLE 0x10000000u
#define WS_TABSTOP 0x00010000u
#define ES_AUTOHSCROLL 0x0080u
#define CW_USEDEFAULT (static_cast<int>(0x80000000u))
#define GWL_STYLE (-16)
#define GW_HWNDFIRST 0u
#define GW_HWNDLAST 1u
#define GW_HWNDNEXT 2u
#define GW_HWNDPREV 3u
#define SW_HIDE 0
#define SW_SHOW 5

ATOM RegisterClassW(const WNDCLASSW* description);
/// Makes a window; WM_CREATE is handled inside. Null on failure.
HWND CreateWindowExW(DWORD extended_style, LPCWSTR class_name, LPCWSTR title, DWORD style, int x, int y, int width,
                     int height, HWND parent, HMENU menu, HINSTANCE instance, LPVOID parameter);
BOOL DestroyWindow(HWND window);
LRESULT DefWindowProcW(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
BOOL ShowWindow(HWND window, int command);
/// Paints the window at once if any of it is invalid.
BOOL UpdateWindow(HWND window);
/// A top-level window of that class and title, of this program or of another instance of it; null when there is none.
HWND FindWindowW(LPCWSTR class_name, LPCWSTR title);
/// Brings a window to the front; with the handle's lowest bit set, its owned windows too.
BOOL SetForegroundWindow(HWND window);
HWND SetFocus(HWND window);
HWND GetWindow(HWND window, UINT relation);
LONG GetWindowLongW(HWND window, int index);
BOOL GetClientRect(HWND window, RECT* rect);
/// Copies the window's text, at most `size` code units with the terminating zero; gives its length.
int GetWindowTextW(HWND window, LPWSTR text, int size);
/// Null rectangle: the whole client area.
BOOL InvalidateRect(HWND window, const RECT* rect, BOOL erase);

struct PAINTSTRUCT {
  HDC hdc;
  BOOL fErase;
  RECT rcPaint;
  BOOL fRestore;
  BOOL fIncUpdate;
  BYTE rgbReserved[32];
};

HDC BeginPaint(HWND window, PAINTSTRUCT* paint);
BOOL EndPaint(HWND window, const PAINTSTRUCT* paint);

// --- Text ---

#define DT_VCENTER 0x0004u
#define DT_SINGLELINE 0x0020u

/// Draws text with the font, colour and background mode of the context; `length` -1: up to its zero. Gives the height
/// of the text, 0 on failure.
int DrawTextW(HDC dc, LPCWSTR text, int length, RECT* rect, UINT format);

// --- Message boxes, cursors, resources ---

#define MB_OK 0x0000u
#define MB_YESNO 0x0004u
#define MB_ICONQUESTION 0x0020u
#define MB_ICONEXCLAMATION 0x0030u
#define IDOK 1
#define IDYES 6
#define IDNO 7

/// Asks and waits for the answer: IDOK, IDYES or IDNO; 0 on failure.
int MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type);

#define MAKEINTRESOURCE(id) (reinterpret_cast<LPCWSTR>(static_cast<std::uintptr_t>(static_cast<WORD>(id))))
#define IDC_WAIT MAKEINTRESOURCE(32514)

HCURSOR LoadCursorW(HINSTANCE instance, LPCWSTR name);
/// Shows a cursor, null: none. Any thread.
HCURSOR SetCursor(HCURSOR cursor);
HICON LoadIconW(HINSTANCE instance, LPCWSTR name);
/// Copies a string resource into a buffer of `size` code units; gives its length, 0 when there is none.
int LoadStringW(HINSTANCE instance, UINT id, LPWSTR buffer, int size);
