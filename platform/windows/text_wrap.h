/// \file
/// Breaking a text into lines of a width.
#pragma once

#include <functional>
#include <string_view>
#include <vector>

namespace phone {

/// The lines of a text, none wider than `width` (px, as `measure` tells): broken at line ends and blanks, and inside a
/// word only when the word alone is too wide; there behind one of `word_breaks` if it has any. A line holds at least
/// one character.
std::vector<std::u16string_view> WrapText(std::u16string_view text, int width,
                                          const std::function<int(std::u16string_view)>& measure,
                                          std::u16string_view word_breaks = {});

}  // namespace phone
