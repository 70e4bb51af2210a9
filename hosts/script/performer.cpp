#include "hosts/script/performer.h"

#include <utility>

#include "graphics/trace.h"
#include "hosts/script/reply.h"

namespace script {

void Performer::Begin(Command command) {
  Execution execution{clock_, frames_, ending_, std::move(command.steps), {}};
  running_.emplace(Taken{std::move(command), std::move(execution), phone::FramesPainted()});
}

void Performer::TakeStep() {
  Execution& execution = running_->execution;
  const Step step = std::move(execution.steps.front());
  execution.steps.pop_front();
  frames_.BeginStep();
  step(execution);
}

Reply Performer::Finish() {
  Execution& execution = running_->execution;
  Reply reply = {{"ok", true}};
  if (running_->command.report && execution.error.empty()) running_->command.report(execution, reply);
  if (!execution.error.empty()) reply = {{"ok", false}, {"error", execution.error}};
  const std::uint64_t frames = phone::FramesPainted() - running_->frames_before;
  reply["painted"] = frames > 0;
  reply["frames"] = frames;
  if (frames > 0 && phone::TraceEnabled()) reply["ops"] = DescribeDrawing();
  running_.reset();
  return reply;
}

Reply Performer::PerformAfterEnd(bool files_at_hand) {
  Execution& execution = running_->execution;
  const AfterEnd after_end = running_->command.after_end;
  if (after_end == AfterEnd::refused) {
    execution.error = "the program has ended";
  } else if (after_end == AfterEnd::in_files && !files_at_hand) {
    execution.error = "the phone folder cannot be used";
  } else {
    for (const Step& step : execution.steps) step(execution);
  }
  return Finish();
}

}  // namespace script
