#include "visuals/text_visual.h"

#include <strsafe.h>

#include <cstdint>

#include "base/status.h"

namespace {

constexpr INT kSmallestExtent = 3;  // px; nothing readable fits into it
constexpr INT kPointsPerInch = 72;
constexpr INT kPixelsPerInch = 96;  // of a font size, whatever the screen's resolution

}  // namespace

void CTextVisual::SetText(LPCWSTR newText) noexcept {
  text.Assign(newText);
}

void CTextVisual::SetColor(COLORREF color) noexcept {
  textColor = color;
}

void CTextVisual::SetTransparent(BYTE transparent) noexcept {
  transparentBackground = transparent;
}

void CTextVisual::SetFontFace(LPCWSTR face) noexcept {
  fontFace.Assign(face);
}

void CTextVisual::SetFormat(UINT newFormat, INT size) noexcept {
  format = newFormat;
  fontSize = size;
  referenceHeight = height.current;
}

void CTextVisual::SetInset(INT pixels) noexcept {
  inset = pixels;
}

void CTextVisual::Draw(HDC dc) noexcept {
  if (visible.current != 1 || height.current <= kSmallestExtent || width.current <= kSmallestExtent) return;
  const INT size = CurrentFontSize();
  if (size != fontSizeInUse) RemakeFont(size);
  if (font) SelectObject(dc, font.get());
  SetTextColor(dc, textColor);
  SetBkMode(dc, transparentBackground == 1 ? TRANSPARENT : OPAQUE);
  RECT rect = {x.current + inset, y.current + inset, x.current + width.current - inset,
               y.current + height.current - inset};
  DrawTextW(dc, text, -1, &rect, format);
}

/// Without a reference height the font keeps the size it was given.
INT CTextVisual::CurrentFontSize() const noexcept {
  if (referenceHeight <= 0 || referenceHeight == height.current) return fontSize;
  return static_cast<INT>(std::int64_t{fontSize} * height.current / referenceHeight);
}

void CTextVisual::RemakeFont(INT size) noexcept {
  fontSizeInUse = size;
  LOGFONTW description = {};
  description.lfHeight = -MulDiv(size, kPixelsPerInch, kPointsPerInch);
  description.lfWeight = width.current;
  Unexamined(StringCchCopyW(description.lfFaceName, LF_FACESIZE, fontFace));
  font.Reset();
  font.Reset(CreateFontIndirectW(&description));
}
