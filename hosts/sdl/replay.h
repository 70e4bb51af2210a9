/// \file
/// A script that plays the phone in the window.
#pragma once

#include <deque>
#include <optional>
#include <stdexcept>
#include <string>

#include "hosts/script/performer.h"

namespace sdl {

/// A line of a script that the window cannot play.
struct NotPlayable : std::runtime_error {
  using std::runtime_error::runtime_error;
};

class Replay {
 public:
  /// Reads a whole script. Throws NotPlayable, or another std::runtime_error when the file cannot be read.
  explicit Replay(const std::string& file);

  /// Before the first step: the clock that the script moves and the frames that it asks for.
  void Start(script::ManualClock& clock, script::Frames& frames) { performer_.emplace(clock, frames); }
  /// Does the next step, once the phone has nothing left to do of the last one. False when the script has ended.
  bool TakeStep();
  /// The script's own clipboard.
  std::u16string& clipboard() { return clipboard_; }
  /// Why the command that has ended last failed, with its line; told once.
  std::string TakeProblem();

 private:
  struct Line {
    int number;
    script::Command command;
  };

  void FinishCommand();

  std::deque<Line> lines_;
  std::optional<script::Performer> performer_;
  int running_line_ = 0;
  std::string problem_;
  std::u16string clipboard_;
};

}  // namespace sdl
