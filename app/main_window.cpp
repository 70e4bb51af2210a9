#include "app/main_window.h"

#include <aygshell.h>

#include <new>

#include "screens/resource.h"

HINSTANCE g_hInstance = nullptr;
std::unique_ptr<CAppController> g_controller;

namespace {

constexpr int STRING_ROOM = 256;  // code units, the terminating zero included

/// Brings a running instance's window to the front, with the windows it owns.
void BringForward(HWND window) noexcept {
  constexpr std::uintptr_t withOwnedWindows = 1;
  SetForegroundWindow(reinterpret_cast<HWND>(reinterpret_cast<std::uintptr_t>(window) | withOwnedWindows));
}

void CreateController(HWND window) noexcept {
  if (g_controller) return;
  g_controller.reset(new (std::nothrow) CAppController);
  if (g_controller) g_controller->Initialize(window, g_hInstance);
}

void Forward(HWND window, UINT message, WPARAM wparam, LPARAM lparam) noexcept {
  if (g_controller) g_controller->HandleMessage(window, message, wparam, lparam);
}

}  // namespace

bool InitInstance(HINSTANCE instance, int show) noexcept {
  g_hInstance = instance;
  SHInitExtraControls();
  WCHAR title[STRING_ROOM] = {};
  WCHAR className[STRING_ROOM] = {};
  LoadStringW(instance, IDS_TITLE, title, STRING_ROOM);
  LoadStringW(instance, IDS_CLASS_NAME, className, STRING_ROOM);
  if (const HWND running = FindWindowW(className, title)) {
    BringForward(running);
    return false;
  }
  if (!RegisterMainWindowClass(instance, className)) return false;
  const HWND window = CreateWindowExW(0, className, title, WS_VISIBLE, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT,
                                      CW_USEDEFAULT, nullptr, nullptr, instance, nullptr);
  if (!window) return false;
  ShowWindow(window, show);
  UpdateWindow(window);
  return true;
}

ATOM RegisterMainWindowClass(HINSTANCE instance, LPCWSTR className) noexcept {
  WNDCLASSW description = {};
  description.style = CS_HREDRAW | CS_VREDRAW;
  description.lpfnWndProc = MainWindowProc;
  description.hInstance = instance;
  description.hIcon = LoadIconW(instance, MAKEINTRESOURCE(IDI_QUILLMARK));
  description.hbrBackground = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
  description.lpszClassName = className;
  return RegisterClassW(&description);
}

LRESULT CALLBACK MainWindowProc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_CREATE: CreateController(window); [[fallthrough]];
    case WM_SETFOCUS:
    case WM_PAINT:
    case WM_KEYDOWN:
    case WM_COMMAND:
    case WM_HOTKEY: Forward(window, message, wparam, lparam); return 0;
    case WM_DESTROY:
      Forward(window, message, wparam, lparam);
      g_controller.reset();
      PostQuitMessage(0);
      return 0;
    default: return DefWindowProcW(window, message, wparam, lparam);
  }
}
