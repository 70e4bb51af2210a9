#include "hosts/script/time.h"

namespace script {

void Frames::BeginStep() {
  allowed_ = !only_asked_;
  painted_ = phone::FramesPainted();
}

void Frames::PaintOnlyWhenAsked(bool only) {
  only_asked_ = only;
  allowed_ = !only;
}

std::optional<std::uint32_t> NextSleeper(std::uint32_t now, std::uint32_t within) {
  const std::optional<std::uint32_t> deadline = phone::NextDeadline();
  const std::uint32_t until = deadline ? *deadline - now : 0;
  return until > 0 && until <= within ? std::optional(until) : std::nullopt;
}

}  // namespace script
