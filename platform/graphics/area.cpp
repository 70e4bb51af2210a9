#include "graphics/area.h"

#include <algorithm>

namespace phone {

std::optional<Area> Intersect(const Area& a, const Area& b) noexcept {
  const std::int64_t left = std::max(a.x, b.x);
  const std::int64_t top = std::max(a.y, b.y);
  const std::int64_t right = std::min(a.x + a.width, b.x + b.width);
  const std::int64_t bottom = std::min(a.y + a.height, b.y + b.height);
  if (left >= right || top >= bottom) return std::nullopt;
  return Area{left, top, right - left, bottom - top};
}

bool Contains(const Area& outer, const Area& inner) noexcept {
  return inner.x >= outer.x && inner.y >= outer.y && inner.x + inner.width <= outer.x + outer.width &&
         inner.y + inner.height <= outer.y + outer.height;
}

}  // namespace phone
