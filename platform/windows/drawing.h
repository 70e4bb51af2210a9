/// \file
/// Figures that the phone's own parts are drawn with.
#pragma once

#include "graphics/surface.h"
#include "windows/style.h"

namespace phone {

enum class Arrow { up, down };

/// A ground from one colour to the other, row by row.
void DrawRamp(Surface& target, const RECT& rect, const style::Ramp& ramp);
/// The ground of what is chosen, with the mark at its left end.
void DrawChosen(Surface& target, const RECT& rect);
/// The shadow that a panel casts on what lies around it.
void DrawShadow(Surface& target, const RECT& panel);
/// A panel's ground with a frame around it.
void DrawPanel(Surface& target, const RECT& rect);
/// A frame of one pixel inside the rectangle.
void DrawFrame(Surface& target, const RECT& rect, COLORREF color);
/// An arrow head in the middle of the rectangle.
void DrawArrow(Surface& target, const RECT& rect, Arrow arrow);
/// A filled disc that touches the sides of the square, with soft edges.
void DrawDisc(Surface& target, int x, int y, int size, COLORREF color);
/// A filled triangle that stands on the lower side of the square, with soft edges.
void DrawTriangle(Surface& target, int x, int y, int size, COLORREF color);
/// An hourglass on a panel in the middle of the client area: the program is at work.
void DrawWaitMark(Surface& client);
/// A line of text in the middle of the rectangle.
void DrawCentred(Surface& target, const RECT& rect, std::u16string_view text, const LineStyle& style);

}  // namespace phone
