/// \file
/// The phone's time in the window. Its clock stands still while the program runs and follows the real one between two
/// things that happen, so that what happens, and when, can be written down and done again.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "hosts/script/recorder.h"
#include "hosts/script/time.h"

namespace sdl {

class Timeline {
 public:
  script::ManualClock& clock() { return clock_; }
  script::Frames& frames() { return frames_; }

  /// Has everything written from now on.
  void Record(std::unique_ptr<script::Recorder> recorder) { recorder_ = std::move(recorder); }
  /// Why the recording ends here, told once; empty while all is well.
  std::string TakeFailure();

  /// The real time goes on from the clock's from now on.
  void Begin();
  /// The program has nothing left to do.
  void Settle();
  /// Milliseconds from now until a sleeper of the program wakes up or, when one is wanted, a frame is due; a day when
  /// neither will be, so that the clock never falls back by half of its range.
  std::uint32_t Patience(bool frame_wanted) const;
  /// Milliseconds that the clock is ahead of the real time; negative when it is behind.
  std::int32_t Ahead() const;
  /// Moves the clock on to the real time, or only to where a sleeper of the program wakes up before; then false.
  bool CatchUp();
  bool FrameIsDue() const;
  /// Has a frame painted; the next one is due after so many milliseconds.
  void Paint(std::uint32_t frame_time);
  /// Writes what waits for the program, at the end of a turn.
  void WriteInput();
  /// Writes what is not the phone's input.
  void Write(const std::string& command);

 private:
  std::uint32_t RealTime() const;

  script::ManualClock clock_{script::kFirstTick};
  script::Frames frames_;
  std::unique_ptr<script::Recorder> recorder_;
  std::string failure_;
  std::uint32_t origin_ = 0;      ///< the tick at which SDL's own count begins
  std::uint32_t next_frame_ = 0;  ///< real time from which a frame may be painted
  std::uint64_t frames_seen_ = 0;
};

}  // namespace sdl
