#include "windows/drawing.h"

#include <algorithm>
#include <cmath>

#include "windows/style.h"

namespace phone {

void DrawPanel(Surface& target, const RECT& rect) {
  target.Fill(rect, style::kPanelGround);
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
    // The chord through the middle of the row; what it covers of its end pixels is their opacity.
    const double distance = row + 0.5 - radius;
    const double half = std::sqrt(std::max(radius * radius - distance * distance, 0.0));
    const int left = static_cast<int>(std::ceil(radius - half));
    const int right = static_cast<int>(std::floor(radius + half));
    const auto edge = static_cast<std::uint8_t>(255 * (left - (radius - half)));
    const int line = y + row;
    target.Fill({x + left, line, x + right, line + 1}, color);
    target.Blend({x + left - 1, line, x + left, line + 1}, color, edge);
    target.Blend({x + right, line, x + right + 1, line + 1}, color, edge);
  }
}

void DrawCentred(Surface& target, const RECT& rect, std::u16string_view text, const LineStyle& style) {
  const int gap = std::max((rect.right - rect.left - MeasureLine(text, style)) / 2, 0);
  DrawLine(target, {rect.left + gap, rect.top, rect.right, rect.bottom}, text, style);
}

}  // namespace phone
