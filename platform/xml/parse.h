/// \file
/// From text to tree.
#pragma once

#include <string_view>

#include "xml/tree.h"

namespace phone::xml {

/// Parses a document, given as UTF-8 without a byte order mark; what encoding it declares does not matter. Null when it
/// is not well formed, or beyond the bounds on depth, length of texts, growth of entities and work. Nothing outside of
/// the text is ever read. The declaration becomes the first node. Throws std::bad_alloc.
TreeRef Parse(std::string_view text);

}  // namespace phone::xml
