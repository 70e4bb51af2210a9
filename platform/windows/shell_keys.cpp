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

void HandleBack(bool released) {
  const Window* bar = TheDesktop().windows.VisibleBar();
  const WORD flags = bar != nullptr ? bar->bar->back_flags : 0;
  if ((flags & SHMBOF_NOTIFY) != 0) PostToWindow(bar->owner, WM_HOTKEY, 0, HotKeyParameter(VK_TBACK, released));
  if ((flags & SHMBOF_NODEFAULT) == 0 && released) SHNavigateBack();
}

}  // namespace

bool PressInShell(UINT key, bool repeated) {
  if (key == VK_TBACK) {
    HandleBack(false);
    return true;
  }
  if (key != VK_TSOFT1 && key != VK_TSOFT2) return false;
  const Window* bar = TheDesktop().windows.VisibleBar();
  if (bar != nullptr && !repeated) PressSoftKey(*bar, key == VK_TSOFT2);
  return true;
}

bool ReleaseInShell(UINT key) {
  if (key == VK_TBACK) HandleBack(true);
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
