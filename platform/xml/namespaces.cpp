#include "xml/namespaces.h"

#include <new>

#include "xml/doctype.h"
#include "xml/walk.h"

namespace phone::xml {
namespace {

/// Marks a declaration as implied. `context` is a field that libxml2 leaves to others for declarations of elements.
void SetImplied(xmlNs* declaration, xmlDoc* document) noexcept {
  declaration->context = document;
}

bool IsXmlPrefix(const xmlNs* name_space) noexcept {
  return View(name_space->prefix) == "xml";
}

bool IsEmpty(const xmlNs* name_space) noexcept {
  return !name_space || View(name_space->href).empty();
}

xmlNs* OwnDeclaration(const xmlNode* element, const xmlChar* prefix) noexcept {
  for (xmlNs* own = element->nsDef; own; own = own->next)
    if (xmlStrEqual(own->prefix, prefix)) return own;
  return nullptr;
}

/// Finds the nearest declaration of a prefix, an undeclaring one included.
xmlNs* InForce(xmlNode* place, const xmlChar* prefix) noexcept {
  for (xmlNode* node = place; node && node->type == XML_ELEMENT_NODE; node = node->parent)
    if (xmlNs* const own = OwnDeclaration(node, prefix)) return own;
  return nullptr;
}

bool IsDeclaredAbove(const xmlNode* root, const xmlNs* declaration) noexcept {
  for (const xmlNode* node = root->parent; node && node->type == XML_ELEMENT_NODE; node = node->parent)
    for (const xmlNs* own = node->nsDef; own; own = own->next)
      if (own == declaration) return true;
  return false;
}

/// Calls `visit` with the place of each name's namespace: of every element, and of every attribute.
template <typename Visit>
void ForEachName(xmlNode* root, Visit visit) {
  for (xmlNode* node = root; node; node = NextUnder(root, node)) {
    if (node->type != XML_ELEMENT_NODE) continue;
    visit(node->ns);
    for (xmlAttr* attribute = node->properties; attribute; attribute = attribute->next) visit(attribute->ns);
  }
}

xmlNs* AddImplied(xmlNode* element, const xmlChar* href, const xmlChar* prefix) {
  xmlNs* const added = xmlNewNs(element, href, prefix);
  if (!added) throw std::bad_alloc();
  SetImplied(added, element->doc);
  return added;
}

void Replace(xmlNode* root, const xmlNs* old, xmlNs* by) noexcept {
  ForEachName(root, [&](xmlNs*& used) {
    if (used == old) used = by;
  });
}

void DropRedundant(xmlNode* root) noexcept {
  for (xmlNs** link = &root->nsDef; *link;) {
    xmlNs* const declaration = *link;
    xmlNs* const outer = IsImplied(declaration) ? InForce(root->parent, declaration->prefix) : nullptr;
    const bool redundant = IsImplied(declaration) && (outer ? xmlStrEqual(outer->href, declaration->href) != 0
                                                            : !declaration->prefix && IsEmpty(declaration));
    if (!redundant) {
      link = &declaration->next;
      continue;
    }
    if (outer) Replace(root, declaration, outer);
    *link = declaration->next;
    xmlFreeNs(declaration);
  }
}

/// Whether an element without a namespace stands under `root` where no declaration of its own keeps a default one away.
bool HasBareName(xmlNode* root) noexcept {
  for (xmlNode* node = root; node;) {
    const bool element = node->type == XML_ELEMENT_NODE;
    const bool covered = element && OwnDeclaration(node, nullptr);
    // A prefix that nobody has declared stays a part of the name.
    if (element && !covered && !node->ns && View(node->name).find(':') == std::string_view::npos) return true;
    if (!covered && element && node->children) {
      node = node->children;
      continue;
    }
    while (node != root && !node->next) node = node->parent;
    node = node == root ? nullptr : node->next;
  }
  return false;
}

void RestoreXmlPrefix(xmlNode* root) {
  ForEachName(root, [root](xmlNs*& used) {
    // libxml2 keeps one declaration of it in each document, outside of the elements.
    if (!used || !IsXmlPrefix(used)) return;
    used = xmlSearchNs(root->doc, root, Chars("xml"));
    if (!used) throw std::bad_alloc();
  });
}

}  // namespace

bool IsImplied(const xmlNs* declaration) noexcept {
  return declaration->context != nullptr;
}

xmlNode* CopyNode(xmlNode* node, bool deep) {
  constexpr int kDeep = 1;
  constexpr int kAttributesOnly = 2;
  if (node->type == XML_DTD_NODE) return CopyDoctype(AsDoctype(node));
  xmlNode* const copy = xmlDocCopyNode(node, node->doc, deep ? kDeep : kAttributesOnly);
  if (!copy) throw std::bad_alloc();
  if (node->type != XML_ELEMENT_NODE) return copy;
  // The copy begins with its original's declarations, in order; what follows was added for names used in it.
  const xmlNs* original = node->nsDef;
  for (xmlNs* declaration = copy->nsDef; declaration; declaration = declaration->next) {
    if (!original || IsImplied(original)) SetImplied(declaration, copy->doc);
    if (original) original = original->next;
  }
  return copy;
}

void DeclareInherited(xmlNode* root) {
  if (root->type != XML_ELEMENT_NODE || !root->parent || root->parent->type != XML_ELEMENT_NODE) return;
  ForEachName(root, [root](xmlNs*& used) {
    if (!used || !IsDeclaredAbove(root, used)) return;
    xmlNs* const own = OwnDeclaration(root, used->prefix);
    used = own ? own : AddImplied(root, used->href, used->prefix);
  });
}

void SettleNamespaces(xmlNode* root) {
  if (root->type != XML_ELEMENT_NODE) return;
  RestoreXmlPrefix(root);
  DropRedundant(root);
  if (!IsEmpty(InForce(root->parent, nullptr)) && HasBareName(root)) AddImplied(root, Chars(""), nullptr);
}

bool DeclaresWhatItUses(xmlNode* root) noexcept {
  bool complete = true;
  if (root->parent)
    ForEachName(root, [&](const xmlNs* used) { complete = complete && !(used && IsDeclaredAbove(root, used)); });
  return complete;
}

}  // namespace phone::xml
