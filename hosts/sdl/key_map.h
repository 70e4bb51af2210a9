/// \file
/// What the keyboard and the mouse do: the one text of it, for the overlay, --help and the documentation.
#pragma once

#include <span>
#include <string>

namespace sdl {

struct KeyMapRow {
  const char* keys;    ///< UTF-8
  const char* effect;  ///< UTF-8
};

std::span<const KeyMapRow> KeyMap();

/// The rows as lines of text, each indented by two blanks, the effects below each other.
std::string KeyMapText();

}  // namespace sdl
