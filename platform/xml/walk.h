/// \file
/// Walking libxml2's trees.
#pragma once

#include <libxml/tree.h>

#include <string_view>

namespace phone::xml {

// Attributes, namespace declarations and documents begin as a node does (libxml2 itself relies on it), so one pointer
// type stands for all of them; the type field tells them apart.
inline xmlNode* AsNode(xmlAttr* attribute) noexcept {
  return reinterpret_cast<xmlNode*>(attribute);
}
inline xmlNode* AsNode(xmlNs* declaration) noexcept {
  return reinterpret_cast<xmlNode*>(declaration);
}
inline xmlNode* AsNode(xmlDoc* document) noexcept {
  return reinterpret_cast<xmlNode*>(document);
}
inline xmlNode* AsNode(xmlDtd* doctype) noexcept {
  return reinterpret_cast<xmlNode*>(doctype);
}
inline xmlNode* AsNode(xmlEntity* entity) noexcept {
  return reinterpret_cast<xmlNode*>(entity);
}
inline xmlNode* AsNode(xmlAttribute* declaration) noexcept {
  return reinterpret_cast<xmlNode*>(declaration);
}
inline xmlAttr* AsAttribute(xmlNode* node) noexcept {
  return reinterpret_cast<xmlAttr*>(node);
}
inline xmlNs* AsNamespace(xmlNode* node) noexcept {
  return reinterpret_cast<xmlNs*>(node);
}
inline xmlDtd* AsDoctype(xmlNode* node) noexcept {
  return reinterpret_cast<xmlDtd*>(node);
}
inline xmlAttribute* AsDeclaration(xmlNode* node) noexcept {
  return reinterpret_cast<xmlAttribute*>(node);
}

inline std::string_view View(const xmlChar* text) noexcept {
  return text ? std::string_view(reinterpret_cast<const char*>(text)) : std::string_view();
}
inline const xmlChar* Chars(const char* text) noexcept {
  return reinterpret_cast<const xmlChar*>(text);
}

inline bool IsXmlDeclaration(const xmlNode* node) noexcept {
  return node->type == XML_PI_NODE && View(node->name) == "xml";
}

/// Whether the children pointer leads to children: that of an entity reference leads to the entity.
inline bool HasChildren(const xmlNode* node) noexcept {
  return node->type == XML_ELEMENT_NODE || node->type == XML_ATTRIBUTE_NODE || node->type == XML_DOCUMENT_NODE;
}

/// The next node under `root` in document order; null after the last.
inline xmlNode* NextUnder(xmlNode* root, xmlNode* node) noexcept {
  if (HasChildren(node) && node->children) return node->children;
  while (node != root && !node->next) node = node->parent;
  return node == root ? nullptr : node->next;
}

/// Calls `visit` for every node of a subtree, with namespace declarations, attributes and their contents. `visit` must
/// not change the structure.
template <typename Visit>
void ForEachNode(xmlNode* root, Visit visit) {
  for (xmlNode* node = root; node; node = NextUnder(root, node)) {
    visit(node);
    if (node->type != XML_ELEMENT_NODE) continue;
    for (xmlNs* declaration = node->nsDef; declaration; declaration = declaration->next) visit(AsNode(declaration));
    for (xmlAttr* attribute = node->properties; attribute; attribute = attribute->next) {
      visit(AsNode(attribute));
      for (xmlNode* part = attribute->children; part; part = part->next) visit(part);
    }
  }
}

/// Links a node without parent before `before`, or as the last child. Unlike xmlAddChild it never merges texts, so no
/// node that somebody holds is freed.
inline void LinkChild(xmlNode* parent, xmlNode* child, xmlNode* before = nullptr) noexcept {
  child->parent = parent;
  child->next = before;
  child->prev = before ? before->prev : parent->last;
  (child->prev ? child->prev->next : parent->children) = child;
  (before ? before->prev : parent->last) = child;
}

}  // namespace phone::xml
