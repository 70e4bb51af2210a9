#include "windows/lifetime.h"

#include <algorithm>

#include "system/faults.h"
#include "system/outside.h"
#include "windows/desktop.h"
#include "windows/focus.h"
#include "windows/message_queue.h"
#include "windows/painting.h"

namespace phone {

namespace {

struct Placement {
  int x, y, width, height;
};

/// The rectangle of a new window; what is left to the phone is all of the client area.
RECT PlaceWindow(const Placement& place) {
  const Desktop& desktop = TheDesktop();
  const bool left_to_phone = place.x == CW_USEDEFAULT || place.width == CW_USEDEFAULT;
  if (left_to_phone) return {0, 0, desktop.client_width, desktop.client_height};
  const auto limit = [](int value, int least) { return std::clamp(value, least, kLargestClientExtent); };
  const int x = limit(place.x, -kLargestClientExtent);
  const int y = limit(place.y, -kLargestClientExtent);
  return {x, y, x + limit(place.width, 0), y + limit(place.height, 0)};
}

HWND MakeWindow(const WindowClass& window_class, LPCWSTR title, DWORD style, const Placement& place, HWND parent) {
  constexpr LRESULT kRefused = -1;
  Desktop& desktop = TheDesktop();
  Window* above = desktop.windows.Find(parent);
  const bool is_child = (style & WS_CHILD) != 0;
  if ((parent != nullptr || is_child) && (above == nullptr || above->destroying)) return nullptr;
  Window& window = desktop.windows.Add();
  const HWND handle = window.handle;
  window.procedure = window_class.procedure;
  window.class_name = window_class.name;
  window.style = style & ~WS_VISIBLE;
  (is_child ? window.parent : window.owner) = above != nullptr ? above->handle : nullptr;
  window.rect = PlaceWindow(place);
  if (window.procedure == EditProcedure) window.edit.emplace();
  ResizeWindowSurface(window);
  if (title != nullptr) SetWindowText(window, title);
  const LRESULT created = Send(handle, WM_CREATE, 0, 0);
  if (created == kRefused) Destroy(handle);
  Window* made = desktop.windows.Find(handle);
  if (made == nullptr || created == kRefused) return nullptr;
  if ((style & WS_VISIBLE) != 0) SetVisible(*made, true);
  return desktop.windows.Find(handle) != nullptr ? handle : nullptr;
}

/// A child that had the focus leaves it to its parent.
void HandFocusOn(const Window& window) {
  Desktop& desktop = TheDesktop();
  if (desktop.held_focus == window.handle) desktop.held_focus = window.parent;
  if (desktop.focus != window.handle) return;
  const Window* parent = desktop.windows.Find(window.parent);
  desktop.focus = nullptr;
  if (parent != nullptr && !parent->destroying) MoveFocus(parent->handle);
}

}  // namespace

bool Destroy(HWND given) {
  Desktop& desktop = TheDesktop();
  Window* window = desktop.windows.Find(given);
  if (window == nullptr || window->destroying) return false;
  const HWND handle = window->handle;
  if (AnswerBoxesOf(handle)) {
    if (std::ranges::find(desktop.doomed, handle) == desktop.doomed.end()) desktop.doomed.push_back(handle);
    return true;
  }
  if (desktop.menu && desktop.windows.BelongsTo(desktop.menu->bar, handle)) CloseMenu();
  window->destroying = true;
  if (window == desktop.windows.Main()) CurrentHost().WindowGone();
  Send(handle, WM_DESTROY, 0, 0);
  for (const HWND relative : desktop.windows.Relatives(handle)) Destroy(relative);
  std::erase_if(desktop.posted, [handle](const MSG& message) { return message.hwnd == handle; });
  HandFocusOn(*window);
  desktop.windows.Remove(handle);
  MarkAllStale();
  return true;
}

bool FinishEndings() {
  Desktop& desktop = TheDesktop();
  if (!desktop.boxes.empty() || (desktop.doomed.empty() && !desktop.closing)) return false;
  while (!desktop.doomed.empty()) {
    const HWND doomed = desktop.doomed.back();
    desktop.doomed.pop_back();
    Destroy(doomed);
  }
  if (!desktop.closing) return true;
  desktop.closing = false;
  if (const Window* main = desktop.windows.Main())
    PostToWindow(main->handle, WM_CLOSE, 0, 0);
  else
    desktop.quit = desktop.quit.value_or(0);
  return true;
}

void SetVisible(Window& window, bool visible) {
  if (window.visible == visible) return;
  window.visible = visible;
  if (visible) Invalidate(window, nullptr);
  MarkAllStale();
  if (window.bar) {
    if (!visible && TheDesktop().menu && TheDesktop().menu->bar == window.handle) CloseMenu();
    return;
  }
  const bool takes_focus = visible && window.parent == nullptr && TheDesktop().foreground;
  if (takes_focus && TheDesktop().focus == nullptr && TheDesktop().boxes.empty()) MoveFocus(window.handle);
}

}  // namespace phone

using namespace phone;

HWND CreateWindowExW(DWORD, LPCWSTR class_name, LPCWSTR title, DWORD style, int x, int y, int width, int height,
                     HWND parent, HMENU, HINSTANCE, LPVOID) {
  if (FaultDue(Operation::CreateWindowExW) || !OnUiThread() || class_name == nullptr) return nullptr;
  return Guarded<HWND>(nullptr, [&]() -> HWND {
    const WindowClass* found = FindWindowClass(class_name);
    if (found == nullptr) return nullptr;
    const WindowClass window_class = *found;  // the program may register more while it makes its window
    return MakeWindow(window_class, title, style, {x, y, width, height}, parent);
  });
}

BOOL DestroyWindow(HWND window) {
  if (!OnUiThread()) return FALSE;
  return Guarded<BOOL>(FALSE, [window] { return Destroy(window) ? TRUE : FALSE; });
}

BOOL ShowWindow(HWND handle, int command) {
  Window* window = OnUiThread() ? TheDesktop().windows.Find(handle) : nullptr;
  if (window == nullptr) return FALSE;
  return Guarded<BOOL>(FALSE, [&] {
    const BOOL was_visible = window->visible ? TRUE : FALSE;
    SetVisible(*window, command != SW_HIDE);
    return was_visible;
  });
}
