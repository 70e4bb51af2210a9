/// \file
/// Rectangles in 64 bits, so that no sum of the platform's coordinates overflows.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>

#include "windef.h"

namespace phone {

struct Area {
  std::int64_t x = 0;       // px
  std::int64_t y = 0;       // px
  std::int64_t width = 0;   // px
  std::int64_t height = 0;  // px

  bool operator==(const Area&) const = default;
};

inline Area AreaOf(const RECT& rect) noexcept {
  return {rect.left, rect.top, std::int64_t{rect.right} - rect.left, std::int64_t{rect.bottom} - rect.top};
}

/// What both have in common; nothing when that is empty.
inline std::optional<Area> Intersect(const Area& a, const Area& b) noexcept {
  const std::int64_t left = std::max(a.x, b.x);
  const std::int64_t top = std::max(a.y, b.y);
  const std::int64_t right = std::min(a.x + a.width, b.x + b.width);
  const std::int64_t bottom = std::min(a.y + a.height, b.y + b.height);
  if (left >= right || top >= bottom) return std::nullopt;
  return Area{left, top, right - left, bottom - top};
}

inline bool Contains(const Area& outer, const Area& inner) noexcept {
  return inner.x >= outer.x && inner.y >= outer.y && inner.x + inner.width <= outer.x + outer.width &&
         inner.y + inner.height <= outer.y + outer.height;
}

}  // namespace phone
