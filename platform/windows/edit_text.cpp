#include "windows/edit_text.h"

#include <unicode/ubrk.h>
#include <unicode/utf16.h>

#include <memory>

#include "system/text.h"

namespace phone {

namespace {

struct CloseBreaks {
  void operator()(UBreakIterator* breaks) const { ubrk_close(breaks); }
};
using Breaks = std::unique_ptr<UBreakIterator, CloseBreaks>;

/// The boundaries of what a person takes for one character: letter with accents, emoji sequence. Null on failure.
Breaks CharacterBreaks(const std::u16string& text) {
  UErrorCode status = U_ZERO_ERROR;
  Breaks breaks(ubrk_open(UBRK_CHARACTER, "", text.data(), static_cast<std::int32_t>(text.size()), &status));
  return U_SUCCESS(status) ? std::move(breaks) : nullptr;
}

bool IsControl(WCHAR unit) {
  return unit < 0x20 || (unit >= 0x7F && unit <= 0x9F);
}

bool IsBreak(WCHAR unit) {
  return unit == u'\t' || unit == u'\n' || unit == u'\r' || unit == 0x85 || unit == 0x2028 || unit == 0x2029;
}

}  // namespace

void EditText::Set(std::u16string_view text) {
  std::u16string kept;
  kept.reserve(std::min(text.size(), kLongestFieldText));
  WCHAR previous = 0;
  for (const WCHAR unit : text) {
    const bool second_of_line_end = unit == u'\n' && previous == u'\r';
    previous = unit;
    if (second_of_line_end) continue;
    if (IsBreak(unit))
      kept.push_back(u' ');
    else if (!IsControl(unit))
      kept.push_back(unit);
  }
  kept.resize(CutLength(kept, kLongestFieldText));
  text_ = std::move(kept);
  caret_ = text_.size();
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
  const std::size_t length = is_second_half ? 2 : 1;
  if (text_.size() + length > kLongestFieldText) return;
  if (is_second_half)
    text_.insert(caret_, {first_half, unit});
  else
    text_.insert(caret_, 1, unit);
  caret_ += length;
  // What was typed may have joined the characters around it into one; the caret goes behind that.
  if (caret_ < text_.size()) {
    const Breaks breaks = CharacterBreaks(text_);
    if (breaks != nullptr && !ubrk_isBoundary(breaks.get(), static_cast<std::int32_t>(caret_)))
      caret_ = CharacterAfter();
  }
}

bool EditText::DeleteBefore() {
  const std::size_t start = CharacterBefore();
  if (start == caret_) return false;
  text_.erase(start, caret_ - start);
  caret_ = start;
  return true;
}

bool EditText::DeleteAfter() {
  const std::size_t end = CharacterAfter();
  if (end == caret_) return false;
  text_.erase(caret_, end - caret_);
  return true;
}

bool EditText::MoveLeft() {
  return MoveTo(CharacterBefore());
}

bool EditText::MoveRight() {
  return MoveTo(CharacterAfter());
}

bool EditText::MoveHome() {
  return MoveTo(0);
}

bool EditText::MoveEnd() {
  return MoveTo(text_.size());
}

std::size_t EditText::CharacterBefore() const {
  if (caret_ == 0) return 0;
  const Breaks breaks = CharacterBreaks(text_);
  if (breaks != nullptr)
    return static_cast<std::size_t>(ubrk_preceding(breaks.get(), static_cast<std::int32_t>(caret_)));
  return CutLength(text_, caret_ - 1);
}

std::size_t EditText::CharacterAfter() const {
  if (caret_ == text_.size()) return caret_;
  const Breaks breaks = CharacterBreaks(text_);
  if (breaks != nullptr)
    return static_cast<std::size_t>(ubrk_following(breaks.get(), static_cast<std::int32_t>(caret_)));
  const bool pair = U16_IS_LEAD(text_[caret_]) && caret_ + 1 < text_.size() && U16_IS_TRAIL(text_[caret_ + 1]);
  return caret_ + (pair ? 2 : 1);
}

bool EditText::MoveTo(std::size_t caret) {
  first_half_ = 0;
  if (caret == caret_) return false;
  caret_ = caret;
  return true;
}

}  // namespace phone
