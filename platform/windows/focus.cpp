#include "windows/focus.h"

#include <utility>

#include "aygshell.h"
#include "system/instance.h"
#include "system/outside.h"
#include "system/text.h"
#include "windows/desktop.h"
#include "windows/menu.h"

namespace phone {

namespace {

/// Stands for a window of the instance that runs already. No window's handle has this value.
const HWND kOtherInstance = reinterpret_cast<HWND>(static_cast<std::uintptr_t>(0x20000));
constexpr std::uintptr_t kWithOwned = 1;  ///< of a handle: the owned windows too

/// What FindWindowW looked for in the other instance: class and title, as it is asked to come forward by them.
std::u16string other_window;

bool IsOtherInstance(HWND window) {
  return (reinterpret_cast<std::uintptr_t>(window) & ~kWithOwned) == reinterpret_cast<std::uintptr_t>(kOtherInstance);
}

bool Matches(std::u16string_view text, LPCWSTR wanted) {
  return wanted == nullptr || CompareFolded(text, wanted) == 0;
}

bool ModalIsOpen() {
  return TheDesktop().menu.has_value() || !TheDesktop().boxes.empty();
}

}  // namespace

HWND MoveFocus(HWND handle) {
  Desktop& desktop = TheDesktop();
  Window* window = desktop.windows.Find(handle);
  const HWND target = window != nullptr ? window->handle : nullptr;
  const HWND before = desktop.focus;
  if (before == target) return before;
  desktop.focus = target;
  for (const HWND changed : {before, target})
    if (const Window* field = desktop.windows.Find(changed); field != nullptr && field->edit)
      MarkFieldStale(*desktop.windows.Find(changed));
  Send(before, WM_KILLFOCUS, reinterpret_cast<WPARAM>(target), 0);
  // The one that lost the focus may have given it to somebody else meanwhile.
  if (desktop.focus == target) Send(target, WM_SETFOCUS, reinterpret_cast<WPARAM>(before), 0);
  return before;
}

void HoldFocus() {
  Desktop& desktop = TheDesktop();
  if (desktop.focus == nullptr) return;
  desktop.held_focus = desktop.focus;
  MoveFocus(nullptr);
}

void ReleaseHeldFocus() {
  Desktop& desktop = TheDesktop();
  if (ModalIsOpen()) return;
  const HWND held = std::exchange(desktop.held_focus, nullptr);
  // What the program has given the focus to meanwhile keeps it.
  if (desktop.focus == nullptr && desktop.foreground) MoveFocus(held);
}

void EnterForeground() {
  Desktop& desktop = TheDesktop();
  desktop.foreground = true;
  Window* main = desktop.windows.Main();
  if (main == nullptr) return;
  if (ModalIsOpen()) {
    desktop.held_focus = main->handle;
    return;
  }
  const HWND target = main->handle;
  // Coming back means that the focus was elsewhere, so that the main window hears of it in every case.
  if (desktop.focus == target) MoveFocus(nullptr);
  MoveFocus(target);
}

void HandleRaiseRequests() {
  const auto requests = TakeRaiseRequests();
  if (requests.empty()) return;
  TheDesktop().raised += static_cast<int>(requests.size());
  CurrentHost().ComeToForeground();
  EnterForeground();
}

}  // namespace phone

using namespace phone;

HWND SetFocus(HWND window) {
  if (!OnUiThread()) return nullptr;
  return Guarded<HWND>(nullptr, [window]() -> HWND {
    if (window != nullptr && TheDesktop().windows.Find(window) == nullptr) return nullptr;
    return MoveFocus(window);
  });
}

HWND FindWindowW(LPCWSTR class_name, LPCWSTR title) {
  if (!OnUiThread()) return nullptr;
  return Guarded<HWND>(nullptr, [&]() -> HWND {
    for (const auto& window : TheDesktop().windows.all()) {
      if (window->parent != nullptr) continue;
      if (Matches(window->class_name, class_name) && Matches(window->text, title)) return window->handle;
    }
    if (!OtherInstanceRuns()) return nullptr;
    other_window = std::u16string(class_name != nullptr ? class_name : u"") + u'\t' + (title != nullptr ? title : u"");
    return kOtherInstance;
  });
}

BOOL SetForegroundWindow(HWND window) {
  if (!OnUiThread()) return FALSE;
  return Guarded<BOOL>(FALSE, [window]() -> BOOL {
    if (IsOtherInstance(window)) return RaiseOtherInstance(ToUtf8Lossy(other_window)) ? TRUE : FALSE;
    if (TheDesktop().windows.Find(window) == nullptr) return FALSE;
    if (TheDesktop().foreground) return TRUE;
    CurrentHost().ComeToForeground();
    EnterForeground();
    return TRUE;
  });
}

BOOL SHNavigateBack() {
  if (!OnUiThread()) return FALSE;
  return Guarded<BOOL>(FALSE, [] {
    Desktop& desktop = TheDesktop();
    ++desktop.back_navigations;
    if (!desktop.foreground) return TRUE;
    if (desktop.menu) CloseMenu();
    desktop.foreground = false;
    MoveFocus(nullptr);
    CurrentHost().LeaveForeground();
    return TRUE;
  });
}
