#include "graphics/nearest.h"

#include <algorithm>
#include <limits>

namespace phone {

std::optional<FixedScale> FindFixedScale(std::int64_t origin, std::int64_t source, std::int64_t target) noexcept {
  // Beyond this pixman's own coordinates end, and finding the scale would take longer than scaling.
  constexpr std::int64_t kMostTarget = 4096;
  if (target > kMostTarget) return std::nullopt;
  constexpr std::int64_t kOne = pixman_fixed_1;
  const std::int64_t step = (source * kOne + target / 2) / target;
  // pixman shows source pixel (offset + i * step + half - 1) / 2^16 at target pixel i, half a step rounded up. Each
  // target pixel so has a range of offsets that are right for it; the answer lies in all of them.
  const std::int64_t half = (step + 1) / 2;
  std::int64_t least = std::numeric_limits<std::int64_t>::min();
  std::int64_t limit = std::numeric_limits<std::int64_t>::max();
  NearestSteps steps(0, source, target);
  for (std::int64_t i = 0, position = half - 1; i < target; ++i, position += step) {
    const std::int64_t right = steps.Next() * kOne - position;
    least = std::max(least, right);
    limit = std::min(limit, right + kOne);
  }
  const std::int64_t offset = origin * kOne + least;
  const auto fits = [](std::int64_t value) {
    return value >= std::numeric_limits<pixman_fixed_t>::min() && value <= std::numeric_limits<pixman_fixed_t>::max();
  };
  if (least >= limit || !fits(step) || !fits(offset)) return std::nullopt;
  return FixedScale{static_cast<pixman_fixed_t>(step), static_cast<pixman_fixed_t>(offset)};
}

}  // namespace phone
