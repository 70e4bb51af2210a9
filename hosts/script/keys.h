/// \file
/// The keys of the phone by their names in scripts.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "windows.h"

namespace script {

struct Key {
  UINT code = 0;         ///< virtual-key code; 0 for a character
  std::u16string typed;  ///< what it types
};

/// A named key, one character, or `#CODE`. Nothing for another name.
std::optional<Key> KeyByName(std::string_view name);
/// The name of a key that has a code.
std::string KeyName(UINT code);

void Press(const Key& key);
void Release(const Key& key);

}  // namespace script
