#include "xml/append.h"

#include "xml/doctype.h"
#include "xml/namespaces.h"
#include "xml/walk.h"

namespace phone::xml {
namespace {

bool HasChildOfType(const xmlNode* parent, xmlElementType type, const xmlNode* but) noexcept {
  for (const xmlNode* child = parent->children; child; child = child->next)
    if (child->type == type && child != but) return true;
  return false;
}

bool MayStandAtTop(const xmlNode* document, const xmlNode* child) noexcept {
  switch (child->type) {
    case XML_ELEMENT_NODE: return !HasChildOfType(document, XML_ELEMENT_NODE, child);
    case XML_DTD_NODE:
      // One that is in a document already stays with what that document declares.
      return !child->parent && !HasChildOfType(document, XML_DTD_NODE, child) &&
             !HasChildOfType(document, XML_ELEMENT_NODE, child);
    case XML_PI_NODE: return !IsXmlDeclaration(child) || !document->children;
    case XML_COMMENT_NODE: return true;
    default: return false;
  }
}

bool MayStandInElement(const xmlNode* element, const xmlNode* child) noexcept {
  for (const xmlNode* node = element; node; node = node->parent)
    if (node == child) return false;
  switch (child->type) {
    case XML_ELEMENT_NODE:
    case XML_TEXT_NODE:
    case XML_CDATA_SECTION_NODE:
    case XML_ENTITY_REF_NODE:
    case XML_COMMENT_NODE: return true;
    case XML_PI_NODE: return !IsXmlDeclaration(child);
    default: return false;
  }
}

bool MayStand(const xmlNode* parent, const xmlNode* child) noexcept {
  if (child->parent && !HasChildren(child->parent)) return false;  // what a document type holds stays in it
  if (parent->type == XML_DOCUMENT_NODE) return MayStandAtTop(parent, child);
  return parent->type == XML_ELEMENT_NODE && MayStandInElement(parent, child);
}

}  // namespace

bool Append(const TreeRef& target, xmlNode* parent, const TreeRef& child_tree, xmlNode* child) {
  if (!MayStand(parent, child)) return false;
  // The child's own tree may be let go with its last object, while its strings still lie there.
  const TreeRef source = child_tree;
  xmlDoc* const document = target->document();
  ++source->changes;
  ++target->changes;
  DeclareInherited(child);
  if (LeansOnDoctype(child, document) && !TakeAlong(source, child, document)) return false;
  OwnStrings(child, document);

  source->Release(child);
  xmlUnlinkNode(child);
  LinkChild(parent, child);
  MoveTo(target, child);
  if (child->type == XML_DTD_NODE) {
    document->intSubset = AsDoctype(child);
    target->internal_subset = source->internal_subset;
  }
  SettleNamespaces(child);
  return true;
}

}  // namespace phone::xml
