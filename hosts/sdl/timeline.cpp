#include "hosts/sdl/timeline.h"

#include <SDL.h>

#include <algorithm>
#include <optional>
#include <utility>

#include "hosts/script/picture.h"
#include "hosts/script/writing.h"
#include "windows/desktop.h"

namespace sdl {
namespace {

constexpr std::int32_t kLongestRest = 24 * 60 * 60 * 1000;  // ms

/// Milliseconds between two ticks, negative when the second is the earlier; across the wrap of the clock.
std::int32_t Between(std::uint32_t from, std::uint32_t to) {
  return static_cast<std::int32_t>(to - from);
}

}  // namespace

std::string Timeline::TakeFailure() {
  return std::exchange(failure_, {});
}

void Timeline::Begin() {
  origin_ = clock_.Now() - SDL_GetTicks();
  next_frame_ = clock_.Now();
}

void Timeline::Settle() {
  frames_.Close();
  const std::uint64_t frames = phone::FramesPainted();
  if (recorder_ && frames != frames_seen_) Write("looks " + script::PictureChecksum(phone::Screen()));
  frames_seen_ = frames;
}

std::uint32_t Timeline::Patience(bool frame_wanted) const {
  const std::uint32_t now = RealTime();
  std::int32_t patience = kLongestRest;
  if (const std::optional<std::uint32_t> sleeper = phone::NextDeadline())
    patience = std::min(patience, Between(now, *sleeper));
  if (frame_wanted) patience = std::min(patience, Between(now, next_frame_));
  return static_cast<std::uint32_t>(std::max(patience, 0));
}

std::int32_t Timeline::Ahead() const {
  return Between(RealTime(), clock_.Now());
}

bool Timeline::CatchUp() {
  const std::int32_t behind = -Ahead();
  if (behind <= 0) return true;
  const auto passed = static_cast<std::uint32_t>(behind);
  const std::optional<std::uint32_t> sleeper = script::NextSleeper(clock_.Now(), passed);
  clock_.MoveBy(sleeper.value_or(passed));
  return !sleeper;
}

bool Timeline::FrameIsDue() const {
  return Between(next_frame_, RealTime()) >= 0;
}

void Timeline::Paint(std::uint32_t frame_time) {
  Write("paint");
  frames_.BeginStep();
  frames_.Ask();
  next_frame_ = RealTime() + frame_time;
}

void Timeline::WriteInput() {
  if (!recorder_) return;
  for (const std::string& command : script::CommandsFor(phone::TheDesktop().input.waiting)) Write(command);
}

void Timeline::Write(const std::string& command) {
  if (recorder_ && !recorder_->Write(clock_.Now(), command)) failure_ = recorder_->Failure();
}

std::uint32_t Timeline::RealTime() const {
  return origin_ + SDL_GetTicks();
}

}  // namespace sdl
