/// \file
/// The lists of a node's children and of an element's attributes.
#pragma once

#include <libxml/tree.h>

#include "msxml2.h"
#include "xml/tree.h"

namespace phone::xml {

/// Lists of `parent`, whose object each holds on to. They throw std::bad_alloc.
IXMLDOMNodeList* MakeChildList(IXMLDOMNode* parent);
IXMLDOMNamedNodeMap* MakeAttributeMap(IXMLDOMNode* element);

}  // namespace phone::xml
