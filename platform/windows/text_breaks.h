/// \file
/// Where characters and words begin and end, as a person takes them. Positions are code units before them.
#pragma once

#include <cstddef>
#include <string_view>

namespace phone {

/// The end of the last character that lies before `place` as a whole: `place` itself between two characters.
std::size_t CharacterStart(std::u16string_view text, std::size_t place);
/// The start of the character before, the end of the one after; `place` at the text's ends.
std::size_t CharacterBefore(std::u16string_view text, std::size_t place);
std::size_t CharacterAfter(std::u16string_view text, std::size_t place);
/// The start of the word that ends, or goes on, at `place`, else of the last one before; 0 when there is none.
std::size_t WordStartBefore(std::u16string_view text, std::size_t place);
/// The end of the word that starts, or goes on, at `place`, else of the next one; the text's end when there is none.
std::size_t WordEndAfter(std::u16string_view text, std::size_t place);

}  // namespace phone
