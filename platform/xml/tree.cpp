#include "xml/tree.h"

#include <libxml/dict.h>

#include <new>
#include <utility>

#include "xml/namespaces.h"
#include "xml/node.h"
#include "xml/walk.h"

namespace phone::xml {
namespace {

bool InDictionary(xmlDict* dictionary, const void* text) noexcept {
  return text && xmlDictOwns(dictionary, static_cast<const xmlChar*>(text)) == 1;
}

template <typename Char>
void OwnString(xmlDict* dictionary, Char*& text) {
  if (!InDictionary(dictionary, text)) return;
  xmlChar* const copy = xmlStrdup(text);
  if (!copy) throw std::bad_alloc();
  text = copy;
}

bool NameIsStatic(const xmlNode* node) noexcept {
  return node->type == XML_TEXT_NODE || node->type == XML_COMMENT_NODE || node->type == XML_CDATA_SECTION_NODE;
}

bool HasOwnContent(const xmlNode* node) noexcept {
  return NameIsStatic(node) || node->type == XML_PI_NODE;
}

void** CoreSlot(xmlNode* node) noexcept {
  return node->type == XML_NAMESPACE_DECL ? &AsNamespace(node)->_private : &node->_private;
}

}  // namespace

Tree::~Tree() {
  if (root_) xmlFreeNode(root_);
  if (!context_) xmlFreeDoc(document_);
}

TreeRef NewDocumentTree() {
  xmlDoc* const document = xmlNewDoc(nullptr);
  if (!document) throw std::bad_alloc();
  // Inside libxml2 every document is UTF-8; without the name its writer would escape what is not ASCII.
  document->encoding = xmlStrdup(Chars("UTF-8"));
  if (!document->encoding) {
    xmlFreeDoc(document);
    throw std::bad_alloc();
  }
  return OwnDocument(document);
}

TreeRef OwnDocument(xmlDoc* document) {
  try {
    return std::make_shared<Tree>(document);
  } catch (...) {
    xmlFreeDoc(document);
    throw;
  }
}

TreeRef OwnSubtree(const TreeRef& maker, xmlNode* root) {
  try {
    return std::make_shared<Tree>(Tree::Context(maker), root);
  } catch (...) {
    xmlFreeNode(root);
    throw;
  }
}

NodeCore* CoreOf(xmlNode* node) noexcept {
  return static_cast<NodeCore*>(*CoreSlot(node));
}

void SetCore(xmlNode* node, NodeCore* core) noexcept {
  *CoreSlot(node) = core;
}

void OwnStrings(xmlNode* root, xmlDoc* target) {
  xmlDict* const dictionary = root->doc->dict;
  if (!dictionary || dictionary == target->dict) return;
  if (!target->dict) {
    // The first nodes of a new document: it shares their dictionary, and their names need no copies.
    xmlDictReference(dictionary);
    target->dict = dictionary;
    return;
  }
  ForEachNode(root, [dictionary](xmlNode* node) {
    if (node->type == XML_NAMESPACE_DECL || node->type == XML_DTD_NODE) return;
    if (!NameIsStatic(node)) OwnString(dictionary, node->name);
    if (HasOwnContent(node)) OwnString(dictionary, node->content);
  });
}

void MoveTo(const TreeRef& target, xmlNode* root) noexcept {
  xmlDoc* const document = target->document();
  const bool foreign = root->doc != document;
  if (foreign && root->type == XML_DTD_NODE) xmlSetTreeDoc(root, document);
  ForEachNode(root, [&](xmlNode* node) {
    if (NodeCore* const core = CoreOf(node)) core->MoveTo(target);
    if (!foreign || node->type == XML_NAMESPACE_DECL || node->type == XML_DTD_NODE) return;
    node->doc = document;
    if (node->type == XML_ENTITY_REF_NODE) {
      // These lead into the old document's table; a reference works by its name.
      node->children = node->last = nullptr;
      node->content = nullptr;
    }
  });
}

void Discard(const TreeRef& tree, xmlNode* root) {
  bool held = false;
  ForEachNode(root, [&held](xmlNode* node) { held = held || CoreOf(node); });
  if (!held) {
    xmlUnlinkNode(root);
    return xmlFreeNode(root);
  }
  // What it was declared in may be gone before it is.
  DeclareInherited(root);
  const TreeRef own = std::make_shared<Tree>(Tree::Context(tree), root);
  xmlUnlinkNode(root);
  ForEachNode(root, [&own](xmlNode* node) {
    if (NodeCore* const core = CoreOf(node)) core->MoveTo(own);
  });
}

}  // namespace phone::xml
