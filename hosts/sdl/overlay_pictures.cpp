#include "hosts/sdl/overlay_pictures.h"

#include <algorithm>
#include <string_view>

#include "hosts/sdl/key_map.h"
#include "system/text.h"
#include "windows/drawing.h"
#include "windows/style.h"
#include "windows/text_wrap.h"

namespace sdl {
namespace {

using phone::LineStyle;
using phone::Surface;

constexpr char16_t kKeyMapTitle[] = u"Keys";
/// Paths and long names are broken behind these.
constexpr char16_t kWordBreaks[] = u"/\\-_.";

// Text is to be read at any scale, and not to fill the window at a large one.
constexpr int kSmallestText = 8;  // px
constexpr int kPlainText = 11;    // px, at scale 1
constexpr int kTextOfAScale = 3;  // px more for each further scale
constexpr int kLargestText = 26;  // px

int TextHeight(int scale) {
  return std::min(kPlainText + kTextOfAScale * (scale - 1), kLargestText);
}

/// Measures that follow from the height of the text.
struct Measures {
  explicit Measures(int text_height) : text(text_height), line(text_height * 4 / 3 + 1), padding(text_height * 2 / 3) {}

  int text;     // px
  int line;     // px
  int padding;  // px

  LineStyle Plain() const { return {.height = text, .weight = 400, .color = phone::style::kText}; }
  LineStyle Quiet() const { return {.height = text, .weight = 400, .color = phone::style::kQuietText}; }
  LineStyle Bold() const { return {.height = text, .weight = 700, .color = phone::style::kText}; }
};

std::vector<std::u16string_view> Wrap(std::u16string_view text, int width, const LineStyle& style) {
  return phone::WrapText(
      text, width, [&](std::u16string_view line) { return phone::MeasureLine(line, style); }, kWordBreaks);
}

void DrawLines(Surface& target, const RECT& area, const std::vector<std::u16string_view>& lines,
               const Measures& measures, const LineStyle& style) {
  LONG y = area.top;
  for (const std::u16string_view line : lines) {
    phone::DrawLine(target, {area.left, y, area.right, y + measures.line}, line, style);
    y += measures.line;
  }
}

int HeightOf(const std::vector<std::u16string_view>& lines, const Measures& measures) {
  return static_cast<int>(lines.size()) * measures.line;
}

void DrawGround(Surface& target) {
  phone::DrawPanel(target, {0, 0, target.width(), target.height()});
}

struct KeyMapTexts {
  std::u16string keys;
  std::u16string effect;
};

std::vector<KeyMapTexts> Texts() {
  std::vector<KeyMapTexts> texts;
  for (const KeyMapRow& row : KeyMap())
    texts.push_back({phone::ToUtf16(row.keys).value_or(u""), phone::ToUtf16(row.effect).value_or(u"")});
  return texts;
}

/// How the rows of the key map stand at a height of the text.
struct KeyMapLayout {
  KeyMapLayout(const std::vector<KeyMapTexts>& texts, int text_height, int room_width) : measures(text_height) {
    int widest_effect = 0;
    for (const KeyMapTexts& row : texts) {
      keys = std::max(keys, phone::MeasureLine(row.keys, measures.Bold()));
      widest_effect = std::max(widest_effect, phone::MeasureLine(row.effect, measures.Plain()));
    }
    const int beside = 3 * measures.padding + keys;
    effects = std::max(std::min(widest_effect, room_width - beside), measures.text);
    width = beside + effects;
    height = 2 * measures.padding + measures.line + measures.padding / 2;
    for (const KeyMapTexts& row : texts) height += HeightOf(Wrap(row.effect, effects, measures.Plain()), measures);
  }

  Measures measures;
  int keys = 0;     // px, the column of keys
  int effects = 0;  // px, the column of effects
  int width = 0;    // px
  int height = 0;   // px
};

KeyMapLayout LayOutKeyMap(const std::vector<KeyMapTexts>& texts, Size room, int scale) {
  int text_height = TextHeight(scale);
  while (true) {
    const KeyMapLayout layout(texts, text_height, room.width);
    if ((layout.height <= room.height && layout.width <= room.width) || text_height <= kSmallestText) return layout;
    --text_height;
  }
}

SDL_Rect DrawButton(Surface& target, int x, int y, std::u16string_view label, const Measures& measures,
                    COLORREF ground) {
  const int width = phone::MeasureLine(label, measures.Bold()) + 2 * measures.padding;
  const int height = measures.line + measures.padding;
  const RECT area = {x, y, x + width, y + height};
  target.Fill(area, ground);
  phone::DrawCentred(target, area, label, measures.Bold());
  return {x, y, width, height};
}

}  // namespace

Surface DrawNotices(const std::vector<std::u16string>& texts, int width, int scale) {
  const Measures measures(TextHeight(scale));
  const int inside = std::max(width - 2 * measures.padding, 1);
  std::vector<std::u16string_view> lines;
  for (const std::u16string& text : texts)
    for (const std::u16string_view line : Wrap(text, inside, measures.Plain())) lines.push_back(line);
  Surface picture(width, HeightOf(lines, measures) + 2 * measures.padding);
  DrawGround(picture);
  picture.Fill({0, picture.height() - std::max(scale, 1), width, picture.height()}, phone::style::kAccent);
  DrawLines(picture, {measures.padding, measures.padding, width - measures.padding, picture.height()}, lines, measures,
            measures.Plain());
  return picture;
}

/// Like a field at that scale, with a line under it that tells that it is not typed yet.
Surface DrawComposition(const Composition& composition, int height, int room, int scale) {
  LineStyle style = phone::style::kFieldStyle;
  style.height *= scale;
  const int caret_width = phone::style::kCaretWidth * scale;
  const int whole = phone::MeasureLine(composition.text, style) + caret_width;
  const int caret = phone::MeasureLine(std::u16string_view(composition.text).substr(0, composition.caret), style);
  Surface picture(std::clamp(whole, 1, std::max(room, 1)), std::max(height, 1));
  const int scroll = std::max(caret + caret_width - picture.width(), 0);
  const RECT area = {0, 0, picture.width(), picture.height()};
  picture.Fill(area, phone::style::kFieldGround);
  phone::DrawLine(picture, area, composition.text, style, scroll);
  picture.Fill({0, area.bottom - scale, area.right, area.bottom}, phone::style::kAccent);
  picture.Fill({caret - scroll, 0, caret - scroll + caret_width, area.bottom}, phone::style::kSelection);
  return picture;
}

Surface DrawKeyMap(Size room, int scale) {
  const std::vector<KeyMapTexts> texts = Texts();
  const KeyMapLayout layout = LayOutKeyMap(texts, room, scale);
  const Measures& measures = layout.measures;
  Surface picture(layout.width, layout.height);
  DrawGround(picture);
  const LONG head = measures.line + measures.padding;
  phone::DrawRamp(picture, {1, 1, layout.width - 1, head}, phone::style::kPanelHead);
  phone::DrawLine(picture, {measures.padding, 0, layout.width, head}, kKeyMapTitle, measures.Bold());
  LONG y = head + measures.padding / 2;
  const LONG effects = 2 * measures.padding + layout.keys;
  for (const KeyMapTexts& row : texts) {
    const auto lines = Wrap(row.effect, layout.effects, measures.Plain());
    phone::DrawLine(picture, {measures.padding, y, effects, y + measures.line}, row.keys, measures.Bold());
    DrawLines(picture, {effects, y, layout.width, layout.height}, lines, measures, measures.Quiet());
    y += HeightOf(lines, measures);
  }
  return picture;
}

QuestionPicture DrawQuestion(const std::u16string& text, const std::u16string& yes, const std::u16string& no, int width,
                             int scale) {
  const Measures measures(TextHeight(scale));
  const int inside = std::max(width - 2 * measures.padding, 1);
  const auto lines = Wrap(text, inside, measures.Plain());
  const int buttons = measures.padding * 2 + HeightOf(lines, measures);
  QuestionPicture question{Surface(width, buttons + measures.line + 2 * measures.padding), {}, {}};
  DrawGround(question.picture);
  DrawLines(question.picture, {measures.padding, measures.padding, width - measures.padding, buttons}, lines, measures,
            measures.Plain());
  question.yes = DrawButton(question.picture, measures.padding, buttons, yes, measures, phone::style::kSelection);
  question.no = DrawButton(question.picture, question.yes.x + question.yes.w + measures.padding, buttons, no, measures,
                           phone::style::kPanelFrame);
  return question;
}

}  // namespace sdl
