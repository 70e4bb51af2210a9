#include "xml/text_content.h"

#include <libxml/chvalid.h>
#include <libxml/entities.h>

#include <algorithm>
#include <new>

#include "xml/doctype.h"
#include "xml/walk.h"

namespace phone::xml {
namespace {

bool IsText(const xmlNode* node) noexcept {
  return node->type == XML_TEXT_NODE || node->type == XML_CDATA_SECTION_NODE;
}

/// Appends the texts of a tree, those of its entities against a budget.
class Collector {
 public:
  Collector(std::size_t& budget, std::string& text) : text_(text), budget_(budget) {}

  bool Collect(xmlNode* root) {
    for (xmlNode* node = root; node; node = NextUnder(root, node)) {
      if (IsText(node) && !Append(View(node->content))) return false;
      if (node->type == XML_ENTITY_REF_NODE && !CollectEntity(xmlGetDocEntity(node->doc, node->name))) return false;
    }
    return true;
  }

  /// Text in which references stand, as the parser keeps it where it makes no nodes.
  bool CollectStored(const xmlDoc* document, const xmlChar* stored) {
    xmlNode* const parts = xmlStringGetNodeList(document, stored);
    const bool whole = CollectParts(parts);
    xmlFreeNodeList(parts);
    return whole;
  }

 private:
  bool Append(std::string_view part) {
    if (depth_ == 0 || Spend(part.size() + 1)) {
      text_ += part;
      return true;
    }
    std::size_t fitting = std::min(part.size(), budget_);
    while (fitting > 0 && fitting < part.size() && (static_cast<unsigned char>(part[fitting]) & 0xC0) == 0x80)
      --fitting;
    text_ += part.substr(0, fitting);
    budget_ = 0;
    return false;
  }

  bool Spend(std::size_t amount) noexcept {
    if (amount > budget_) return false;
    budget_ -= amount;
    return true;
  }

  /// An entity that is not declared, or lies outside, has no text.
  bool CollectEntity(xmlEntity* entity) {
    if (!entity) return true;
    if (entity->etype == XML_INTERNAL_PREDEFINED_ENTITY) return Append(View(entity->content));
    if (entity->etype != XML_INTERNAL_GENERAL_ENTITY) return true;
    if (depth_ == kEntityDepth || !Spend(1)) return false;
    ++depth_;
    const bool whole = entity->children ? CollectParts(entity->children) : CollectSource(entity);
    --depth_;
    return whole;
  }

  bool CollectParts(xmlNode* first) {
    for (xmlNode* part = first; part; part = part->next)
      if ((depth_ > 0 && !Spend(1)) || !Collect(part)) return false;
    return true;
  }

  /// An entity that nothing has referred to while parsing is known by its source alone.
  bool CollectSource(const xmlEntity* entity) {
    const std::string_view source = View(entity->content);
    if (source.find('<') != std::string_view::npos) return true;
    if (source.find('&') == std::string_view::npos) return Append(source);
    return Spend(source.size()) && CollectStored(entity->doc, entity->content);
  }

  std::string& text_;
  std::size_t& budget_;
  int depth_ = 0;
};

/// Text that is stored with references, unless it has none.
std::optional<std::string_view> WithoutReferences(const xmlChar* stored) noexcept {
  if (View(stored).find('&') != std::string_view::npos) return std::nullopt;
  return View(stored);
}

bool IsXmlCharacter(std::string_view text, std::size_t at) noexcept {
  const auto byte = static_cast<unsigned char>(text[at]);
  if (byte < 0x20) return byte == '\t' || byte == '\n' || byte == '\r';
  // U+FFFE and U+FFFF are the only characters above that XML leaves out.
  return !(byte == 0xEF && text.substr(at, 2) == "\xEF\xBF" && static_cast<unsigned char>(text[at + 2]) >= 0xBE);
}

void SetOwnContent(xmlNode* node, const std::string& text) {
  xmlChar* const copy = xmlStrndup(Chars(text.data()), static_cast<int>(text.size()));
  if (!copy) throw std::bad_alloc();
  xmlNodeSetContent(node, nullptr);
  node->content = copy;
}

}  // namespace

std::optional<std::string_view> TextInOnePiece(const xmlNode* node) noexcept {
  switch (node->type) {
    case XML_TEXT_NODE:
    case XML_CDATA_SECTION_NODE:
    case XML_COMMENT_NODE:
    case XML_PI_NODE: return View(node->content);
    case XML_NAMESPACE_DECL: return WithoutReferences(reinterpret_cast<const xmlNs*>(node)->href);
    case XML_ATTRIBUTE_DECL: return WithoutReferences(reinterpret_cast<const xmlAttribute*>(node)->defaultValue);
    case XML_ELEMENT_NODE:
    case XML_ATTRIBUTE_NODE:
      if (!node->children) return std::string_view();
      if (!node->children->next && IsText(node->children)) return View(node->children->content);
      return std::nullopt;
    default: return std::nullopt;
  }
}

bool CollectText(const xmlDoc* document, xmlNode* node, std::size_t& budget, std::string& text) {
  Collector collector(budget, text);
  if (node->type == XML_NAMESPACE_DECL) return collector.CollectStored(document, AsNamespace(node)->href);
  if (node->type == XML_ATTRIBUTE_DECL) return collector.CollectStored(document, AsDeclaration(node)->defaultValue);
  return collector.Collect(node);
}

bool IsXmlText(std::string_view text) noexcept {
  for (std::size_t at = 0; at < text.size(); ++at)
    if (!IsXmlCharacter(text, at)) return false;
  return true;
}

void ReplaceContent(const TreeRef& tree, xmlNode* node, const std::string& text) {
  if (!HasChildren(node)) return SetOwnContent(node, text);
  xmlNode* const content = text.empty() ? nullptr : xmlNewDocText(node->doc, Chars(text.c_str()));
  if (!content && !text.empty()) throw std::bad_alloc();
  try {
    while (node->children) Discard(tree, node->children);
  } catch (...) {
    xmlFreeNode(content);
    throw;
  }
  if (content) LinkChild(node, content);
}

}  // namespace phone::xml
