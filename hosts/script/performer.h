/// \file
/// Carries commands out on the phone, a step at a time.
#pragma once

#include <optional>

#include "hosts/script/command.h"

namespace script {

class Performer {
 public:
  /// The host's clock and frames, which outlive this.
  Performer(ManualClock& clock, Frames& frames) : clock_(clock), frames_(frames) {}

  bool Running() const { return running_.has_value(); }
  bool StepsLeft() const { return running_ && !running_->execution.steps.empty(); }

  /// Takes a command up. None is running.
  void Begin(Command command);
  /// Does the next step; the phone runs until nothing is left to do of it before the one after.
  void TakeStep();
  /// The reply to the running command, which is forgotten.
  Reply Finish();

  /// The program has ended while the phone is still on: takes the last look at it.
  void ProgramEnded(int exit_code) { ending_ = Ending{exit_code, phone::Look()}; }
  /// Carries the running command out after the program has ended; one that makes no sense any more fails, and so does
  /// one that works on the phone's files where they are not at hand.
  Reply PerformAfterEnd(bool files_at_hand);

 private:
  struct Taken {
    Command command;
    Execution execution;
    std::uint64_t frames_before;
  };

  ManualClock& clock_;
  Frames& frames_;
  std::optional<Ending> ending_;
  std::optional<Taken> running_;
};

}  // namespace script
