/// \file
/// UTF-16 and UTF-8, letter case, bounded cuts.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace phone {

/// Nothing for invalid UTF-8 (or, the other way, unpaired surrogates).
std::optional<std::u16string> ToUtf16(std::string_view utf8);
std::optional<std::string> ToUtf8(std::u16string_view utf16);
/// The same with a replacement character in the place of what is invalid.
std::string ToUtf8Lossy(std::u16string_view utf16);

/// Simple case folding of every character, for comparing names.
std::u16string FoldCase(std::u16string_view text);
/// Negative, zero or positive, without regard to case. No allocation.
int CompareFolded(std::u16string_view a, std::u16string_view b) noexcept;
/// The same of texts that end with a zero: where they begin alike, only what differs is measured.
int CompareFoldedText(const char16_t* a, const char16_t* b) noexcept;

/// The length of the longest prefix of at most `limit` code units that does not end inside a surrogate pair.
std::size_t CutLength(std::u16string_view text, std::size_t limit) noexcept;

}  // namespace phone
