#include <algorithm>

#include "windows/desktop.h"
#include "windows/drawing.h"
#include "windows/style.h"
#include "windows/text_wrap.h"

namespace phone {

namespace {

using namespace style;

constexpr UINT kIconMask = 0x00F0;  ///< the bits of a style that name the icon
constexpr int kWarningDrop = 4;     // px: a triangle's weight lies below its middle
constexpr LineStyle kIconStyle = {.height = 22, .weight = 700, .color = kDarkText};

bool HasIcon(const MessageBox& box) {
  return (box.style & kIconMask) != 0;
}

void DrawIcon(Surface& target, const MessageBox& box, int x, int y) {
  // A warning is told from a question by its shape too.
  const bool warns = (box.style & kIconMask) == MB_ICONEXCLAMATION;
  if (warns)
    DrawTriangle(target, x, y, kBoxIconSize, kAccent);
  else
    DrawDisc(target, x, y, kBoxIconSize, kAccent);
  const int top = warns ? y + kWarningDrop : y;
  DrawCentred(target, {x, top, x + kBoxIconSize, top + kBoxIconSize}, warns ? u"!" : u"?", kIconStyle);
}

Surface DrawBox(const MessageBox& box, int room_width, int room_height) {
  const int width = std::max(room_width - 2 * kBoxMargin, 1);
  const int text_left = kBoxPadding + (HasIcon(box) ? kBoxIconSize + kBoxPadding : 0);
  const int text_right = std::max(width - kBoxPadding, text_left + 1);
  const auto measure = [](std::u16string_view line) { return MeasureLine(line, kBoxStyle); };
  auto lines = WrapText(box.text, text_right - text_left, measure);
  const int room_for_text = room_height - kBoxHeadHeight - 2 * kBoxPadding;
  lines.resize(std::min(lines.size(), static_cast<std::size_t>(std::max(room_for_text / kBoxLineHeight, 1))));
  const int text_height = static_cast<int>(lines.size()) * kBoxLineHeight;
  const int body = std::max(text_height, HasIcon(box) ? kBoxIconSize : 0);
  const int height = kBoxHeadHeight + 2 * kBoxPadding + body;

  Surface picture(width, height);
  DrawPanel(picture, {0, 0, width, height});
  DrawRamp(picture, {1, 1, width - 1, kBoxHeadHeight - 1}, kPanelHead);
  picture.Fill({1, kBoxHeadHeight - 1, width - 1, kBoxHeadHeight}, kAccent);
  DrawLine(picture, {kBoxPadding, 0, std::max(width - kBoxPadding, kBoxPadding), kBoxHeadHeight}, box.caption,
           kCaptionStyle);
  const int body_top = kBoxHeadHeight + kBoxPadding;
  if (HasIcon(box)) DrawIcon(picture, box, kBoxPadding, body_top + (body - kBoxIconSize) / 2);
  int y = body_top + (body - text_height) / 2;
  for (const std::u16string_view line : lines) {
    DrawLine(picture, {text_left, y, text_right, y + kBoxLineHeight}, line, kBoxStyle);
    y += kBoxLineHeight;
  }
  return picture;
}

}  // namespace

void DrawMessageBox(MessageBox& box, Surface& client) {
  const int width = std::max(client.width() - 2 * kBoxMargin, 1);
  if (!box.picture || box.picture->width() != width) box.picture = DrawBox(box, client.width(), client.height());
  client.Blend({0, 0, client.width(), client.height()}, kShade, kShadeOpacity);
  const int x = (client.width() - width) / 2;
  const int y = (client.height() - box.picture->height()) / 2;
  DrawShadow(client, {x, y, x + width, y + box.picture->height()});
  client.Copy(*box.picture, x, y);
}

}  // namespace phone
