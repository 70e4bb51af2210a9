/// \file
/// How the phone's own parts look: colours (0x00BBGGRR) and metrics (px), in one place.
#pragma once

#include "graphics/surface.h"

namespace phone::style {

constexpr COLORREF Rgb(unsigned red, unsigned green, unsigned blue) {
  return red | green << 8 | blue << 16;
}

// Dark slate with one accent. White text keeps a contrast of at least 4.5 : 1 on each of the grounds.
inline constexpr COLORREF kTitleGround = Rgb(0x1B, 0x24, 0x2F);
inline constexpr COLORREF kKeysGround = Rgb(0x1B, 0x24, 0x2F);
inline constexpr COLORREF kPanelGround = Rgb(0x26, 0x32, 0x40);
inline constexpr COLORREF kPanelHead = Rgb(0x1F, 0x6F, 0x8B);
inline constexpr COLORREF kPanelFrame = Rgb(0x4A, 0x5B, 0x6D);
inline constexpr COLORREF kSelection = Rgb(0x1F, 0x6F, 0x8B);
inline constexpr COLORREF kAccent = Rgb(0x4F, 0xB3, 0xD1);
inline constexpr COLORREF kWarning = Rgb(0xF2, 0xB1, 0x34);
inline constexpr COLORREF kText = Rgb(0xFF, 0xFF, 0xFF);
inline constexpr COLORREF kQuietText = Rgb(0xA9, 0xB8, 0xC6);
inline constexpr COLORREF kDarkText = Rgb(0x1B, 0x24, 0x2F);
inline constexpr COLORREF kFieldGround = Rgb(0xF4, 0xF7, 0xFA);
inline constexpr COLORREF kFieldFrame = Rgb(0x8A, 0x9B, 0xAC);
inline constexpr COLORREF kShade = Rgb(0x00, 0x00, 0x00);
inline constexpr std::uint8_t kShadeOpacity = 110;  ///< of the veil over the client area behind a message box

inline constexpr int kLabelPadding = 8;  ///< from the screen's edge to a soft key's label or the title
inline constexpr int kMenuRowHeight = 24;
inline constexpr int kMenuNumberWidth = 20;  ///< of the column of item numbers
inline constexpr int kMenuPadding = 8;
inline constexpr int kMenuArrowHeight = 12;  ///< of the strips that tell a menu goes on above or below
inline constexpr int kMenuLeastWidth = 120;
inline constexpr int kBoxMargin = 10;  ///< from the client area's edge to the box
inline constexpr int kBoxPadding = 10;
inline constexpr int kBoxHeadHeight = 24;
inline constexpr int kBoxLineHeight = 19;
inline constexpr int kBoxIconSize = 32;
inline constexpr int kFieldPadding = 6;
inline constexpr int kCaretWidth = 2;

inline constexpr LineStyle kTitleStyle = {.height = 13, .weight = 700, .color = kText};
inline constexpr LineStyle kKeyStyle = {.height = 14, .weight = 400, .color = kText};
inline constexpr LineStyle kMenuStyle = {.height = 14, .weight = 400, .color = kText};
inline constexpr LineStyle kNumberStyle = {.height = 12, .weight = 400, .color = kQuietText};
inline constexpr LineStyle kCaptionStyle = {.height = 14, .weight = 700, .color = kText};
inline constexpr LineStyle kBoxStyle = {.height = 14, .weight = 400, .color = kText};
inline constexpr LineStyle kFieldStyle = {.height = 14, .weight = 400, .color = kDarkText};

}  // namespace phone::style
