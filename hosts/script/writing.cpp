#include "hosts/script/writing.h"

#include "hosts/script/command.h"
#include "hosts/script/keys.h"
#include "phone.h"
#include "system/outside.h"
#include "system/text.h"

namespace script {
namespace {

using phone::Input;
using phone::InputKind;

std::string MenuChoice(std::size_t index) {
  const auto menu = phone::Look().menu;
  return "menu " + phone::ToUtf8Lossy(menu && index < menu->size() ? (*menu)[index] : std::u16string());
}

const char* NameOfAnswer(UINT answer) {
  return answer == IDYES ? "yes" : answer == IDNO ? "no" : "ok";
}

std::string Place(const Input& input) {
  return std::to_string(input.at.x) + ' ' + std::to_string(input.at.y);
}

std::string CommandFor(const Input& input) {
  const std::string value = std::to_string(input.value);
  switch (input.kind) {
    case InputKind::press: return "keydown " + KeyName(input.value, input.modifiers);
    case InputKind::release: return "keyup " + KeyName(input.value, {});
    case InputKind::character: return "type " + phone::ToUtf8Lossy(std::u16string(1, static_cast<WCHAR>(input.value)));
    case InputKind::menu_choice: return MenuChoice(input.value);
    case InputKind::box_answer: return std::string("answer ") + NameOfAnswer(input.value);
    case InputKind::command: return "command " + value;
    case InputKind::hotkey_down: return "hotkey " + value + " down";
    case InputKind::hotkey_up: return "hotkey " + value + " up";
    case InputKind::click: return "click " + Place(input) + (input.modifiers.shift ? " shift" : "");
    case InputKind::drag: return "drag " + Place(input);
    case InputKind::come_back: return "focus main";
    case InputKind::close: return "quit";
  }
  return {};
}

/// Whether the second is the release of the key that the first presses.
bool IsTap(const Input& first, const Input& second) {
  return first.kind == InputKind::press && second.kind == InputKind::release && first.value == second.value;
}

/// The clipboard of another day holds another text, so that a paste brings its own along.
bool IsPaste(const Input& input) {
  const auto [shift, control] = input.modifiers;
  return input.kind == InputKind::press && ((input.value == u'V' && control) || (input.value == VK_INSERT && shift));
}

std::string ClipboardCommand() {
  return "clipboard set " + Reply(phone::ToUtf8Lossy(phone::CurrentHost().ClipboardText())).dump();
}

}  // namespace

/// What is handed over at once is one command where there is one for it, so that nothing happens in between.
std::vector<std::string> CommandsFor(const std::deque<Input>& input) {
  std::vector<std::string> commands;
  for (std::size_t at = 0; at < input.size(); ++at) {
    if (IsPaste(input[at])) commands.push_back(ClipboardCommand());
    if (input[at].kind == InputKind::character) {
      std::u16string text;
      for (; at < input.size() && input[at].kind == InputKind::character; ++at)
        text += static_cast<WCHAR>(input[at].value);
      --at;
      commands.push_back("type " + phone::ToUtf8Lossy(text));
    } else if (at + 1 < input.size() && IsTap(input[at], input[at + 1])) {
      commands.push_back("key " + KeyName(input[at].value, input[at].modifiers));
      ++at;
    } else {
      commands.push_back(CommandFor(input[at]));
    }
  }
  return commands;
}

}  // namespace script
