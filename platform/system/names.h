/// \file
/// Names and paths of the phone's file system, before this machine's disk is asked.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "windows.h"

namespace phone {

/// What a temporary file's name begins with. Such names are never listed and cannot be opened.
inline constexpr std::string_view kTemporaryPrefix = ".~writing-";

/// True for what the phone's file system takes as a name: no separator, none of `/ : * ? " < > |`, no control
/// character, not "." or "..", not a temporary file's, and short enough for a path.
bool IsFileName(std::u16string_view name);

struct PhonePath {
  std::vector<std::u16string_view> elements;  ///< from the root; none for the root itself
  bool ends_in_separator = false;
};

/// Takes a path apart; every element is a valid name. The elements are parts of `path`.
DWORD ParsePath(std::u16string_view path, PhonePath& parsed);

/// The same for the pattern of a search: `*` and `?` may stand in the last element, which is given separately.
DWORD ParsePattern(std::u16string_view path, PhonePath& folder, std::u16string_view& pattern);

/// True when a name matches a pattern; both case-folded. `*` stands for any text, `?` for one code unit.
bool MatchesPattern(std::u16string_view name, std::u16string_view pattern);

}  // namespace phone
