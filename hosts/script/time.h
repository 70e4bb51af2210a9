/// \file
/// The phone's time where it goes on in steps: the clock, and when frames are painted.
#pragma once

#include <atomic>
#include <cstdint>
#include <optional>

#include "phone.h"

namespace script {

/// A clock that moves only when told. Any thread.
class ManualClock {
 public:
  explicit ManualClock(std::uint32_t tick) : tick_(tick) {}
  std::uint32_t Now() const { return tick_; }
  void MoveTo(std::uint32_t tick) { tick_ = tick; }
  void MoveBy(std::uint32_t milliseconds) { tick_ += milliseconds; }

 private:
  std::atomic<std::uint32_t> tick_;
};

/// When frames of the program are painted: at most one a step, and only asked for ones when told so.
class Frames {
 public:
  /// As the host tells the phone.
  bool MayPaint() const { return allowed_ && phone::FramesPainted() == painted_; }
  void BeginStep();
  /// The running step paints.
  void Ask() { allowed_ = true; }
  /// Nothing is left to do of what the step has begun.
  void Close() { allowed_ = false; }
  /// From now on, the running step included.
  void PaintOnlyWhenAsked(bool only);

 private:
  bool allowed_ = true;
  bool only_asked_ = false;
  std::uint64_t painted_ = 0;  ///< frames at the beginning of the step
};

/// The milliseconds until the program's next sleeper wakes up, if that is within so many of them.
std::optional<std::uint32_t> NextSleeper(std::uint32_t now, std::uint32_t within);

}  // namespace script
