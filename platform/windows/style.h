/// \file
/// How the phone's own parts look: colours (0x00BBGGRR) and metrics (px), in one place.
#pragma once

#include "graphics/surface.h"

namespace phone::style {

constexpr COLORREF Rgb(unsigned red, unsigned green, unsigned blue) {
  return red | green << 8 | blue << 16;
}

// Night teal with one warm accent. White text keeps a contrast of at least 4.5 : 1 on each of the grounds.
inline constexpr COLORREF kTitleGround = Rgb(0x0D, 0x24, 0x31);
inline constexpr COLORREF kKeysGround = Rgb(0x0D, 0x24, 0x31);
inline constexpr COLORREF kPanelGround = Rgb(0x12, 0x30, 0x3E);
inline constexpr COLORREF kPanelHead = Rgb(0x20, 0x5F, 0x6B);
inline constexpr COLORREF kPanelFrame = Rgb(0x3E, 0x6B, 0x78);
inline constexpr COLORREF kSelection = Rgb(0x20, 0x5F, 0x6B);
inline constexpr COLORREF kAccent = Rgb(0xE8, 0xA3, 0x4A);
inline constexpr COLORREF kWarning = Rgb(0xF2, 0xB1, 0x34);
inline constexpr COLORREF kText = Rgb(0xFF, 0xFF, 0xFF);
inline constexpr COLORREF kQuietText = Rgb(0xB9, 0xD3, 0xD3);
inline constexpr COLORREF kDarkText = Rgb(0x0D, 0x24, 0x31);
inline constexpr COLORREF kFieldGround = Rgb(0xFB, 0xF7, 0xEE);
inline constexpr COLORREF kFieldFrame = Rgb(0x7F, 0x9C, 0xA0);
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
