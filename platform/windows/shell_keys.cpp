#include "windows/shell_keys.h"

#include "aygshell.h"
#include "windows/desktop.h"
#include "windows/message_queue.h"

namespace phone {

namespace {

void PressSoftKey(const Window& bar, bool on_right) {
  const SoftKey& key = on_right ? bar.bar->right : bar.bar->left;
  if (!key.enabled || key.command == 0) return;
  PostToWindow(bar.owner, WM_COMMAND, key.command, reinterpret_cast<LPARAM>(bar.handle));
  if (key.opens_menu) OpenMenu(bar, key, on_right);
}

/// Pressed on one screen and held or released on the next, the key does nothing there.
bool BackBelongsHere(bool released, bool repeated) {
  const Window* bar = TheDesktop().windows.VisibleBar();
  const HWND here = bar != nullptr ? bar->handle : nullptr;
  HWND& pressed_on = TheDesktop().input.back_bar;
  if (!released && !repeated) pressed_on = here;
  const bool belongs = pressed_on == nullptr || pressed_on == here;
  if (released) pressed_on = nullptr;
  return belongs;
}

void HandleBack(bool released, bool repeated) {
  if (!BackBelongsHere(released, repeated)) return;
  const Window* bar = TheDesktop().windows.VisibleBar();
  const WORD flags = bar != nullptr ? bar->bar->back_flags : 0;
  if ((flags & SHMBOF_NOTIFY) != 0) PostToWindow(bar->owner, WM_HOTKEY, 0, HotKeyParameter(VK_TBACK, released));
  if ((flags & SHMBOF_NODEFAULT) == 0 && released) SHNavigateBack();
}

}  // namespace

bool PressInShell(UINT key, bool repeated) {
  if (key == VK_TBACK) {
    HandleBack(/*released=*/false, repeated);
    return true;
  }
  if (key != VK_TSOFT1 && key != VK_TSOFT2) return false;
  const Window* bar = TheDesktop().windows.VisibleBar();
  if (bar != nullptr && !repeated) PressSoftKey(*bar, key == VK_TSOFT2);
  return true;
}

bool ReleaseInShell(UINT key) {
  if (key == VK_TBACK) HandleBack(/*released=*/true, /*repeated=*/false);
  return key == VK_TBACK || key == VK_TSOFT1 || key == VK_TSOFT2;
}

LPARAM HotKeyParameter(UINT key, bool released) {
  return MAKELPARAM(released ? MOD_KEYUP : 0, key);
}

}  // namespace phone

using namespace phone;

void SHSendBackToFocusWindow(UINT message, WPARAM, LPARAM lparam) {
  if (!OnUiThread()) return;
  ++TheDesktop().back_forwarded;
  if (message != WM_HOTKEY || HIWORD(lparam) != VK_TBACK) return;
  const bool released = (LOWORD(lparam) & MOD_KEYUP) != 0;
  Guarded<LRESULT>(0, [released] { return Send(TheDesktop().focus, released ? WM_KEYUP : WM_KEYDOWN, VK_BACK, 0); });
}
