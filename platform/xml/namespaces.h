/// \file
/// Copies and moves of subtrees that keep every name in its namespace.
///
/// A subtree that leaves the scope of a declaration it uses gets that declaration itself, marked as implied; when it is
/// put where the same binding is in force, the implied one goes again, so that moving a node adds nothing to a file.
#pragma once

#include <libxml/tree.h>

namespace phone::xml {

bool IsImplied(const xmlNs* declaration) noexcept;

/// A copy without parent of an element or of any other kind of child, in the same document; shallow: an element with
/// its attributes only. Throws std::bad_alloc.
xmlNode* CopyNode(xmlNode* node, bool deep);

/// Before a subtree is unlinked: gives it the declarations above it that it uses. Throws std::bad_alloc.
void DeclareInherited(xmlNode* root);

/// After a subtree has got its place: drops implied declarations that are in force there anyway, and adds one where a
/// name without a namespace would fall into a default one. Throws std::bad_alloc.
void SettleNamespaces(xmlNode* root);

/// Whether a subtree can stand by itself: no name of it belongs to a declaration above it.
bool DeclaresWhatItUses(xmlNode* root) noexcept;

}  // namespace phone::xml
