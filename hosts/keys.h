/// \file
/// Characters and the keys they stand on.
#pragma once

#include "phone.h"

namespace hosts {

/// The virtual-key code of a letter, a digit or a blank; 0 for a character without a key of its own.
constexpr UINT KeyOfCharacter(char16_t character) {
  if (character >= u'a' && character <= u'z') return character - u'a' + u'A';
  if (character >= u'A' && character <= u'Z') return character;
  if (character >= u'0' && character <= u'9') return character;
  return character == u' ' ? VK_SPACE : 0;
}

}  // namespace hosts
