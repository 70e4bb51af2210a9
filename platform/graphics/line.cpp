// Lines of text, shaped and rendered.

#include "graphics/face.h"

#include <fontconfig/fontconfig.h>
#include <pango/pangocairo.h>
#include <pango/pangofc-font.h>

#include <new>

#include "graphics/text_engine.h"

namespace phone {

namespace {

struct CairoRelease {
  void operator()(cairo_t* cairo) const noexcept { cairo_destroy(cairo); }
  void operator()(cairo_surface_t* surface) const noexcept { cairo_surface_destroy(surface); }
};

/// Which glyphs an image takes.
enum class Glyphs { plain, colored };

/// True for a font whose glyphs are pictures with colours of their own.
bool IsColored(PangoFont* font) {
  FcBool colored = FcFalse;
  if (!PANGO_IS_FC_FONT(font)) return false;
  FcPattern* pattern = pango_fc_font_get_pattern(PANGO_FC_FONT(font));
  return pattern != nullptr && FcPatternGetBool(pattern, FC_COLOR, 0, &colored) == FcResultMatch && colored == FcTrue;
}

bool HasColoredGlyphs(const PangoLayoutLine* line) {
  for (const GSList* run = line->runs; run != nullptr; run = run->next)
    if (IsColored(static_cast<const PangoGlyphItem*>(run->data)->item->analysis.font)) return true;
  return false;
}

void ShowRuns(cairo_t* cairo, const PangoLayoutLine* line, Glyphs wanted) {
  double x = 0;
  double y = 0;
  cairo_get_current_point(cairo, &x, &y);
  int advance = 0;
  for (const GSList* node = line->runs; node != nullptr; node = node->next) {
    const auto* run = static_cast<const PangoGlyphItem*>(node->data);
    PangoFont* font = run->item->analysis.font;
    advance += run->start_x_offset;
    if (font != nullptr && IsColored(font) == (wanted == Glyphs::colored)) {
      cairo_move_to(cairo, x + pango_units_to_double(advance), y - pango_units_to_double(run->y_offset));
      pango_cairo_show_glyph_string(cairo, font, run->glyphs);
    }
    advance += pango_glyph_string_get_width(run->glyphs) + run->end_x_offset;
  }
}

PixmanImage RenderRuns(const PangoLayoutLine* line, const Area& ink, Glyphs glyphs) {
  const bool colored = glyphs == Glyphs::colored;
  const auto width = static_cast<int>(ink.width);
  const auto height = static_cast<int>(ink.height);
  PixmanImage image(
      pixman_image_create_bits(colored ? PIXMAN_a8r8g8b8 : PIXMAN_a8, width, height, nullptr, /*rowstride_bytes=*/0));
  if (image == nullptr) throw std::bad_alloc();
  auto* const bits = reinterpret_cast<unsigned char*>(pixman_image_get_data(image.get()));
  const std::unique_ptr<cairo_surface_t, CairoRelease> surface(cairo_image_surface_create_for_data(
      bits, colored ? CAIRO_FORMAT_ARGB32 : CAIRO_FORMAT_A8, width, height, pixman_image_get_stride(image.get())));
  const std::unique_ptr<cairo_t, CairoRelease> cairo(cairo_create(surface.get()));
  cairo_move_to(cairo.get(), static_cast<double>(-ink.x), static_cast<double>(-ink.y));
  ShowRuns(cairo.get(), line, glyphs);
  cairo_surface_flush(surface.get());
  if (cairo_status(cairo.get()) == CAIRO_STATUS_NO_MEMORY) throw std::bad_alloc();
  return image;
}

}  // namespace

Line RenderLine(const Face& face, std::u16string_view text, const Area& window) {
  PangoLayout* layout = LayOutLine(face, text);
  PangoLayoutLine* shaped = pango_layout_get_line_readonly(layout, 0);
  Line line;
  PangoRectangle ink = {};
  PangoRectangle logical = {};
  pango_layout_line_get_pixel_extents(shaped, &ink, &logical);
  line.width = logical.width;
  // Hinting may move an edge to the next pixel.
  const Area all = {ink.x - 1, ink.y - 1, std::int64_t{ink.width} + 2, std::int64_t{ink.height} + 2};
  line.complete = Contains(window, all);
  const std::optional<Area> part = Intersect(all, window);
  if (ink.width <= 0 || ink.height <= 0 || !part) return line;
  line.ink = *part;
  line.mask = RenderRuns(shaped, *part, Glyphs::plain);
  if (HasColoredGlyphs(shaped)) line.colored = RenderRuns(shaped, *part, Glyphs::colored);
  return line;
}

}  // namespace phone
