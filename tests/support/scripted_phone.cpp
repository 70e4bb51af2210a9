#include "support/scripted_phone.h"

#include <poll.h>
#include <signal.h>

#include <utility>

#include "support/process.h"

namespace {

using Json = ScriptedPhone::Json;

constexpr int kPatience = 60'000;  // ms

// A list as the screens lay it out, upright.
constexpr int kTextLeft = 16;
constexpr int kBarLeft = 11;
constexpr int kBarWidth = 220;
constexpr int kFirstRow = 37;
constexpr int kRowHeight = 27;
constexpr int kRowsEnd = kFirstRow + 8 * kRowHeight;

bool IsRow(const Json& op) {
  if (op["op"] != "DrawText" || op["text"] == "") return false;
  const int left = op["rect"][0];
  const int top = op["rect"][1];
  return left == kTextLeft && top >= kFirstRow && top < kRowsEnd;
}

bool IsSelectionBar(const Json& op) {
  return op.contains("x") && op["x"] == kBarLeft && op["w"] == kBarWidth && op["h"] == kRowHeight &&
         op.value("alpha", 255) == 255;
}

}  // namespace

ScriptedPhone::ScriptedPhone(const PhoneFolder& folder, const std::vector<std::string>& options) {
  std::vector<std::string> words = {HEADLESS_PROGRAM, "--phone", folder.path().string()};
  words.insert(words.end(), options.begin(), options.end());
  int script[2];
  int replies[2];
  if (pipe2(script, O_CLOEXEC) != 0 || pipe2(replies, O_CLOEXEC) != 0) throw std::runtime_error("no pipes");
  process_ = StartProgram(words, [&](auto* actions) {
    posix_spawn_file_actions_adddup2(actions, script[0], STDIN_FILENO);
    posix_spawn_file_actions_adddup2(actions, replies[1], STDOUT_FILENO);
  });
  close(script[0]);
  close(replies[1]);
  script_ = script[1];
  replies_ = replies[0];
  signal(SIGPIPE, SIG_IGN);
}

ScriptedPhone::~ScriptedPhone() {
  if (process_ > 0) End();
}

void ScriptedPhone::Send(const std::string& line) {
  const std::string text = line + "\n";
  if (write(script_, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
    throw std::runtime_error("the program is gone");
}

Json ScriptedPhone::Do(const std::string& command) {
  Send(command);
  return Json::parse(ReadLine());
}

Json ScriptedPhone::Play(const std::vector<std::string>& commands) {
  Json reply;
  for (const std::string& command : commands) {
    reply = Do(command);
    if (reply["ok"] != true) throw std::runtime_error(command + ": " + reply.dump());
  }
  return reply;
}

Json ScriptedPhone::Menu(const std::string& label, const std::vector<std::string>& then) {
  const Json chosen = Play({"softkey left", "menu " + label});
  return then.empty() ? chosen : Play(then);
}

std::string ScriptedPhone::ReadLine() {
  std::size_t end;
  while ((end = buffer_.find('\n')) == std::string::npos) {
    pollfd waiting = {replies_, POLLIN, 0};
    if (poll(&waiting, 1, kPatience) <= 0) {
      kill(process_, SIGABRT);
      throw std::runtime_error("no reply");
    }
    char block[65536];
    const ssize_t length = read(replies_, block, sizeof block);
    if (length <= 0) throw std::runtime_error("the program ended without a reply");
    buffer_.append(block, static_cast<std::size_t>(length));
  }
  std::string line = buffer_.substr(0, end);
  buffer_.erase(0, end + 1);
  return line;
}

void ScriptedPhone::Kill() {
  kill(process_, SIGKILL);
}

int ScriptedPhone::End() {
  close(script_);
  // Whatever it still says is taken, so that it never waits for this end.
  char block[65536];
  while (read(replies_, block, sizeof block) > 0) continue;
  close(replies_);
  return AwaitEnd(std::exchange(process_, -1));
}

Json ScriptedPhone::Frame() {
  return Play({"repaint"});
}

std::vector<std::string> ScriptedPhone::Texts() {
  return TextsIn(Frame());
}

std::string ScriptedPhone::Screen() {
  const Json frame = Frame();
  for (const Json& op : frame["ops"]) {
    if (op["op"] != "DrawText" || IsRow(op)) continue;
    for (const char* const caption :
         {"Select Theme", "Select Plugins", "Save Theme", "Choose Plugin", "Add to favorites"})
      if (op["text"] == caption) return caption;
  }
  return "About";
}

std::vector<std::string> ScriptedPhone::Rows() {
  std::vector<std::string> rows;
  const Json frame = Frame();
  for (const Json& op : frame["ops"])
    if (IsRow(op)) rows.push_back(op["text"]);
  return rows;
}

std::string ScriptedPhone::Box() {
  const Json box = State()["box"];
  return box.is_null() ? "" : box["text"].get<std::string>();
}

std::string ScriptedPhone::Selected() {
  const Json frame = Frame();
  int bar = -1;
  for (const Json& op : frame["ops"]) {
    if (bar < 0 && IsSelectionBar(op)) bar = op["y"];
    if (IsRow(op) && op["rect"][1] == bar) return op["text"];
  }
  return {};
}

std::vector<std::string> TextsIn(const Json& reply) {
  std::vector<std::string> texts;
  for (const Json& op : reply.value("ops", Json::array()))
    if (op["op"] == "DrawText" && op["text"] != "") texts.push_back(op["text"]);
  return texts;
}
