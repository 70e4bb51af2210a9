#include "windows/pointer.h"

#include "aygshell.h"
#include "windows/desktop.h"

namespace phone {

namespace {

enum class TargetKind { nothing, left_key, right_key, menu, beside_menu, field };

/// What lies at a place of the screen and can be clicked now.
struct Target {
  TargetKind kind = TargetKind::nothing;
  MenuHit menu = {};
  Window* field = nullptr;
  int x = 0;  ///< px, of the place in the field
};

Target SoftKeyAt(POINT at) {
  const KeyLabels labels = VisibleKeyLabels();
  const bool on_right = at.x >= TheDesktop().screen.whole.width() / 2;
  const std::u16string_view label = on_right ? labels.right : labels.left;
  if (label.find_first_not_of(u' ') == std::u16string_view::npos) return {};
  return {.kind = on_right ? TargetKind::right_key : TargetKind::left_key};
}

Target FieldAt(const Window& main, POINT at) {
  for (const auto& window : TheDesktop().windows.all()) {
    const RECT& rect = window->rect;
    const bool inside = at.x >= rect.left && at.x < rect.right && at.y >= rect.top && at.y < rect.bottom;
    if (window->edit && window->visible && window->parent == main.handle && inside)
      return {.kind = TargetKind::field, .field = window.get(), .x = at.x - rect.left};
  }
  return {};
}

Target TargetAt(POINT at) {
  Desktop& desktop = TheDesktop();
  const Surface& screen = desktop.screen.whole;
  if (!desktop.foreground || at.x < 0 || at.y < 0 || at.x >= screen.width() || at.y >= screen.height()) return {};
  if (at.y >= screen.height() - kSoftKeyBarHeight) return SoftKeyAt(at);
  if (!desktop.boxes.empty()) return {};
  at.y -= kTitleStripHeight;
  if (desktop.menu) {
    const MenuHit hit = HitMenu(*desktop.menu, desktop.screen.client, at);
    return {.kind = hit.part == MenuPart::none ? TargetKind::beside_menu : TargetKind::menu, .menu = hit};
  }
  const Window* main = desktop.windows.Main();
  return main != nullptr && main->visible ? FieldAt(*main, at) : Target{};
}

/// Presses and releases a key, then does `after`, before all other waiting input.
void TapFirst(UINT key, const Input* after = nullptr) {
  auto& waiting = TheDesktop().input.waiting;
  if (after != nullptr) waiting.push_front(*after);
  waiting.push_front({InputKind::release, key});
  waiting.push_front({InputKind::press, key});
}

/// A field without the focus gets it by Up or Down, as the program's form moves it; the click is done when it is there.
void ClickField(Window& field, int x, const Input& click) {
  Desktop& desktop = TheDesktop();
  if (desktop.focus == field.handle) {
    desktop.input.dragged = field.handle;
    return PutCaretAt(field, x, click.modifiers.shift ? Selecting::yes : Selecting::no);
  }
  const Window* focused = desktop.windows.Find(desktop.focus);
  if (focused == nullptr || !focused->edit || click.value == 0) return;
  Input again = click;
  --again.value;
  TapFirst(field.rect.top < focused->rect.top ? VK_UP : VK_DOWN, &again);
}

}  // namespace

bool CanClick(POINT at) {
  return TargetAt(at).kind != TargetKind::nothing;
}

void ClickAt(const Input& click) {
  TheDesktop().input.dragged = nullptr;
  const Target target = TargetAt(click.at);
  switch (target.kind) {
    case TargetKind::nothing: return;
    case TargetKind::left_key: return TapFirst(VK_TSOFT1);
    case TargetKind::right_key: return TapFirst(VK_TSOFT2);
    case TargetKind::menu: return ClickInMenu(target.menu);
    case TargetKind::beside_menu: return TapFirst(VK_TBACK);
    case TargetKind::field: return ClickField(*target.field, target.x, click);
  }
}

void DragPointer(POINT at) {
  Desktop& desktop = TheDesktop();
  Window* field = desktop.windows.Find(desktop.input.dragged);
  if (field == nullptr || !field->edit || desktop.focus != field->handle) return;
  PutCaretAt(*field, at.x - field->rect.left, Selecting::yes);
}

}  // namespace phone
