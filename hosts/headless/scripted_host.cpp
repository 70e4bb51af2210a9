#include "hosts/headless/scripted_host.h"

#include <ostream>
#include <utility>

#include "system/instance.h"

namespace headless {

using script::Command;
using script::Reply;

ScriptedHost::ScriptedHost(Script& script, std::ostream& replies, std::uint32_t tick)
    : script_(script), replies_(replies), clock_(tick) {}

/// Nothing asks for a document to be shown for real: the phone keeps the record of what was asked.
bool ScriptedHost::OpenDocument(const std::string&, const std::string&) {
  return true;
}

void ScriptedHost::WaitForInput(bool) {
  if (phone::LetThreadsRun()) return;
  frames_.Close();
  if (performer_.Running() && !performer_.StepsLeft()) Answer(performer_.Finish());
  if (!performer_.Running()) {
    std::optional<Command> command = ReadCommand();
    if (!command) {
      if (script_ended_) phone::Close();
      return;
    }
    performer_.Begin(std::move(*command));
  }
  performer_.TakeStep();
  // Who is woken up by the clock goes first, so that the step's frame shows what came of it.
  phone::LetThreadsRun();
}

std::optional<Command> ScriptedHost::ReadCommand() {
  std::string line;
  do {
    const Script::Event event = script_ended_ ? Script::Event::end : script_.Next(line, phone::RaiseDescriptor());
    script_ended_ = event == Script::Event::end;
    if (event != Script::Event::line) return std::nullopt;
  } while (script::SaysNothing(line));
  std::optional<Command> command = script::ParseCommand(line);
  if (command) return command;
  refused_ = Line{script_.LineNumber(), line};
  script_ended_ = true;
  return std::nullopt;
}

void ScriptedHost::Answer(const Reply& reply) {
  constexpr int compact = -1;
  replies_ << reply.dump(compact, ' ', false, Reply::error_handler_t::replace) << std::endl;
}

void ScriptedHost::EndProgram(int exit_code) {
  performer_.ProgramEnded(exit_code);
  if (performer_.Running()) held_ = performer_.Finish();
}

void ScriptedHost::ServeAfterEnd(const WithFiles& with_files) {
  if (held_) Answer(*held_);
  while (!script_ended_) {
    std::optional<Command> command = ReadCommand();
    if (!command) continue;
    const bool in_files = command->after_end == script::AfterEnd::in_files;
    performer_.Begin(std::move(*command));
    const auto perform = [this](bool files_at_hand) { Answer(performer_.PerformAfterEnd(files_at_hand)); };
    in_files ? with_files(perform) : perform(false);
  }
}

}  // namespace headless
