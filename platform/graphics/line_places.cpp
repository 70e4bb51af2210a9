// Where the characters of a line stand.

#include "graphics/face.h"

#include <pango/pango.h>

#include <memory>

#include "graphics/text_engine.h"

namespace phone {

namespace {

struct Free {
  void operator()(int* memory) const noexcept { g_free(memory); }
};

bool IsFirstHalf(char16_t unit) noexcept {
  return (unit & 0xFC00) == 0xD800;
}
bool IsSecondHalf(char16_t unit) noexcept {
  return (unit & 0xFC00) == 0xDC00;
}

/// The code units from `i` on that Pango has as one character: a pair, or one that may have been replaced.
std::size_t UnitsAt(std::u16string_view text, std::size_t i) noexcept {
  return IsFirstHalf(text[i]) && i + 1 < text.size() && IsSecondHalf(text[i + 1]) ? 2 : 1;
}

/// How many bytes of UTF-8 that character has.
int BytesAt(std::u16string_view text, std::size_t i) noexcept {
  if (UnitsAt(text, i) == 2) return 4;
  const char16_t unit = text[i];
  // The character that replaces a zero or half a pair has three.
  if (unit == 0 || unit >= 0x800) return 3;
  return unit < 0x80 ? 1 : 2;
}

/// Walks over the characters of a line in step with Pango's text.
struct Walker {
  std::u16string_view text;
  std::size_t unit = 0;
  int byte = 0;
  int character = 0;

  bool at_end() const { return unit >= text.size(); }
  void Advance() {
    byte += BytesAt(text, unit);
    unit += UnitsAt(text, unit);
    ++character;
  }
};

/// The byte of the last place for a caret up to the code unit.
int CaretByte(PangoLayout* layout, std::u16string_view text, std::size_t unit) {
  int count = 0;
  const PangoLogAttr* attributes = pango_layout_get_log_attrs_readonly(layout, &count);
  int byte = 0;
  Walker walker{text};
  while (true) {
    if (walker.unit > unit) return byte;
    if (walker.character >= count || attributes[walker.character].is_cursor_position != 0) byte = walker.byte;
    if (walker.at_end()) return byte;
    walker.Advance();
  }
}

}  // namespace

int CaretPlace(const Face& face, std::u16string_view text, std::size_t unit) {
  PangoLayout* layout = LayOutLine(face, text);
  PangoRectangle strong = {};
  pango_layout_get_cursor_pos(layout, CaretByte(layout, text, unit), &strong, nullptr);
  return PANGO_PIXELS(strong.x);
}

std::size_t UnitAt(const Face& face, std::u16string_view text, int x) {
  PangoLayout* layout = LayOutLine(face, text);
  int byte = 0;
  int trailing = 0;
  pango_layout_line_x_to_index(pango_layout_get_line_readonly(layout, 0), x * PANGO_SCALE, &byte, &trailing);
  Walker walker{text};
  while (!walker.at_end() && walker.byte < byte) walker.Advance();
  for (; trailing > 0 && !walker.at_end(); --trailing) walker.Advance();
  return walker.unit;
}

std::vector<Stretch> StretchesOf(const Face& face, std::u16string_view text, std::size_t start, std::size_t end) {
  PangoLayout* layout = LayOutLine(face, text);
  const int first = CaretByte(layout, text, start);
  const int last = CaretByte(layout, text, end);
  if (first >= last) return {};
  int* edges = nullptr;
  int count = 0;
  pango_layout_line_get_x_ranges(pango_layout_get_line_readonly(layout, 0), first, last, &edges, &count);
  const std::unique_ptr<int, Free> owner(edges);
  std::vector<Stretch> stretches;
  for (int i = 0; i < count; ++i) stretches.push_back({PANGO_PIXELS(edges[2 * i]), PANGO_PIXELS(edges[2 * i + 1])});
  return stretches;
}

}  // namespace phone
