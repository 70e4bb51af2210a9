#include "windows/input.h"

#include "windows/desktop.h"
#include "windows/focus.h"
#include "windows/message_queue.h"
#include "windows/pointer.h"
#include "windows/shell_keys.h"

namespace phone {

namespace {

constexpr LPARAM kPressed = 1;                                                             // one repeat
constexpr LPARAM kReleased = static_cast<LPARAM>(static_cast<std::int32_t>(0xC0000001u));  // it was down, and goes up

bool ModalIsOpen() {
  return TheDesktop().menu.has_value() || !TheDesktop().boxes.empty();
}

/// A key goes to what is open; held on since before it was opened, it does nothing there but walk. False when nothing
/// is open.
bool PressInModal(UINT key, bool repeated) {
  if (!ModalIsOpen()) return false;
  const bool walks = key == VK_UP || key == VK_DOWN;
  if (repeated && !walks) return true;
  if (!TheDesktop().boxes.empty())
    PressInBox(key);
  else
    PressInMenu(key);
  return true;
}

void Press(UINT key) {
  Desktop& desktop = TheDesktop();
  InputQueue& input = desktop.input;
  const bool repeated = input.held[key];
  input.held.set(key);
  // What was kept stays kept until it goes up, though what kept it may be closed by now.
  const bool kept = !desktop.foreground || PressInModal(key, repeated) || (repeated && input.kept[key]);
  input.kept.set(key, kept);
  if (kept || PressInShell(key, repeated)) return;
  if (desktop.focus != nullptr) PostToWindow(desktop.focus, WM_KEYDOWN, key, kPressed);
}

void Release(UINT key) {
  Desktop& desktop = TheDesktop();
  InputQueue& input = desktop.input;
  const bool kept = input.kept[key];
  input.held.reset(key);
  input.kept.reset(key);
  if (kept || !desktop.foreground || ModalIsOpen() || ReleaseInShell(key)) return;
  if (desktop.focus != nullptr) PostToWindow(desktop.focus, WM_KEYUP, key, kReleased);
}

void Type(WCHAR character) {
  Desktop& desktop = TheDesktop();
  if (!desktop.foreground || !desktop.boxes.empty()) return;
  if (desktop.menu)
    TypeInMenu(character);
  else if (desktop.focus != nullptr)
    PostToWindow(desktop.focus, WM_CHAR, character, kPressed);
}

void PostToMain(UINT message, WPARAM wparam, LPARAM lparam) {
  if (const Window* main = TheDesktop().windows.Main()) PostToWindow(main->handle, message, wparam, lparam);
}

void Handle(const Input& input) {
  TheDesktop().input.modifiers = input.modifiers;
  switch (input.kind) {
    case InputKind::press: return Press(input.value);
    case InputKind::release: return Release(input.value);
    case InputKind::character: return Type(static_cast<WCHAR>(input.value));
    case InputKind::menu_choice: return ChooseInMenu(input.value);
    case InputKind::box_answer: return AnswerTopBox(static_cast<int>(input.value));
    case InputKind::command:
      if (!ModalIsOpen()) PostToMain(WM_COMMAND, input.value, 0);
      return;
    case InputKind::hotkey_down: return PostToMain(WM_HOTKEY, 0, HotKeyParameter(input.value, false));
    case InputKind::hotkey_up: return PostToMain(WM_HOTKEY, 0, HotKeyParameter(input.value, true));
    case InputKind::click: return ClickAt(input);
    case InputKind::drag: return DragPointer(input.at);
    case InputKind::come_back: return EnterForeground();
    case InputKind::close: return CloseAll();
  }
}

}  // namespace

bool HandleNextInput() {
  auto& waiting = TheDesktop().input.waiting;
  if (waiting.empty()) return false;
  const Input input = waiting.front();
  waiting.pop_front();
  Handle(input);
  return true;
}

}  // namespace phone
