#include "app/main_window.h"

namespace {

/// Where Up or Down moves the focus among the fields of a form, wrapping at the ends; null for another key.
HWND FieldToFocus(HWND field, WPARAM key) noexcept {
  if (key != VK_UP && key != VK_DOWN) return nullptr;
  const bool up = key == VK_UP;
  const HWND sibling = GetWindow(field, up ? GW_HWNDPREV : GW_HWNDNEXT);
  return sibling ? sibling : GetWindow(field, up ? GW_HWNDLAST : GW_HWNDFIRST);
}

/// Moves the focus between the edit fields of a form; true when the message is used up.
bool MoveFocus(const MSG& message) noexcept {
  if (message.message != WM_KEYDOWN) return false;
  if ((static_cast<DWORD>(GetWindowLongW(message.hwnd, GWL_STYLE)) & WS_CHILD) == 0) return false;
  const HWND target = FieldToFocus(message.hwnd, message.wParam);
  if (target) SetFocus(target);
  return target != nullptr;
}

/// Runs until the quit message, whose exit code it gives, or an error.
int RunMessageLoop() noexcept {
  MSG message = {};
  for (;;) {
    const BOOL retrieved = GetMessageW(&message, nullptr, 0, 0);
    if (retrieved == -1) return 0;
    if (retrieved == 0) return static_cast<int>(message.wParam);
    if (MoveFocus(message)) continue;
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

}  // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPWSTR, int show) {
  if (!InitInstance(instance, show)) return 0;
  const int exitCode = RunMessageLoop();
  // After an error the window is still there; the worker must not outlive the controller.
  if (g_controller) DestroyWindow(g_controller->mainWindow);
  return exitCode;
}
