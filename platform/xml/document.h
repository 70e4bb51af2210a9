/// \file
/// The document object.
#pragma once

#include "msxml2.h"
#include "xml/tree.h"

namespace phone::xml {

/// A document of its own with copies of all top-level nodes, or empty. Throws std::bad_alloc.
IXMLDOMNode* CopyDocument(const TreeRef& tree, bool deep);

}  // namespace phone::xml
