/// \file
/// From tree to text.
#pragma once

#include <string>
#include <vector>

#include "xml/encoding.h"
#include "xml/tree.h"

namespace phone::xml {

/// The XML text of a node and its descendants. Throws std::bad_alloc.
std::string NodeText(const TreeRef& tree, xmlNode* node);

/// The whole document, each top-level node on a line of its own. Throws std::bad_alloc.
std::vector<Piece> DocumentPieces(const TreeRef& tree);

/// The encoding that the document's declaration names; empty when it has none or names none.
std::string_view EncodingOf(const TreeRef& tree) noexcept;

}  // namespace phone::xml
