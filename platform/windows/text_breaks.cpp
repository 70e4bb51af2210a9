#include "windows/text_breaks.h"

#include <unicode/ubrk.h>
#include <unicode/utf16.h>

#include <memory>

#include "system/text.h"

namespace phone {

namespace {

// In this locale a full stop ends a word, so that the parts of a file's name are words.
constexpr char kLocale[] = "en_US_POSIX";

struct CloseBreaks {
  void operator()(UBreakIterator* breaks) const { ubrk_close(breaks); }
};
using Breaks = std::unique_ptr<UBreakIterator, CloseBreaks>;

/// Null on failure.
Breaks OpenBreaks(UBreakIteratorType type, std::u16string_view text) {
  UErrorCode status = U_ZERO_ERROR;
  Breaks breaks(ubrk_open(type, kLocale, text.data(), static_cast<std::int32_t>(text.size()), &status));
  return U_SUCCESS(status) ? std::move(breaks) : nullptr;
}

/// Whether what ends at the boundary looked at last is a word: letters, digits, ideographs.
bool IsWord(const Breaks& breaks) {
  return ubrk_getRuleStatus(breaks.get()) >= UBRK_WORD_NONE_LIMIT;
}

}  // namespace

std::size_t CharacterStart(std::u16string_view text, std::size_t place) {
  if (place == 0 || place >= text.size()) return place;
  const Breaks breaks = OpenBreaks(UBRK_CHARACTER, text);
  const std::size_t whole = CutLength(text, place);
  if (breaks == nullptr || whole == 0) return whole;
  const auto at = static_cast<std::int32_t>(whole);
  return ubrk_isBoundary(breaks.get(), at) ? whole : static_cast<std::size_t>(ubrk_preceding(breaks.get(), at));
}

std::size_t CharacterBefore(std::u16string_view text, std::size_t place) {
  if (place == 0) return 0;
  const Breaks breaks = OpenBreaks(UBRK_CHARACTER, text);
  if (breaks == nullptr) return CutLength(text, place - 1);
  return static_cast<std::size_t>(ubrk_preceding(breaks.get(), static_cast<std::int32_t>(place)));
}

std::size_t CharacterAfter(std::u16string_view text, std::size_t place) {
  if (place >= text.size()) return text.size();
  const Breaks breaks = OpenBreaks(UBRK_CHARACTER, text);
  if (breaks != nullptr)
    return static_cast<std::size_t>(ubrk_following(breaks.get(), static_cast<std::int32_t>(place)));
  const bool pair = U16_IS_LEAD(text[place]) && place + 1 < text.size() && U16_IS_TRAIL(text[place + 1]);
  return place + (pair ? 2 : 1);
}

std::size_t WordStartBefore(std::u16string_view text, std::size_t place) {
  const Breaks breaks = OpenBreaks(UBRK_WORD, text);
  auto at = static_cast<std::int32_t>(place);
  while (breaks != nullptr && at > 0) {
    at = ubrk_preceding(breaks.get(), at);
    ubrk_following(breaks.get(), at);
    if (IsWord(breaks)) return static_cast<std::size_t>(at);
  }
  return 0;
}

std::size_t WordEndAfter(std::u16string_view text, std::size_t place) {
  const Breaks breaks = OpenBreaks(UBRK_WORD, text);
  auto at = static_cast<std::int32_t>(place);
  while (breaks != nullptr && at < static_cast<std::int32_t>(text.size())) {
    at = ubrk_following(breaks.get(), at);
    if (IsWord(breaks)) return static_cast<std::size_t>(at);
  }
  return text.size();
}

}  // namespace phone
