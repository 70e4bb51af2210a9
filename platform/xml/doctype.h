/// \file
/// What a subtree takes from its document type: attributes by default, and what entity references stand for.
#pragma once

#include <libxml/tree.h>

#include <cstddef>

#include "xml/tree.h"

namespace phone::xml {

/// How much entities may grow: characters and nodes together. Beyond it a reference stands for nothing, or stays one.
inline constexpr std::size_t kEntityBudget = std::size_t{1} << 20;
/// How much of what entities stand for is given as the text of one node; every field that shows one holds far less.
inline constexpr std::size_t kEntityTextBudget = std::size_t{1} << 16;
/// How deep entities may refer to entities; libxml2's own bound.
inline constexpr int kEntityDepth = 40;

/// A copy without parent. Throws std::bad_alloc.
xmlNode* CopyDoctype(xmlDtd* doctype);

/// Walks the attributes that an element has by default: the one after `after` (null: the first).
xmlAttribute* NextDefault(const xmlNode* element, const xmlAttribute* after) noexcept;

/// Whether TakeAlong would change the subtree.
bool LeansOnDoctype(xmlNode* root, xmlDoc* target) noexcept;

/// Before a subtree of `tree` leaves its document: writes out what it takes from the document type and `target` (null:
/// none) does not declare alike. False when that grows beyond the budget. Throws std::bad_alloc.
bool TakeAlong(const TreeRef& tree, xmlNode* root, xmlDoc* target);

}  // namespace phone::xml
