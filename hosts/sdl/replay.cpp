#include "hosts/sdl/replay.h"

#include <cerrno>
#include <fstream>
#include <system_error>
#include <utility>

namespace sdl {
namespace {

std::string InLine(int number, const std::string& what) {
  return "line " + std::to_string(number) + ": " + what;
}

script::Command Understand(const std::string& text, const std::string& where) {
  std::optional<script::Command> command = script::ParseCommand(text);
  if (!command) throw NotPlayable(where + " is not understood: " + text);
  if (command->reply_only) throw NotPlayable(where + " is there for its reply, which a window cannot give: " + text);
  return std::move(*command);
}

}  // namespace

Replay::Replay(const std::string& file) {
  std::ifstream script(file);
  std::string text;
  int number = 0;
  while (std::getline(script, text)) {
    ++number;
    if (script::SaysNothing(text)) continue;
    lines_.push_back({number, Understand(text, file + ", line " + std::to_string(number))});
  }
  // A file that cannot be opened, and a folder, end before their end.
  if (!script.eof())
    throw std::runtime_error("the script " + file + " cannot be read: " + std::generic_category().message(errno));
}

bool Replay::TakeStep() {
  if (performer_->Running() && !performer_->StepsLeft()) FinishCommand();
  if (!performer_->Running()) {
    if (lines_.empty()) return false;
    running_line_ = lines_.front().number;
    performer_->Begin(std::move(lines_.front().command));
    lines_.pop_front();
  }
  performer_->TakeStep();
  return true;
}

std::string Replay::TakeProblem() {
  return std::exchange(problem_, {});
}

void Replay::FinishCommand() {
  const script::Reply reply = performer_->Finish();
  if (reply["ok"] == false) problem_ = InLine(running_line_, reply["error"]);
}

}  // namespace sdl
