/// \file
/// Carries commands out on the phone, a step at a time.
#pragma once

#include <optional>

#include "hosts/script/command.h"

namespace script {

class Performer {
 public:
  explicit Performer(std::uint32_t tick) : clock_(tick) {}

  ManualClock& clock() { return clock_; }
  /// True when a frame may be painted now, as the host tells the phone.
  bool FrameIsDue() const { return frames_.MayPaint(); }

  /// Nothing is left to do of what the last step has begun; until the next one nothing is painted.
  void Settle() { frames_.Close(); }
  bool Running() const { return running_.has_value(); }
  bool StepsLeft() const { return running_ && !running_->execution.steps.empty(); }

  /// Takes a command up. None is running.
  void Begin(Command command);
  void TakeStep();
  /// The reply to the running command, which is forgotten.
  Reply Finish();

  /// The program has ended while the phone is still on: takes the last look at it.
  void ProgramEnded(int exit_code) { ending_ = Ending{exit_code, phone::Look()}; }
  /// Carries the running command out after the program has ended; one that makes no sense any more fails.
  Reply PerformAfterEnd();

 private:
  struct Taken {
    Command command;
    Execution execution;
    std::uint64_t frames_before;
  };

  ManualClock clock_;
  Frames frames_;
  std::optional<Ending> ending_;
  std::optional<Taken> running_;
};

}  // namespace script
