#include "hosts/headless/scripted_host.h"

#include <ostream>
#include <utility>

#include "graphics/trace.h"
#include "hosts/headless/reply.h"
#include "system/instance.h"
#include "system/text.h"

namespace headless {
namespace {

bool SaysNothing(const std::string& line) {
  const std::size_t first = line.find_first_not_of(" \t");
  return first == std::string::npos || line[first] == '#';
}

std::optional<Command> Understand(const std::string& line) {
  return phone::ToUtf16(line) ? ParseCommand(line) : std::nullopt;
}

}  // namespace

ScriptedHost::ScriptedHost(Script& script, std::ostream& replies, std::uint32_t tick)
    : script_(script), replies_(replies), clock_(tick) {}

bool ScriptedHost::FrameIsDue() {
  return frame_allowed_ && phone::FramesPainted() == frames_seen_;
}

/// Nothing asks for a document to be shown for real: the phone keeps the record of what was asked.
bool ScriptedHost::OpenDocument(const std::string&, const std::string&) {
  return true;
}

void ScriptedHost::WaitForInput(bool) {
  if (phone::LetThreadsRun()) return;
  frame_allowed_ = false;
  if (running_ && running_->execution.steps.empty()) Answer(Describe());
  if (!running_ && !BeginNext()) {
    if (script_ended_) phone::Close();
    return;
  }
  TakeStep();
}

bool ScriptedHost::BeginNext() {
  std::string line;
  do {
    const Script::Event event = script_ended_ ? Script::Event::end : script_.Next(line, phone::RaiseDescriptor());
    script_ended_ = event == Script::Event::end;
    if (event != Script::Event::line) return false;
  } while (SaysNothing(line));
  std::optional<Command> command = Understand(line);
  if (!command) {
    refused_ = Line{script_.LineNumber(), line};
    script_ended_ = true;
    return false;
  }
  Execution execution{clock_, ending_, std::move(command->steps), {}};
  running_.emplace(Running{std::move(*command), std::move(execution), phone::FramesPainted()});
  return true;
}

void ScriptedHost::TakeStep() {
  Execution& execution = running_->execution;
  const Step step = std::move(execution.steps.front());
  execution.steps.pop_front();
  frame_allowed_ = true;
  frames_seen_ = phone::FramesPainted();
  step(execution);
  // Who is woken up by the clock goes first, so that the step's frame shows what came of it.
  phone::LetThreadsRun();
}

Reply ScriptedHost::Describe() {
  Execution& execution = running_->execution;
  Reply reply = {{"ok", true}};
  if (running_->command.report && execution.error.empty()) running_->command.report(execution, reply);
  if (!execution.error.empty()) reply = {{"ok", false}, {"error", execution.error}};
  const std::uint64_t frames = phone::FramesPainted() - running_->frames_before;
  reply["painted"] = frames > 0;
  reply["frames"] = frames;
  if (frames > 0 && phone::TraceEnabled()) reply["ops"] = DescribeDrawing();
  return reply;
}

void ScriptedHost::Answer(const Reply& reply) {
  constexpr int compact = -1;
  replies_ << reply.dump(compact, ' ', false, Reply::error_handler_t::replace) << std::endl;
  running_.reset();
}

void ScriptedHost::EndProgram(int exit_code) {
  ending_ = Ending{exit_code, phone::Look()};
  if (running_) held_ = Describe();
}

void ScriptedHost::ServeAfterEnd(const std::function<void(const std::function<void()>&)>& with_phone) {
  if (held_) Answer(*held_);
  while (!script_ended_) {
    if (!BeginNext()) continue;
    if (running_->command.after_end) {
      with_phone([this] {
        for (const Step& step : running_->execution.steps) step(running_->execution);
        Answer(Describe());
      });
    } else {
      running_->execution.error = "the program has ended";
      Answer(Describe());
    }
  }
}

}  // namespace headless
