/// \file
/// Pixels that the phone's own parts draw on: the screen, a window's client area. Opaque, 0x00RRGGBB, rows from the
/// top.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "host.h"
#include "wingdi.h"

namespace phone {

class Surface {
 public:
  Surface(int width, int height);  // black at first
  ~Surface();
  Surface(Surface&&) noexcept;
  Surface& operator=(Surface&&) noexcept;

  int width() const;
  int height() const;
  std::uint32_t* pixels();  ///< the top row; width() pixels from one row to the next
  ScreenImage image() const;

  void Fill(const RECT& rect, COLORREF color);
  /// 0 transparent to 255 opaque.
  void Blend(const RECT& rect, COLORREF color, std::uint8_t opacity);
  /// Copies all of another surface to a position; what lies outside is left out.
  void Copy(const Surface& from, int x, int y);

  struct Impl;
  Impl& impl() { return *impl_; }

 private:
  std::unique_ptr<Impl> impl_;
};

/// How one line of text is drawn.
struct LineStyle {
  std::u16string_view face = u"Verdana";
  int height = 14;  ///< px, the character height
  int weight = 400;
  COLORREF color = 0xFFFFFF;
};

/// Draws one line, left-aligned at rect.left - scroll, centred vertically, clipped to the rectangle.
void DrawLine(Surface& target, const RECT& rect, std::u16string_view text, const LineStyle& style, int scroll = 0);
/// The width of a line in pixels.
int MeasureLine(std::u16string_view text, const LineStyle& style);

/// A part of a line, px from its left edge; the right one is outside.
struct Stretch {
  int left;
  int right;
};

/// The x of the caret before a code unit, or after the last, px from the line's left edge. Inside of what is one
/// character to a reader it stays before that character.
int CaretPosition(std::u16string_view text, std::size_t unit, const LineStyle& style);
/// The code unit before which a caret stands nearest to x; the text's length for one after the last.
std::size_t CaretAt(std::u16string_view text, int x, const LineStyle& style);
/// What the code units from start up to end cover: several stretches where a line is read in both directions.
std::vector<Stretch> CoveredStretches(std::u16string_view text, std::size_t start, std::size_t end,
                                      const LineStyle& style);

/// A device context that draws on a surface, for BeginPaint; the surface outlives it. `name` is what the draw trace
/// calls it ("window").
HDC CreateSurfaceDC(Surface& surface, const char* name);
void DeleteSurfaceDC(HDC dc);

}  // namespace phone
