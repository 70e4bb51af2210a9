/// \file
/// Copying, scaling and blending pixels between bitmaps. All coordinates are pixels; rectangles are checked and clipped
/// before they come here.
#pragma once

#include <cstdint>

#include "graphics/area.h"
#include "graphics/bitmap.h"

namespace phone {

inline Area AreaOf(const Bitmap& bitmap) noexcept {
  return {0, 0, bitmap.width(), bitmap.height()};
}

/// Copies an area to a position; both lie in their bitmaps, which may be the same.
void CopyPixels(Bitmap& target, const Area& area, Bitmap& source, int source_x, int source_y) noexcept;

/// How pixels are blended: source * opacity / 255 + target * (255 - source alpha * opacity / 255) / 255, each product
/// rounded to nearest.
struct Blending {
  std::uint8_t opacity;  ///< 0 transparent to 255 opaque
  bool source_alpha;     ///< the source's fourth byte counts; else every source pixel is opaque
};

/// Draws the source's area `from` scaled to `whole`, of which `visible` lies in the target. Each target pixel shows
/// the source pixel that nearest.h says, whatever is visible. Throws std::bad_alloc.
void StretchPixels(Bitmap& target, const Area& whole, const Area& visible, Bitmap& source, const Area& from);
void BlendPixels(Bitmap& target, const Area& whole, const Area& visible, Bitmap& source, const Area& from,
                 const Blending& blending);

/// Draws a visible area of the target: the source's pixels from x, y on, through a mask from the same place on (null:
/// none).
void Composite(Bitmap& target, const Area& visible, pixman_image_t* source, pixman_image_t* mask, std::int64_t x,
               std::int64_t y) noexcept;

/// Fills an area of the target with a colour of that opacity; what lies outside is left out.
void FillPixels(Bitmap& target, const Area& area, COLORREF color, std::uint8_t opacity);

/// An image of one colour, to be drawn through a mask. It is the callee's. Throws std::bad_alloc.
pixman_image_t* SolidColor(COLORREF color);

}  // namespace phone
