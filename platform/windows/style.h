/// \file
/// How the phone's own parts look: colours (0x00BBGGRR) and metrics (px), in one place.
#pragma once

#include "graphics/surface.h"

namespace phone::style {

constexpr COLORREF Rgb(unsigned red, unsigned green, unsigned blue) {
  return red | green << 8 | blue << 16;
}

/// A ground that changes from its first row to its last.
struct Ramp {
  COLORREF top;
  COLORREF bottom;
};

// Night teal with one warm accent. White text keeps a contrast of at least 4.5 : 1 on each of the grounds.
inline constexpr Ramp kTitleGround = {Rgb(0x0E, 0x29, 0x36), Rgb(0x0A, 0x1A, 0x25)};
inline constexpr Ramp kKeysGround = {Rgb(0x10, 0x2E, 0x3C), Rgb(0x09, 0x19, 0x23)};
inline constexpr Ramp kPanelGround = {Rgb(0x19, 0x42, 0x52), Rgb(0x11, 0x2E, 0x3C)};
inline constexpr Ramp kPanelHead = {Rgb(0x2C, 0x77, 0x85), Rgb(0x1C, 0x58, 0x65)};
inline constexpr Ramp kChosenGround = {Rgb(0x2F, 0x7F, 0x8B), Rgb(0x1C, 0x5B, 0x68)};
inline constexpr COLORREF kPanelFrame = Rgb(0x4C, 0x83, 0x8F);
inline constexpr COLORREF kSeam = Rgb(0x06, 0x10, 0x18);  ///< between two parts that touch
inline constexpr COLORREF kSelection = Rgb(0x20, 0x5F, 0x6B);
inline constexpr COLORREF kAccent = Rgb(0xE8, 0xA3, 0x4A);
inline constexpr COLORREF kText = Rgb(0xFF, 0xFF, 0xFF);
inline constexpr COLORREF kQuietText = Rgb(0xB9, 0xD3, 0xD3);
inline constexpr COLORREF kDarkText = Rgb(0x0D, 0x24, 0x31);
inline constexpr COLORREF kFieldGround = Rgb(0xFB, 0xF7, 0xEE);
inline constexpr COLORREF kFieldFrame = Rgb(0x7F, 0x9C, 0xA0);
inline constexpr COLORREF kQuietSelection = Rgb(0xC4, 0xD8, 0xD6);  ///< of a field without the focus
inline constexpr COLORREF kShade = Rgb(0x00, 0x00, 0x00);
inline constexpr std::uint8_t kShadeOpacity = 110;  ///< of the veil over the client area behind a message box

inline constexpr int kLabelPadding = 8;   ///< from the screen's edge to a soft key's label or the title
inline constexpr int kKeyMarkWidth = 18;  ///< of the line under a soft key's label
inline constexpr int kMarkWidth = 2;      ///< of the line at the left end of what is chosen, as in the program's lists
inline constexpr int kShadowDepth = 4;    ///< of a panel's shadow on what lies under it
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
