#include "windows/desktop.h"

using namespace phone;

namespace {

bool AreSiblings(const Window& a, const Window& b) {
  return a.parent == b.parent;
}

}  // namespace

HWND GetWindow(HWND handle, UINT relation) {
  if (!OnUiThread()) return nullptr;
  WindowTable& windows = TheDesktop().windows;
  const Window* window = windows.Find(handle);
  if (window == nullptr) return nullptr;
  HWND before = nullptr;
  HWND last = nullptr;
  bool passed = false;
  for (const auto& other : windows.all()) {
    if (!AreSiblings(*window, *other)) continue;
    if (relation == GW_HWNDFIRST) return other->handle;
    if (relation == GW_HWNDNEXT && passed) return other->handle;
    if (other.get() == window) {
      if (relation == GW_HWNDPREV) return before;
      passed = true;
    }
    before = last = other->handle;
  }
  return relation == GW_HWNDLAST ? last : nullptr;
}

LONG GetWindowLongW(HWND handle, int index) {
  const Window* window = OnUiThread() ? TheDesktop().windows.Find(handle) : nullptr;
  if (window == nullptr || index != GWL_STYLE) return 0;
  return static_cast<LONG>(window->style | (window->visible ? WS_VISIBLE : 0));
}

BOOL GetClientRect(HWND handle, RECT* rect) {
  const Window* window = OnUiThread() ? TheDesktop().windows.Find(handle) : nullptr;
  if (window == nullptr || rect == nullptr) return FALSE;
  *rect = {0, 0, window->width(), window->height()};
  return TRUE;
}
