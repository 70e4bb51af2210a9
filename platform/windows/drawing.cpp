#include "windows/drawing.h"

#include <algorithm>
#include <cmath>

namespace phone {

namespace {

constexpr std::uint8_t kShadowOpacity[style::kShadowDepth] = {80, 50, 28, 12};  // from the panel outwards

/// The channel at `shift` on the way from one colour to the other.
COLORREF MixChannel(const style::Ramp& ramp, int shift, int step, int steps) {
  const int from = static_cast<int>(ramp.top >> shift & 0xFF);
  const int to = static_cast<int>(ramp.bottom >> shift & 0xFF);
  return static_cast<COLORREF>(from + (to - from) * step / steps) << shift;
}

/// One row of a figure whose side edges lie between pixels: what it covers of its end pixels is their opacity.
void DrawSoftRow(Surface& target, double left, double right, int y, COLORREF color) {
  const int first = static_cast<int>(std::ceil(left));
  const int end = static_cast<int>(std::floor(right));
  if (first > end) return;
  target.Fill({first, y, end, y + 1}, color);
  target.Blend({first - 1, y, first, y + 1}, color, static_cast<std::uint8_t>(255 * (first - left)));
  target.Blend({end, y, end + 1, y + 1}, color, static_cast<std::uint8_t>(255 * (right - end)));
}

}  // namespace

void DrawRamp(Surface& target, const RECT& rect, const style::Ramp& ramp) {
  const int steps = std::max(rect.bottom - rect.top - 1, 1);
  for (int y = rect.top; y < rect.bottom; ++y) {
    COLORREF color = 0;
    for (const int shift : {0, 8, 16}) color |= MixChannel(ramp, shift, y - rect.top, steps);
    target.Fill({rect.left, y, rect.right, y + 1}, color);
  }
}

void DrawChosen(Surface& target, const RECT& rect) {
  DrawRamp(target, rect, style::kChosenGround);
  target.Fill({rect.left, rect.top, rect.left + style::kMarkWidth, rect.bottom}, style::kAccent);
}

void DrawShadow(Surface& target, const RECT& panel) {
  for (int i = 0; i < style::kShadowDepth; ++i) {
    const RECT ring{panel.left - i - 1, panel.top - i - 1, panel.right + i + 1, panel.bottom + i + 1};
    const auto blend = [&target, opacity = kShadowOpacity[i]](const RECT& side) {
      target.Blend(side, style::kShade, opacity);
    };
    blend({ring.left + 1, ring.top, ring.right - 1, ring.top + 1});
    blend({ring.left + 1, ring.bottom - 1, ring.right - 1, ring.bottom});
    blend({ring.left, ring.top + 1, ring.left + 1, ring.bottom - 1});
    blend({ring.right - 1, ring.top + 1, ring.right, ring.bottom - 1});
  }
}

void DrawPanel(Surface& target, const RECT& rect) {
  DrawRamp(target, rect, style::kPanelGround);
  DrawFrame(target, rect, style::kPanelFrame);
}

void DrawFrame(Surface& target, const RECT& rect, COLORREF color) {
  target.Fill({rect.left, rect.top, rect.right, rect.top + 1}, color);
  target.Fill({rect.left, rect.bottom - 1, rect.right, rect.bottom}, color);
  target.Fill({rect.left, rect.top, rect.left + 1, rect.bottom}, color);
  target.Fill({rect.right - 1, rect.top, rect.right, rect.bottom}, color);
}

void DrawArrow(Surface& target, const RECT& rect, Arrow arrow) {
  constexpr int kRows = 5;
  const int middle = (rect.left + rect.right) / 2;
  const int top = (rect.top + rect.bottom - kRows) / 2;
  for (int row = 0; row < kRows; ++row) {
    const int half = arrow == Arrow::up ? row : kRows - 1 - row;
    target.Fill({middle - half, top + row, middle + half + 1, top + row + 1}, style::kAccent);
  }
}

void DrawDisc(Surface& target, int x, int y, int size, COLORREF color) {
  const double radius = size / 2.0;
  for (int row = 0; row < size; ++row) {
    // The chord through the middle of the row.
    const double distance = row + 0.5 - radius;
    const double half = std::sqrt(std::max(radius * radius - distance * distance, 0.0));
    DrawSoftRow(target, x + radius - half, x + radius + half, y + row, color);
  }
}

void DrawTriangle(Surface& target, int x, int y, int size, COLORREF color) {
  constexpr double kBluntness = 1.5;  // px, half the width of its tip
  const double middle = x + size / 2.0;
  const double slope = (size / 2.0 - kBluntness) / size;
  for (int row = 0; row < size; ++row) {
    const double half = kBluntness + slope * (row + 0.5);
    DrawSoftRow(target, middle - half, middle + half, y + row, color);
  }
}

void DrawCentred(Surface& target, const RECT& rect, std::u16string_view text, const LineStyle& style) {
  const int gap = std::max((rect.right - rect.left - MeasureLine(text, style)) / 2, 0);
  DrawLine(target, {rect.left + gap, rect.top, rect.right, rect.bottom}, text, style);
}

}  // namespace phone
