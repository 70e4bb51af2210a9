/// \file
/// The text of nodes.
#pragma once

#include <libxml/tree.h>

#include <optional>
#include <string>
#include <string_view>

#include "xml/tree.h"

namespace phone::xml {

/// The text of a node where it lies in one piece, as it mostly does.
std::optional<std::string_view> TextInOnePiece(const xmlNode* node) noexcept;

/// Appends the text content of a node of the document: that of an element is all character data in it, entity
/// references resolved. What entities grow to is taken from the budget; false, and the text cut short, where it does
/// not suffice. Throws std::bad_alloc.
bool CollectText(const xmlDoc* document, xmlNode* node, std::size_t& budget, std::string& text);

/// Whether XML can hold the text (UTF-8).
bool IsXmlText(std::string_view text) noexcept;

/// Replaces all content of a node of `tree`. Throws std::bad_alloc.
void ReplaceContent(const TreeRef& tree, xmlNode* node, const std::string& text);

}  // namespace phone::xml
