#include <algorithm>

#include "windows/desktop.h"
#include "windows/drawing.h"
#include "windows/style.h"
#include "windows/text_wrap.h"

namespace phone {

namespace {

using namespace style;

constexpr UINT kIconMask = 0x00F0;  ///< the bits of a style that name the icon
constexpr LineStyle kIconStyle = {.height = 22, .weight = 700, .color = kDarkText};

bool HasIcon(const MessageBox& box) {
  return (box.style & kIconMask) != 0;
}

void DrawIcon(Surface& target, const MessageBox& box, int x, int y) {
  const bool warns = (box.style & kIconMask) == MB_ICONEXCLAMATION;
  DrawDisc(target, x, y, kBoxIconSize, warns ? kWarning : kAccent);
  DrawCentred(target, {x, y, x + kBoxIconSize, y + kBoxIconSize}, warns ? u"!" : u"?", kIconStyle);
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
  picture.Fill({0, 0, width, kBoxHeadHeight}, kPanelHead);
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
  client.Copy(*box.picture, (client.width() - width) / 2, (client.height() - box.picture->height()) / 2);
}

}  // namespace phone
