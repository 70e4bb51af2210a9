/// \file
/// Arithmetic on pixels and ticks.
#pragma once

#include <windef.h>

#include <algorithm>
#include <limits>

/// A double truncated toward zero; what an INT cannot hold becomes the nearest it can.
inline INT Truncate(double value) noexcept {
  return static_cast<INT>(std::clamp(value, static_cast<double>(std::numeric_limits<INT>::min()),
                                     static_cast<double>(std::numeric_limits<INT>::max())));
}
