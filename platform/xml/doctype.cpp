#include "xml/doctype.h"

#include <libxml/entities.h>
#include <libxml/valid.h>

#include <new>
#include <string>

#include "xml/addresses.h"
#include "xml/namespaces.h"
#include "xml/text_content.h"
#include "xml/walk.h"

namespace phone::xml {
namespace {

bool HasDoctype(const xmlDoc* document) noexcept {
  return document && document->intSubset;
}

const xmlElement* Description(const xmlDoc* document, const xmlNode* element) noexcept {
  if (!HasDoctype(document)) return nullptr;
  return xmlGetDtdQElementDesc(document->intSubset, element->name, element->ns ? element->ns->prefix : nullptr);
}

bool IsWritten(const xmlNode* element, const xmlAttribute* declaration) noexcept {
  for (const xmlAttr* attribute = element->properties; attribute; attribute = attribute->next)
    if (xmlStrEqual(attribute->name, declaration->name) &&
        xmlStrEqual(attribute->ns ? attribute->ns->prefix : nullptr, declaration->prefix))
      return true;
  return false;
}

/// The parser has made declarations of default namespaces into written ones.
bool IsNamespaceDeclaration(const xmlAttribute* declaration) noexcept {
  return View(declaration->prefix) == "xmlns" || (!declaration->prefix && View(declaration->name) == "xmlns");
}

bool HasAlike(const xmlDoc* target, const xmlAttribute* declaration) noexcept {
  if (!HasDoctype(target)) return false;
  const xmlAttribute* const other =
      xmlGetDtdQAttrDesc(target->intSubset, declaration->elem, declaration->name, declaration->prefix);
  return other && xmlStrEqual(other->defaultValue, declaration->defaultValue);
}

/// Whether both name the same declarations outside.
bool LeanOnTheSame(const xmlDoc* a, const xmlDoc* b) noexcept {
  return HasDoctype(a) && HasDoctype(b) && xmlStrEqual(a->intSubset->ExternalID, b->intSubset->ExternalID) &&
         xmlStrEqual(a->intSubset->SystemID, b->intSubset->SystemID);
}

/// Whether a reference would lose its meaning in `target`. One to an entity that is declared outside, if anywhere,
/// means nothing here, and can be read only where the same is named.
bool IsLost(const xmlNode* reference, xmlDoc* target) noexcept {
  const xmlEntity* const entity = xmlGetDocEntity(reference->doc, reference->name);
  if (!entity) return !LeanOnTheSame(reference->doc, target);
  if (entity->etype == XML_INTERNAL_PREDEFINED_ENTITY) return false;
  const xmlEntity* const other = target ? xmlGetDocEntity(target, reference->name) : nullptr;
  return !other || other->etype != entity->etype || !xmlStrEqual(other->content, entity->content) ||
         !xmlStrEqual(other->SystemID, entity->SystemID);
}

bool WriteDefault(xmlNode* element, xmlAttribute* declaration, std::size_t& budget) {
  xmlNs* const name_space = declaration->prefix ? xmlSearchNs(element->doc, element, declaration->prefix) : nullptr;
  if (declaration->prefix && !name_space) return true;
  std::string text;
  if (!CollectText(element->doc, AsNode(declaration), budget, text)) return false;
  if (!xmlNewNsProp(element, name_space, declaration->name, Chars(text.c_str()))) throw std::bad_alloc();
  return true;
}

bool WriteDefaults(xmlNode* element, xmlDoc* target, std::size_t& budget) {
  for (xmlAttribute* declaration = NextDefault(element, nullptr); declaration;) {
    xmlAttribute* const next = NextDefault(element, declaration);
    if (!HasAlike(target, declaration) && !WriteDefault(element, declaration, budget)) return false;
    declaration = next;
  }
  return true;
}

bool WriteAttributeText(const TreeRef& tree, xmlAttr* attribute, xmlDoc* target, std::size_t& budget) {
  bool lost = false;
  for (const xmlNode* part = attribute->children; part; part = part->next)
    lost = lost || (part->type == XML_ENTITY_REF_NODE && IsLost(part, target));
  if (!lost) return true;
  std::string text;
  if (!CollectText(attribute->doc, AsNode(attribute), budget, text)) return false;
  ReplaceContent(tree, AsNode(attribute), text);
  return true;
}

/// The parser keeps references in the address of a namespace, where it is written as it stands.
bool HasEntity(const xmlNs* declaration) noexcept {
  const std::string_view href = View(declaration->href);
  for (std::size_t at = href.find('&'); at != std::string_view::npos; at = href.find('&', at + 1))
    if (!href.substr(at).starts_with("&#")) return true;
  return false;
}

bool WriteAddress(xmlNs* declaration, const xmlDoc* document, std::size_t& budget) {
  if (!HasEntity(declaration)) return true;
  std::string text;
  if (!CollectText(document, AsNode(declaration), budget, text)) return false;
  SetAddress(declaration, text);
  return true;
}

/// Puts copies of an entity's content, if there is any, in the place of a reference. Gives the node to go on with.
xmlNode* WriteOut(const TreeRef& tree, xmlNode* root, xmlNode* reference, const xmlEntity* entity) {
  xmlNode* next = nullptr;
  for (xmlNode* part = entity ? entity->children : nullptr; part; part = part->next) {
    xmlNode* const copy = CopyNode(part, /*deep=*/true);
    LinkChild(reference->parent, copy, reference);
    if (!next) next = copy;
  }
  if (!next) next = NextUnder(root, reference);
  Discard(tree, reference);
  return next;
}

std::size_t SizeOf(const xmlEntity* entity) noexcept {
  return 1 + (entity ? static_cast<std::size_t>(entity->length) : 0);
}

}  // namespace

xmlNode* CopyDoctype(xmlDtd* doctype) {
  xmlDtd* const copy = xmlCopyDtd(doctype);
  if (!copy) throw std::bad_alloc();
  xmlSetTreeDoc(AsNode(copy), doctype->doc);
  // The copied descriptions of elements have lost their attributes.
  for (xmlNode* child = copy->last; child; child = child->prev) {
    if (child->type != XML_ATTRIBUTE_DECL) continue;
    xmlAttribute* const declaration = AsDeclaration(child);
    xmlElement* const description = xmlGetDtdElementDesc(copy, declaration->elem);
    if (!description) continue;
    declaration->nexth = description->attributes;
    description->attributes = declaration;
  }
  return AsNode(copy);
}

xmlAttribute* NextDefault(const xmlNode* element, const xmlAttribute* after) noexcept {
  const xmlElement* const description = after ? nullptr : Description(element->doc, element);
  xmlAttribute* declaration = after ? after->nexth : description ? description->attributes : nullptr;
  while (declaration &&
         (!declaration->defaultValue || IsNamespaceDeclaration(declaration) || IsWritten(element, declaration)))
    declaration = declaration->nexth;
  return declaration;
}

bool LeansOnDoctype(xmlNode* root, xmlDoc* target) noexcept {
  if (!HasDoctype(root->doc) || root->doc == target) return false;
  bool leans = false;
  ForEachNode(root, [&](xmlNode* node) {
    if (node->type == XML_ENTITY_REF_NODE) leans = leans || IsLost(node, target);
    if (node->type == XML_NAMESPACE_DECL) leans = leans || HasEntity(AsNamespace(node));
    if (node->type != XML_ELEMENT_NODE) return;
    for (const xmlAttribute* declaration = NextDefault(node, nullptr); declaration && !leans;
         declaration = NextDefault(node, declaration))
      leans = !HasAlike(target, declaration);
  });
  return leans;
}

bool TakeAlong(const TreeRef& tree, xmlNode* root, xmlDoc* target) {
  if (root->type == XML_ENTITY_REF_NODE) return !IsLost(root, target);
  std::size_t budget = kEntityBudget;
  for (xmlNode* node = root; node;) {
    if (node->type == XML_ENTITY_REF_NODE && IsLost(node, target)) {
      const xmlEntity* const entity = xmlGetDocEntity(node->doc, node->name);
      if (SizeOf(entity) > budget) return false;
      budget -= SizeOf(entity);
      node = WriteOut(tree, root, node, entity);
      continue;
    }
    if (node->type == XML_ELEMENT_NODE) {
      if (!WriteDefaults(node, target, budget)) return false;
      for (xmlNs* declaration = node->nsDef; declaration; declaration = declaration->next)
        if (!WriteAddress(declaration, root->doc, budget)) return false;
      for (xmlAttr* attribute = node->properties; attribute; attribute = attribute->next)
        if (!WriteAttributeText(tree, attribute, target, budget)) return false;
    }
    node = NextUnder(root, node);
  }
  return true;
}

}  // namespace phone::xml
