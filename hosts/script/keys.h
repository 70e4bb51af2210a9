/// \file
/// The keys of the phone by their names in scripts.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "phone.h"
#include "windows.h"

namespace script {

struct Key {
  UINT code = 0;         ///< virtual-key code; 0 for a character
  std::u16string typed;  ///< what it types
  phone::KeyModifiers modifiers = {};
};

/// A named key, one character, or `#CODE`; with `shift+` or `ctrl+` before it a named key, `#CODE` or, for the commands
/// of a field, a letter. Nothing for another name.
std::optional<Key> KeyByName(std::string_view name);
/// The name of a key that has a code.
std::string KeyName(UINT code, phone::KeyModifiers modifiers);

void Press(const Key& key);
void Release(const Key& key);

}  // namespace script
