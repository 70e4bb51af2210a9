#include <algorithm>
#include <iterator>

#include "graphics/trace.h"
#include "hosts/script/arguments.h"
#include "hosts/script/command.h"
#include "hosts/script/keys.h"
#include "hosts/script/picture.h"
#include "hosts/script/reply.h"
#include "system/faults.h"
#include "system/outside.h"
#include "system/text.h"

namespace script {
namespace {

using Parsed = std::optional<Command>;

constexpr std::uint32_t kLargestNumber = 0xFFFFFFFF;
constexpr std::uint32_t kLargestId = 0xFFFF;
constexpr std::uint32_t kLargestSide = 4096;  ///< px, of the client area
constexpr std::uint32_t kLargestPlace = kLargestSide + phone::kTitleStripHeight + phone::kSoftKeyBarHeight;
constexpr std::uint32_t kDefaultStep = 16;

/// A command of one step.
Parsed Do(Step act) {
  Command command;
  command.steps.push_back(std::move(act));
  return command;
}

/// A command that only looks.
Parsed Show(std::function<void(Execution&, Reply&)> report) {
  Parsed command = Do([](Execution&) {});
  command->report = std::move(report);
  return command;
}

Parsed ForItsReply(Parsed command) {
  if (command) command->reply_only = true;
  return command;
}

std::u16string Utf16(std::string_view text) {
  return phone::ToUtf16(text).value_or(std::u16string());
}

// --- Keys ---

Parsed PressAndRelease(const Key& key) {
  return Do([key](Execution&) {
    Press(key);
    Release(key);
  });
}

Parsed ParseKey(Arguments& arguments) {
  const std::optional<Key> key = KeyByName(arguments.Word());
  return key ? PressAndRelease(*key) : std::nullopt;
}

Parsed ParseKeyDown(Arguments& arguments) {
  const std::optional<Key> key = KeyByName(arguments.Word());
  if (!key) return std::nullopt;
  return Do([key = *key](Execution&) { Press(key); });
}

Parsed ParseKeyUp(Arguments& arguments) {
  const std::optional<Key> key = KeyByName(arguments.Word());
  if (!key) return std::nullopt;
  return Do([key = *key](Execution&) { Release(key); });
}

Parsed ParseType(Arguments& arguments) {
  const std::optional<std::string_view> rest = arguments.Rest();
  if (!rest) return std::nullopt;
  return Do([text = Utf16(*rest)](Execution&) {
    for (const char16_t unit : text) phone::TypeCharacter(unit);
  });
}

Parsed ParseSoftKey(Arguments& arguments) {
  const std::string_view side = arguments.Word();
  if (side == "left") return PressAndRelease(*KeyByName("softleft"));
  if (side == "right") return PressAndRelease(*KeyByName("softright"));
  return std::nullopt;
}

Parsed ParseHotKey(Arguments& arguments) {
  const auto code = arguments.Number(0, kLargestId);
  const std::string_view half = arguments.Word();
  if (!code || (half != "down" && half != "up")) return std::nullopt;
  const bool released = half == "up";
  return Do([code = *code, released](Execution&) { phone::SendHotKey(code, released); });
}

// --- The pointer and the clipboard ---

std::optional<POINT> ParsePlace(Arguments& arguments) {
  const auto x = arguments.Number(0, kLargestPlace);
  const auto y = arguments.Number(0, kLargestPlace);
  if (!x || !y) return std::nullopt;
  return POINT{static_cast<LONG>(*x), static_cast<LONG>(*y)};
}

Parsed ParseClick(Arguments& arguments) {
  const auto place = ParsePlace(arguments);
  const bool shift = !arguments.AtEnd();
  if (!place || (shift && arguments.Word() != "shift")) return std::nullopt;
  return Do([at = *place, shift](Execution& execution) {
    if (!phone::Click(at.x, at.y, {.shift = shift})) execution.error = "there is nothing to click";
  });
}

Parsed ParseDrag(Arguments& arguments) {
  const auto place = ParsePlace(arguments);
  if (!place) return std::nullopt;
  return Do([at = *place](Execution&) { phone::DragTo(at.x, at.y); });
}

/// The rest of the line as it stands, or a JSON string. Nothing for one that is none.
std::optional<std::u16string> ParseText(Arguments& arguments) {
  const std::string_view rest = arguments.Rest().value_or("");
  if (!rest.starts_with('"')) return Utf16(rest);
  const Reply text = Reply::parse(rest, nullptr, /*allow_exceptions=*/false);
  if (!text.is_string()) return std::nullopt;
  return Utf16(text.get<std::string>());
}

Parsed ParseClipboard(Arguments& arguments) {
  const std::string_view action = arguments.Word();
  if (action == "get")
    return ForItsReply(Show(
        [](Execution&, Reply& reply) { reply["text"] = phone::ToUtf8Lossy(phone::CurrentHost().ClipboardText()); }));
  const auto text = ParseText(arguments);
  if (action != "set" || !text) return std::nullopt;
  return Do([text = *text](Execution&) { phone::CurrentHost().SetClipboardText(text); });
}

// --- Menus, boxes, commands ---

void ChooseLabel(Execution& execution, const std::u16string& label) {
  const auto menu = phone::Look().menu;
  if (!menu) {
    execution.error = "no menu is open";
    return;
  }
  const auto item = std::find(menu->begin(), menu->end(), label);
  if (item == menu->end() || !phone::ChooseMenuItem(static_cast<std::size_t>(item - menu->begin())))
    execution.error = "the menu has no such item";
}

Parsed ParseMenu(Arguments& arguments) {
  const std::u16string label = Utf16(arguments.Rest().value_or(""));
  if (label.empty()) return std::nullopt;
  return Do([label](Execution& execution) { ChooseLabel(execution, label); });
}

Parsed ParseAnswer(Arguments& arguments) {
  const std::string_view name = arguments.Word();
  const int answer = name == "yes" ? IDYES : name == "no" ? IDNO : name == "ok" ? IDOK : 0;
  if (!answer) return std::nullopt;
  return Do([answer](Execution& execution) {
    if (!phone::AnswerBox(answer)) execution.error = "no message box with such a button is open";
  });
}

Parsed ParseCommandId(Arguments& arguments) {
  const auto id = arguments.Number(0, kLargestId);
  if (!id) return std::nullopt;
  return Do([id = *id](Execution& execution) {
    if (!phone::SendCommand(static_cast<int>(id))) execution.error = "a menu or message box is open";
  });
}

// --- The window ---

Parsed ParseFocus(Arguments& arguments) {
  if (arguments.Word() != "main") return std::nullopt;
  return Do([](Execution&) { phone::ComeBack(); });
}

Parsed ParseResize(Arguments& arguments) {
  const auto width = arguments.Number(1, kLargestSide);
  const auto height = arguments.Number(1, kLargestSide);
  if (!width || !height) return std::nullopt;
  return Do([width = *width, height = *height](Execution&) {
    phone::ResizeClient(static_cast<int>(width), static_cast<int>(height));
  });
}

Parsed ParsePaint(Arguments&) {
  return Do([](Execution& execution) { execution.frames.Ask(); });
}

Parsed ParseRepaint(Arguments&) {
  return Do([](Execution& execution) {
    phone::InvalidateAll();
    execution.frames.Ask();
  });
}

Parsed ParseFrames(Arguments& arguments) {
  const std::string_view name = arguments.Word();
  if (name != "asked" && name != "auto") return std::nullopt;
  const bool only_asked = name == "asked";
  return Do([only_asked](Execution& execution) { execution.frames.PaintOnlyWhenAsked(only_asked); });
}

Parsed ParseQuit(Arguments&) {
  return Do([](Execution&) { phone::Close(); });
}

// --- Time ---

struct Waiting {
  std::uint32_t left;       ///< ms
  std::uint32_t step;       ///< ms
  std::uint32_t step_left;  ///< ms to the end of the step that was begun
};

/// The next sleeper of the program ends a step early, so that it wakes up exactly when it asked to.
void MoveOn(Execution& execution, Waiting waiting) {
  if (!waiting.left) return;
  const std::uint32_t most = std::min(waiting.left, waiting.step_left);
  const std::uint32_t advance = NextSleeper(execution.clock.Now(), most).value_or(most);
  execution.clock.MoveBy(advance);
  waiting.left -= advance;
  waiting.step_left = waiting.step_left == advance ? waiting.step : waiting.step_left - advance;
  if (waiting.left) execution.steps.push_back([waiting](Execution& next) { MoveOn(next, waiting); });
}

Parsed ParseWait(Arguments& arguments) {
  const auto milliseconds = arguments.Number(0, kLargestNumber);
  const auto step = arguments.AtEnd() ? kDefaultStep : arguments.Number(1, kLargestNumber);
  if (!milliseconds || !step) return std::nullopt;
  const Waiting waiting{*milliseconds, *step, *step};
  return Do([waiting](Execution& execution) { MoveOn(execution, waiting); });
}

// --- Looking ---

Parsed ParseState(Arguments&) {
  Parsed command = Show(DescribeState);
  command->after_end = AfterEnd::remembered;
  return ForItsReply(command);
}

Parsed ShowPicture(Arguments& arguments, phone::ScreenImage (*look)()) {
  const std::string file(arguments.Rest().value_or(""));
  if (file.empty()) return std::nullopt;
  return Show([file, look](Execution& execution, Reply&) {
    if (!WritePicture(look(), file)) execution.error = "the picture cannot be written";
  });
}

Parsed ParseShot(Arguments& arguments) {
  return ShowPicture(arguments, phone::Screen);
}

Parsed ParseClient(Arguments& arguments) {
  return ShowPicture(arguments, phone::Client);
}

/// Compares instead of telling, so that a script can say what it expects.
Parsed ParseLooks(Arguments& arguments) {
  const std::string_view word = arguments.Word();
  if (word.empty()) return std::nullopt;
  return Show([expected = std::string(word)](Execution& execution, Reply&) {
    if (PictureChecksum(phone::Screen()) != expected) execution.error = "the screen looks different";
  });
}

Parsed ParseTrace(Arguments& arguments) {
  const std::string_view name = arguments.Word();
  if (name != "on" && name != "off") return std::nullopt;
  const bool on = name == "on";
  return Do([on](Execution&) { phone::EnableTrace(on); });
}

// --- The registry ---

Parsed GetRegistry(const std::u16string& key, const std::u16string& value) {
  return ForItsReply(Show([key, value](Execution&, Reply& reply) {
    const std::optional<std::u16string> text = phone::RegistryGet(key, value);
    reply["text"] = text ? Reply(phone::ToUtf8Lossy(*text)) : Reply(nullptr);
  }));
}

Parsed SetRegistry(const std::u16string& key, const std::u16string& value, const std::u16string& text) {
  return Do([key, value, text](Execution& execution) {
    if (!phone::RegistrySet(key, value, text)) execution.error = "the registry cannot be written";
  });
}

Parsed DeleteRegistry(const std::u16string& key, const std::u16string& value) {
  return Do([key, value](Execution& execution) {
    if (!phone::RegistryDelete(key, value)) execution.error = "there is no such value, or it cannot be deleted";
  });
}

Parsed ParseRegistry(Arguments& arguments) {
  const std::string_view action = arguments.Word();
  const std::optional<std::string> key = arguments.Quoted();
  const std::optional<std::string> value = arguments.Quoted();
  if (!key || !value) return std::nullopt;
  const std::optional<std::string> text = action == "set" ? arguments.Quoted() : std::string();
  if (!text) return std::nullopt;
  Parsed command;
  if (action == "get") command = GetRegistry(Utf16(*key), Utf16(*value));
  if (action == "set") command = SetRegistry(Utf16(*key), Utf16(*value), Utf16(*text));
  if (action == "delete") command = DeleteRegistry(Utf16(*key), Utf16(*value));
  if (command) command->after_end = AfterEnd::in_files;
  return command;
}

// --- Faults ---

Parsed ParseFail(Arguments& arguments) {
  Fault fault{arguments.Word()};
  if (!phone::OperationByName(fault.operation)) return std::nullopt;
  const std::optional<std::uint32_t> count = arguments.AtEnd() ? 1 : arguments.Number(0, kLargestNumber);
  const std::optional<std::uint32_t> after = arguments.AtEnd() ? 0 : arguments.Number(0, kLargestNumber);
  if (!count || !after) return std::nullopt;
  return Do([operation = std::string(fault.operation), count = *count, after = *after](Execution&) {
    Inject({operation, count, after});
  });
}

struct Row {
  std::string_view name;
  Parsed (*parse)(Arguments& arguments);
};

constexpr Row kCommands[] = {
    {"key", ParseKey},           {"keydown", ParseKeyDown}, {"keyup", ParseKeyUp},   {"type", ParseType},
    {"softkey", ParseSoftKey},   {"menu", ParseMenu},       {"answer", ParseAnswer}, {"command", ParseCommandId},
    {"hotkey", ParseHotKey},     {"focus", ParseFocus},     {"resize", ParseResize}, {"wait", ParseWait},
    {"paint", ParsePaint},       {"repaint", ParseRepaint}, {"state", ParseState},   {"shot", ParseShot},
    {"client", ParseClient},     {"click", ParseClick},     {"drag", ParseDrag},     {"clipboard", ParseClipboard},
    {"registry", ParseRegistry}, {"fail", ParseFail},       {"trace", ParseTrace},   {"frames", ParseFrames},
    {"looks", ParseLooks},       {"quit", ParseQuit},
};

}  // namespace

bool SaysNothing(std::string_view line) {
  const std::size_t first = line.find_first_not_of(" \t");
  return first == std::string_view::npos || line[first] == '#';
}

std::optional<Command> ParseCommand(std::string_view line) {
  if (!phone::ToUtf16(line)) return std::nullopt;
  Arguments arguments(line);
  const std::string_view name = arguments.Word();
  const auto* const row = std::find_if(std::begin(kCommands), std::end(kCommands),
                                       [&](const Row& candidate) { return candidate.name == name; });
  if (row == std::end(kCommands)) return std::nullopt;
  Parsed command = row->parse(arguments);
  return arguments.AtEnd() ? command : std::nullopt;
}

bool Inject(const Fault& fault) {
  const std::optional<phone::Operation> operation = phone::OperationByName(fault.operation);
  if (operation) phone::SetFault(*operation, fault.count, fault.after);
  return operation.has_value();
}

}  // namespace script
