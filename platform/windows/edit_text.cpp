#include "windows/edit_text.h"

#include <unicode/ubidi.h>
#include <unicode/utf16.h>

#include <algorithm>

#include "system/text.h"
#include "windows/text_breaks.h"

namespace phone {

namespace {

bool IsControl(WCHAR unit) {
  return unit < 0x20 || (unit >= 0x7F && unit <= 0x9F);
}

bool IsLineBreak(WCHAR unit) {
  return unit == u'\n' || unit == u'\r' || unit == 0x85 || unit == 0x2028 || unit == 0x2029;
}

bool IsBreak(WCHAR unit) {
  return unit == u'\t' || IsLineBreak(unit);
}

bool IsHalf(std::u16string_view text, std::size_t i) {
  if (U16_IS_LEAD(text[i])) return i + 1 == text.size() || !U16_IS_TRAIL(text[i + 1]);
  return U16_IS_TRAIL(text[i]) && (i == 0 || !U16_IS_LEAD(text[i - 1]));
}

/// One line of the text: breaks are blanks, other controls dropped. What comes after `most` code units may be missing.
std::u16string CleanLine(std::u16string_view text, std::size_t most) {
  std::u16string kept;
  kept.reserve(std::min(text.size(), most));
  WCHAR previous = 0;
  for (const WCHAR unit : text) {
    if (kept.size() >= most) break;
    const bool second_of_line_end = unit == u'\n' && previous == u'\r';
    previous = unit;
    if (second_of_line_end) continue;
    if (IsBreak(unit))
      kept.push_back(u' ');
    else if (!IsControl(unit))
      kept.push_back(unit);
  }
  return kept;
}

std::u16string_view WithoutLineBreaksAtEnds(std::u16string_view text) {
  const auto first = std::ranges::find_if_not(text, IsLineBreak);
  text.remove_prefix(static_cast<std::size_t>(first - text.begin()));
  while (!text.empty() && IsLineBreak(text.back())) text.remove_suffix(1);
  return text;
}

void DropHalves(std::u16string& text) {
  std::u16string whole;
  whole.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i)
    if (!IsHalf(text, i)) whole.push_back(text[i]);
  text = std::move(whole);
}

}  // namespace

std::u16string_view EditText::selected() const {
  return std::u16string_view(text_).substr(selection_start(), selection_end() - selection_start());
}

bool EditText::runs_leftwards() const {
  return ubidi_getBaseDirection(text_.data(), static_cast<std::int32_t>(text_.size())) == UBIDI_RTL;
}

void EditText::Set(std::u16string_view text) {
  std::u16string kept = CleanLine(text, kLongestFieldText + 1);
  kept.resize(CutLength(kept, kLongestFieldText));
  text_ = std::move(kept);
  caret_ = anchor_ = text_.size();
  first_half_ = 0;
}

void EditText::Type(WCHAR unit) {
  const WCHAR first_half = first_half_;
  first_half_ = 0;
  if (U16_IS_LEAD(unit)) {
    first_half_ = unit;
    return;
  }
  if (IsControl(unit) || IsBreak(unit)) return;
  const bool is_second_half = U16_IS_TRAIL(unit);
  if (is_second_half && first_half == 0) return;
  const WCHAR pair[] = {first_half, unit};
  const std::u16string_view typed = is_second_half ? std::u16string_view(pair, 2) : std::u16string_view(&unit, 1);
  if (typed.size() <= Room()) Replace(typed);
}

bool EditText::Insert(std::u16string_view text) {
  // Cleaning looks a little further than there is room, so that the cut can tell where a character ends.
  constexpr std::size_t kLookAhead = 64;
  const std::size_t room = Room();
  std::u16string line = CleanLine(WithoutLineBreaksAtEnds(text), room + kLookAhead);
  DropHalves(line);
  if (line.size() > room) line.resize(CharacterStart(line, room));
  if (line.empty()) return false;
  Replace(line);
  return true;
}

bool EditText::Delete(Place place) {
  if (caret_ == anchor_) anchor_ = Find(place);
  if (caret_ == anchor_) return false;
  Replace({});
  return true;
}

bool EditText::Move(Place place, Selecting selecting) {
  const bool leaves_selection = selecting == Selecting::no && caret_ != anchor_;
  if (leaves_selection && place == Place::before) return MoveTo(selection_start(), selecting);
  if (leaves_selection && place == Place::after) return MoveTo(selection_end(), selecting);
  return MoveTo(Find(place), selecting);
}

bool EditText::MoveTo(std::size_t place, Selecting selecting) {
  first_half_ = 0;
  const std::size_t caret = CharacterStart(text_, place);
  const std::size_t anchor = selecting == Selecting::yes ? anchor_ : caret;
  const bool changed = caret != caret_ || anchor != anchor_;
  caret_ = caret;
  anchor_ = anchor;
  return changed;
}

bool EditText::SelectAll() {
  MoveTo(0, Selecting::no);
  return MoveTo(text_.size(), Selecting::yes);
}

std::size_t EditText::Find(Place place) const {
  switch (place) {
    case Place::before: return CharacterBefore(text_, caret_);
    case Place::after: return CharacterAfter(text_, caret_);
    case Place::word_before: return WordStartBefore(text_, caret_);
    case Place::word_after: return WordEndAfter(text_, caret_);
    case Place::home: return 0;
    case Place::end: return text_.size();
  }
  return caret_;
}

std::size_t EditText::Room() const {
  const std::size_t kept = text_.size() - selected().size();
  return kLongestFieldText - std::min(kept, kLongestFieldText);
}

void EditText::Replace(std::u16string_view with) {
  const std::size_t start = selection_start();
  text_.replace(start, selected().size(), with);
  caret_ = start + with.size();
  // What stands next to each other now may have become one character; the caret goes behind that.
  if (CharacterStart(text_, caret_) != caret_) caret_ = CharacterAfter(text_, caret_);
  anchor_ = caret_;
  first_half_ = 0;
}

}  // namespace phone
