#include <algorithm>

#include "windows/desktop.h"
#include "windows/painting.h"
#include "windows/pointer.h"

namespace phone {

namespace {

void Put(const Input& input) {
  TheDesktop().input.waiting.push_back(input);
}

bool IsKey(UINT key) {
  return key < kKeyCodes;
}

}  // namespace

void PressKey(UINT key, KeyModifiers modifiers) {
  if (IsKey(key)) Put({InputKind::press, key, modifiers});
}

void ReleaseKey(UINT key) {
  if (IsKey(key)) Put({InputKind::release, key});
}

void TypeCharacter(WCHAR character) {
  Put({InputKind::character, character});
}

bool Click(int x, int y, KeyModifiers modifiers) {
  if (!CanClick({x, y})) return false;
  Put({InputKind::click, static_cast<UINT>(TheDesktop().windows.all().size()), modifiers, {x, y}});
  return true;
}

void DragTo(int x, int y) {
  const Surface& screen = TheDesktop().screen.whole;
  Put({InputKind::drag, 0, {}, {std::clamp(x, 0, screen.width() - 1), std::clamp(y, 0, screen.height() - 1)}});
}

bool ChooseMenuItem(std::size_t index) {
  const std::optional<Menu>& menu = TheDesktop().menu;
  if (!menu || index >= menu->items.size() || !menu->items[index].enabled) return false;
  Put({InputKind::menu_choice, static_cast<UINT>(index)});
  return true;
}

bool AnswerBox(int answer) {
  const auto& boxes = TheDesktop().boxes;
  if (boxes.empty()) return false;
  const auto is_it = [answer](const BoxButton& button) { return button.answer == answer; };
  if (!std::ranges::any_of(boxes.back()->buttons, is_it)) return false;
  Put({InputKind::box_answer, static_cast<UINT>(answer)});
  return true;
}

bool SendCommand(int id) {
  const Desktop& desktop = TheDesktop();
  if (desktop.menu || !desktop.boxes.empty()) return false;
  Put({InputKind::command, static_cast<UINT>(id)});
  return true;
}

void SendHotKey(UINT key, bool released) {
  Put({released ? InputKind::hotkey_up : InputKind::hotkey_down, key});
}

void ComeBack() {
  Put({InputKind::come_back});
}

void ResizeClient(int width, int height) {
  Desktop& desktop = TheDesktop();
  desktop.client_width = std::clamp(width, kLeastClientExtent, kLargestClientExtent);
  desktop.client_height = std::clamp(height, kLeastClientExtent, kLargestClientExtent);
  desktop.screen = ScreenState(desktop.client_width, desktop.client_height);
  if (desktop.menu) desktop.menu->stale = true;
  for (MessageBox* box : desktop.boxes) box->picture.reset();
  for (const auto& window : desktop.windows.all()) {
    if (window->parent != nullptr || !window->paints()) continue;
    window->rect = {0, 0, desktop.client_width, desktop.client_height};
    ResizeWindowSurface(*window);
  }
}

void InvalidateAll() {
  if (Window* main = TheDesktop().windows.Main()) Invalidate(*main, nullptr);
}

void Close() {
  Put({InputKind::close});
}

}  // namespace phone
