// The three blits.

#include <algorithm>
#include <limits>

#include "graphics/raster.h"
#include "graphics/trace_recorder.h"
#include "system/faults.h"

namespace phone {

namespace {

/// One call of a blit, as the program made it.
struct Blit {
  DrawKind kind;
  HDC target;
  Area to;
  HDC source;
  Area from;
  const BLENDFUNCTION* blend = nullptr;
};

LONG ClampedEdge(std::int64_t edge) noexcept {
  return static_cast<LONG>(std::min<std::int64_t>(edge, std::numeric_limits<LONG>::max()));
}

RECT RectOf(const Area& area) noexcept {
  return {static_cast<LONG>(area.x), static_cast<LONG>(area.y), ClampedEdge(area.x + area.width),
          ClampedEdge(area.y + area.height)};
}

void Draw(const Blit& blit, Bitmap& target, const Area& visible, Bitmap& source) {
  switch (blit.kind) {
    case DrawKind::BitBlt: {
      // What the source does not have is not copied.
      const Area there = {visible.x - blit.to.x + blit.from.x, visible.y - blit.to.y + blit.from.y, visible.width,
                          visible.height};
      const std::optional<Area> copied = Intersect(there, AreaOf(source));
      if (!copied) return;
      const Area area = {visible.x + copied->x - there.x, visible.y + copied->y - there.y, copied->width,
                         copied->height};
      CopyPixels(target, area, source, static_cast<int>(copied->x), static_cast<int>(copied->y));
      return;
    }
    case DrawKind::StretchBlt: return StretchPixels(target, blit.to, visible, source, blit.from);
    default: {
      const Blending blending = {blit.blend->SourceConstantAlpha, blit.blend->AlphaFormat == AC_SRC_ALPHA};
      return BlendPixels(target, blit.to, visible, source, blit.from, blending);
    }
  }
}

/// What the blits share: looking up, recording, dropping what is outside.
BOOL Perform(const Blit& blit) noexcept {
  const DeviceContext* target = FindContext(blit.target);
  const DeviceContext* source = FindContext(blit.source);
  if (target == nullptr || source == nullptr) return FALSE;
  if (blit.to.width < 0 || blit.to.height < 0) return FALSE;
  const bool scaled = blit.kind != DrawKind::BitBlt;
  Bitmap& pixels = *source->bitmap;
  if (scaled && (blit.from.width <= 0 || blit.from.height <= 0 || !Contains(AreaOf(pixels), blit.from))) return FALSE;
  try {
    if (TraceEnabled()) {
      TraceBlit(blit.kind, *target, RectOf(blit.to), *source, static_cast<int>(blit.from.width),
                static_cast<int>(blit.from.height), blit.blend);
    }
    const std::optional<Area> visible = Intersect(blit.to, AreaOf(*target->bitmap));
    if (!visible) return TRUE;
    target->bitmap->drawn_into = true;
    Draw(blit, *target->bitmap, *visible, pixels);
    return TRUE;
  } catch (...) {
    return FALSE;
  }
}

bool IsKnown(const BLENDFUNCTION& blend) noexcept {
  return blend.BlendOp == AC_SRC_OVER && blend.BlendFlags == 0 && (blend.AlphaFormat & ~AC_SRC_ALPHA) == 0;
}

}  // namespace

}  // namespace phone

using namespace phone;

BOOL BitBlt(HDC target, int x, int y, int width, int height, HDC source, int source_x, int source_y, DWORD operation) {
  if (FaultDue(Operation::BitBlt) || operation != SRCCOPY) return FALSE;
  return Perform({DrawKind::BitBlt, target, {x, y, width, height}, source, {source_x, source_y, width, height}});
}

BOOL StretchBlt(HDC target, int x, int y, int width, int height, HDC source, int source_x, int source_y,
                int source_width, int source_height, DWORD operation) {
  if (FaultDue(Operation::StretchBlt) || operation != SRCCOPY) return FALSE;
  return Perform(
      {DrawKind::StretchBlt, target, {x, y, width, height}, source, {source_x, source_y, source_width, source_height}});
}

BOOL AlphaBlend(HDC target, int x, int y, int width, int height, HDC source, int source_x, int source_y,
                int source_width, int source_height, BLENDFUNCTION blend) {
  if (FaultDue(Operation::AlphaBlend) || !IsKnown(blend)) return FALSE;
  return Perform({DrawKind::AlphaBlend,
                  target,
                  {x, y, width, height},
                  source,
                  {source_x, source_y, source_width, source_height},
                  &blend});
}
