/// \file
/// A visual that draws one line of text inside its rectangle.
#pragma once

#include "base/gdi_owner.h"
#include "base/text_field.h"
#include "visuals/visual.h"

/// One line, left-aligned, centred vertically, clipped to the rectangle: the format of every text of the program.
inline constexpr UINT TEXT_FORMAT = DT_SINGLELINE | DT_VCENTER;

class CTextVisual : public CVisual {
 public:
  /// Copies the text; what does not fit is cut off.
  void SetText(LPCWSTR newText) noexcept;
  /// 0x00BBGGRR.
  void SetColor(COLORREF color) noexcept;
  /// 1: no box behind the text; else it is filled with the device context's background colour.
  void SetTransparent(BYTE transparent) noexcept;
  void SetFontFace(LPCWSTR face) noexcept;
  /// DrawTextW's flags, and the font size in points at the visual's height of this moment, with which it scales.
  void SetFormat(UINT newFormat, INT size) noexcept;
  /// Pixels between each edge of the visual and the text's rectangle.
  void SetInset(INT pixels) noexcept;
  /// Draws the text, always opaque. The font stays selected in the device context. A hidden visual, or one of 3 pixels
  /// or less either way, draws nothing.
  void Draw(HDC dc) noexcept;

  COLORREF textColor = 0;          ///< 0x00BBGGRR
  BYTE transparentBackground = 0;  ///< 1: no box behind the text
  UINT format = TEXT_FORMAT;       ///< DrawTextW's flags
  INT inset = 0;                   ///< px
  INT fontSize = 8;                ///< points at the reference height
  INT fontSizeInUse = 0;           ///< points, of `font`
  INT referenceHeight = -1;        ///< px
  OwnedFont font;                  ///< made for `fontSizeInUse`; null when that failed
  // The long ones come last, so that what every draw of a row reads lies close together.
  FixedText<50> fontFace;
  FixedText<255> text;

 private:
  INT CurrentFontSize() const noexcept;
  void RemakeFont(INT size) noexcept;
};
