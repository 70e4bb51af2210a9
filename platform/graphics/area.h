/// \file
/// Rectangles in 64 bits, so that no sum of the platform's coordinates overflows.
#pragma once

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
std::optional<Area> Intersect(const Area& a, const Area& b) noexcept;
bool Contains(const Area& outer, const Area& inner) noexcept;

}  // namespace phone
