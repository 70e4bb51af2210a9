// Text as the program and the phone's own parts draw it.

#include <string_view>

#include "graphics/face.h"
#include "graphics/raster.h"
#include "graphics/surface_pixels.h"
#include "graphics/trace_recorder.h"
#include "system/text.h"
#include "winuser.h"

namespace phone {

namespace {

constexpr COLORREF kBackgroundColor = 0xFFFFFF;  // a context's, which nobody changes
constexpr std::uint8_t kOpaque = 255;

/// Where the top of a line lies that is centred in a rectangle; each half is truncated.
std::int64_t CenteredTop(const Area& area, int line_height) noexcept {
  return area.y + area.height / 2 - line_height / 2;
}

std::u16string_view TextOf(LPCWSTR text, int length) noexcept {
  // More code units than any screen shows in one line.
  constexpr std::size_t kMostUnits = 8192;
  constexpr int kUpToZero = -1;
  const std::u16string_view all =
      length == kUpToZero ? std::u16string_view(text) : std::u16string_view(text, static_cast<std::size_t>(length));
  return all.size() <= kMostUnits ? all : all.substr(0, CutLength(all, kMostUnits));
}

bool IsInSight(const RECT& rect, const Bitmap& target) noexcept {
  return rect.left < target.width() && rect.top < target.height() && rect.right > 0 && rect.bottom > 0;
}

int LineHeight(DeviceContext& context) {
  const Face* face = context.font->face();
  return face == nullptr ? 0 : face->line_height;
}

/// Draws one line in a rectangle of which `visible` lies in the target.
void DrawInArea(DeviceContext& context, std::u16string_view text, const Area& area, const Area& visible, UINT format) {
  Face* face = context.font->face();
  if (face == nullptr) return;
  Bitmap& target = *context.bitmap;
  const std::int64_t top = (format & DT_VCENTER) != 0 ? CenteredTop(area, face->line_height) : area.y;
  if (!context.transparent) {
    const Area cell = {area.x, top, CachedLine(*face, text).width, face->line_height};
    if (const std::optional<Area> filled = Intersect(cell, visible))
      FillPixels(target, *filled, kBackgroundColor, kOpaque);
  }
  target.drawn_into = true;
  DrawLineAt(target, visible, area.x, top + face->ascent, *face, text, context.text_color);
}

/// A text that somebody sees, on the screen or in the trace. Apart, so that a call for one that nobody sees is short.
[[gnu::noinline]] void DrawSeen(DeviceContext& context, LPCWSTR units, int length, const RECT& rect, UINT format) {
  const std::u16string_view text = TextOf(units, length);
  if (TraceEnabled()) TraceText(context, rect, text, format);
  const Area area = AreaOf(rect);
  if (const std::optional<Area> visible = Intersect(area, AreaOf(*context.bitmap)))
    DrawInArea(context, text, area, *visible, format);
}

Ref<Face> FaceOf(const LineStyle& style) {
  return FindFace(style.face, style.height, style.weight >= kFirstBoldWeight);
}

}  // namespace

void DrawLine(Surface& target, const RECT& rect, std::u16string_view text, const LineStyle& style, int scroll) {
  const Ref<Face> face = FaceOf(style);
  if (!face) return;
  const Area area = AreaOf(rect);
  const std::int64_t baseline = CenteredTop(area, face->line_height) + face->ascent;
  DrawLineAt(*target.impl().bitmap, area, area.x - scroll, baseline, *face, text, style.color);
}

int MeasureLine(std::u16string_view text, const LineStyle& style) {
  const Ref<Face> face = FaceOf(style);
  return face ? CachedLine(*face, text).width : 0;
}

int CaretPosition(std::u16string_view text, std::size_t unit, const LineStyle& style) {
  const Ref<Face> face = FaceOf(style);
  return face ? CaretPlace(*face, text, unit) : 0;
}

std::size_t CaretAt(std::u16string_view text, int x, const LineStyle& style) {
  const Ref<Face> face = FaceOf(style);
  return face ? UnitAt(*face, text, x) : 0;
}

std::vector<Stretch> CoveredStretches(std::u16string_view text, std::size_t start, std::size_t end,
                                      const LineStyle& style) {
  const Ref<Face> face = FaceOf(style);
  return face ? StretchesOf(*face, text, start, end) : std::vector<Stretch>();
}

}  // namespace phone

using namespace phone;

int DrawTextW(HDC dc, LPCWSTR text, int length, RECT* rect, UINT format) {
  DeviceContext* context = FindContext(dc);
  if (context == nullptr || text == nullptr || rect == nullptr || length < -1) return 0;
  try {
    // What nobody sees is not even measured: most rows of a long list.
    if (TraceEnabled() || IsInSight(*rect, *context->bitmap)) DrawSeen(*context, text, length, *rect, format);
    return LineHeight(*context);
  } catch (...) {
    return 0;
  }
}
