/// \file
/// Bounds on the work that a document makes for the parser. libxml2 compares the attributes of an element pairwise,
/// those by default included, and looks up namespaces in a list: small files could keep it busy for minutes.
#pragma once

#include <libxml/tree.h>

#include <cstddef>
#include <string_view>

namespace phone::xml {

/// What a parse has cost so far; the _private of its contexts leads to it.
struct Costs {
  std::size_t declarations = 0;  ///< of attributes
  std::size_t comparisons = 0;   ///< of names in start tags
  std::size_t expanded = 0;      ///< length of the parameter entities that were declared and referred to
  bool exceeded = false;
};

/// Whether a tag has more values, or a declaration more alternatives, than any document needs. Linear in the text.
bool IsCrowded(std::string_view text) noexcept;

/// Whether a tree might be too deep, or cost too much, to be read again once it is written. Linear in its nodes.
bool MayExceedBounds(xmlNode* root) noexcept;

/// Has the handler stop its parse when it costs too much, and at the first tag after an error.
void BoundCosts(xmlSAXHandler& handler) noexcept;

}  // namespace phone::xml
