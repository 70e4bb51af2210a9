/// \file
/// Faces at a size, and lines of text shaped and rendered with them.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "graphics/bitmap.h"
#include "graphics/counted.h"
#include "graphics/raster.h"
#include "graphics/surface.h"

// Pango's own headers come after the platform's, which define TRUE and FALSE.
using PangoFontDescription = struct _PangoFontDescription;

namespace phone {

struct DescriptionRelease {
  void operator()(PangoFontDescription* description) const noexcept;
};

/// A face at a size, as lines are shaped with it.
class Face : public Counted {
 public:
  std::uint32_t id = 0;  ///< never given to another face
  std::unique_ptr<PangoFontDescription, DescriptionRelease> description;
  int ascent = 0;       ///< px from the line's top to its baseline
  int line_height = 0;  ///< px, this face's own, whatever a fallback face has
};

/// The face of that name (a substitute where it is missing) with characters of that height in pixels, regular or bold.
/// Null when the phone has no font at all. Throws std::bad_alloc.
Ref<Face> FindFace(std::u16string_view name, int height, bool bold);

/// One line of text, rendered. Coordinates are pixels from the line's left edge on its baseline.
struct Line {
  int width = 0;          ///< px, to where a next character would stand
  Area ink = {};          ///< what the images cover; empty for blanks
  bool complete = false;  ///< the images hold all of the line's ink
  PixmanImage mask;       ///< opacity of the text's colour, 8 bits; null without ink
  PixmanImage colored;    ///< glyphs that have colours of their own; null when there are none
};

/// Shapes a line and renders the part of it that lies in `window`. Throws std::bad_alloc.
Line RenderLine(const Face& face, std::u16string_view text, const Area& window);

/// Places in a line, as surface.h has them. Throw std::bad_alloc.
int CaretPlace(const Face& face, std::u16string_view text, std::size_t unit);
std::size_t UnitAt(const Face& face, std::u16string_view text, int x);
std::vector<Stretch> StretchesOf(const Face& face, std::u16string_view text, std::size_t start, std::size_t end);

/// The rendered line, kept for the next time. It stays valid until the next call. Throws std::bad_alloc.
const Line& CachedLine(const Face& face, std::u16string_view text);

/// Draws a line with its left edge at x on a baseline; nothing outside `clip` or the target is touched. Throws
/// std::bad_alloc.
void DrawLineAt(Bitmap& target, const Area& clip, std::int64_t x, std::int64_t baseline, const Face& face,
                std::u16string_view text, COLORREF color);

}  // namespace phone
