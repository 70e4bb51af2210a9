#include "system/text.h"

#include <unicode/uchar.h>
#include <unicode/ustring.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <cstdint>
#include <limits>

namespace phone {

namespace {

constexpr UChar32 kReplacement = 0xFFFD;

/// ICU counts in 32 bits, and UTF-8 takes up to three bytes for a code unit.
constexpr std::size_t kLongestText = std::numeric_limits<std::int32_t>::max() / 3;

UChar32 FoldCharacter(UChar32 character) noexcept {
  if (character >= 'A' && character <= 'Z') return character + ('a' - 'A');
  return character < 0x80 ? character : u_foldCase(character, U_FOLD_CASE_DEFAULT);
}

/// The character at `at`, folded; steps over it.
UChar32 NextFolded(std::u16string_view text, std::size_t& at) noexcept {
  UChar32 character;
  U16_NEXT(text.data(), at, text.size(), character);
  return FoldCharacter(character);
}

/// A number that orders characters as their UTF-16 code units are ordered.
std::uint32_t Rank(UChar32 character) noexcept {
  if (character < 0x10000) return static_cast<std::uint32_t>(character) << 16;
  return static_cast<std::uint32_t>(U16_LEAD(character)) << 16 | static_cast<std::uint32_t>(U16_TRAIL(character));
}

/// That many code units of a text, but for the first half of a pair at their end.
std::size_t WithoutHalfPair(const char16_t* text, std::size_t length) noexcept {
  return length > 0 && U16_IS_LEAD(text[length - 1]) ? length - 1 : length;
}

std::size_t CommonLength(std::u16string_view a, std::u16string_view b) noexcept {
  const std::size_t shorter = std::min(a.size(), b.size());
  std::size_t length = 0;
  while (length < shorter && a[length] == b[length]) ++length;
  return WithoutHalfPair(a.data(), length);
}

std::size_t CommonLength(const char16_t* a, const char16_t* b) noexcept {
  std::size_t length = 0;
  while (a[length] != 0 && a[length] == b[length]) ++length;
  return WithoutHalfPair(a, length);
}

}  // namespace

std::optional<std::u16string> ToUtf16(std::string_view utf8) {
  if (utf8.empty()) return std::u16string();
  if (utf8.size() > kLongestText) return std::nullopt;
  std::u16string text(utf8.size(), u'\0');
  std::int32_t length = 0;
  UErrorCode status = U_ZERO_ERROR;
  u_strFromUTF8(text.data(), static_cast<std::int32_t>(text.size()), &length, utf8.data(),
                static_cast<std::int32_t>(utf8.size()), &status);
  if (U_FAILURE(status)) return std::nullopt;
  text.resize(static_cast<std::size_t>(length));
  return text;
}

std::optional<std::string> ToUtf8(std::u16string_view utf16) {
  if (utf16.empty()) return std::string();
  if (utf16.size() > kLongestText) return std::nullopt;
  std::string text(utf16.size() * 3, '\0');
  std::int32_t length = 0;
  UErrorCode status = U_ZERO_ERROR;
  u_strToUTF8(text.data(), static_cast<std::int32_t>(text.size()), &length, utf16.data(),
              static_cast<std::int32_t>(utf16.size()), &status);
  if (U_FAILURE(status)) return std::nullopt;
  text.resize(static_cast<std::size_t>(length));
  return text;
}

std::string ToUtf8Lossy(std::u16string_view utf16) {
  utf16 = utf16.substr(0, CutLength(utf16, kLongestText));
  if (utf16.empty()) return {};
  std::string text(utf16.size() * 3, '\0');
  std::int32_t length = 0;
  UErrorCode status = U_ZERO_ERROR;
  u_strToUTF8WithSub(text.data(), static_cast<std::int32_t>(text.size()), &length, utf16.data(),
                     static_cast<std::int32_t>(utf16.size()), kReplacement, nullptr, &status);
  text.resize(U_FAILURE(status) ? 0 : static_cast<std::size_t>(length));
  return text;
}

std::u16string FoldCase(std::u16string_view text) {
  std::u16string folded;
  folded.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const UChar32 character = NextFolded(text, at);
    if (character < 0x10000) {
      folded.push_back(static_cast<char16_t>(character));
    } else {
      folded.push_back(U16_LEAD(character));
      folded.push_back(U16_TRAIL(character));
    }
  }
  return folded;
}

int CompareFolded(std::u16string_view a, std::u16string_view b) noexcept {
  // Paths of one folder have most of their characters in common.
  std::size_t at_a = CommonLength(a, b);
  std::size_t at_b = at_a;
  while (at_a < a.size() && at_b < b.size()) {
    const std::uint32_t rank_a = Rank(NextFolded(a, at_a));
    const std::uint32_t rank_b = Rank(NextFolded(b, at_b));
    if (rank_a != rank_b) return rank_a < rank_b ? -1 : 1;
  }
  return static_cast<int>(at_a < a.size()) - static_cast<int>(at_b < b.size());
}

int CompareFoldedText(const char16_t* a, const char16_t* b) noexcept {
  const std::size_t common = CommonLength(a, b);
  return CompareFolded(a + common, b + common);
}

std::size_t CutLength(std::u16string_view text, std::size_t limit) noexcept {
  if (text.size() <= limit) return text.size();
  const bool splits = limit > 0 && U16_IS_LEAD(text[limit - 1]) && U16_IS_TRAIL(text[limit]);
  return splits ? limit - 1 : limit;
}

}  // namespace phone
