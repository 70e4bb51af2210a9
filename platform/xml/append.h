/// \file
/// Putting a node under another one, of whatever document.
#pragma once

#include "xml/tree.h"

namespace phone::xml {

/// Makes `child` the last child of `parent`, taking it from where it was; its objects follow it. False, and nothing
/// moved, where such a child cannot stand: a second root element or document type, a text beside the root, a node under
/// itself. Throws std::bad_alloc.
bool Append(const TreeRef& target, xmlNode* parent, const TreeRef& child_tree, xmlNode* child);

}  // namespace phone::xml
