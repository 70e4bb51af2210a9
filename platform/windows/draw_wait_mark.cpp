#include "windows/drawing.h"
#include "windows/style.h"

namespace phone {

namespace {

using namespace style;

constexpr int kPanelSize = 44;  // px
constexpr int kHalfGlass = 12;  // px, the height of one of its bulbs
constexpr int kNeck = 1;        // px, half the width between the bulbs
constexpr int kPlate = 2;       // px, the height of the plates that the glass stands between

/// Half the width of the glass so many rows away from its neck.
int HalfWidth(int rows_from_neck) {
  return kNeck + rows_from_neck * 3 / 4;
}

/// Rows of the glass, the upper bulb's above the neck and the lower one's below, as far from it as told.
void FillBulb(Surface& target, int middle, int neck, bool upper, int from, int to, COLORREF color) {
  for (int i = from; i < to; ++i) {
    const int y = upper ? neck - 1 - i : neck + i;
    target.Fill({middle - HalfWidth(i), y, middle + HalfWidth(i), y + 1}, color);
  }
}

void DrawHourglass(Surface& target, int middle, int neck) {
  constexpr int kSand = kHalfGlass / 2;
  for (const bool upper : {true, false}) FillBulb(target, middle, neck, upper, 0, kHalfGlass, kQuietText);
  FillBulb(target, middle, neck, /*upper=*/true, 0, kSand, kAccent);
  FillBulb(target, middle, neck, /*upper=*/false, kSand, kHalfGlass, kAccent);
  const int half = HalfWidth(kHalfGlass) + 1;
  for (const int top : {neck - kHalfGlass - kPlate, neck + kHalfGlass})
    target.Fill({middle - half, top, middle + half, top + kPlate}, kText);
}

}  // namespace

void DrawWaitMark(Surface& client) {
  const int x = (client.width() - kPanelSize) / 2;
  const int y = (client.height() - kPanelSize) / 2;
  const RECT panel{x, y, x + kPanelSize, y + kPanelSize};
  DrawShadow(client, panel);
  DrawPanel(client, panel);
  DrawHourglass(client, x + kPanelSize / 2, y + kPanelSize / 2);
}

}  // namespace phone
