#include "xml/bounds.h"

#include <libxml/SAX2.h>
#include <libxml/parser.h>

#include <algorithm>

#include "xml/walk.h"

namespace phone::xml {
namespace {

constexpr std::size_t kMaxParts = 4'096;                       // of one tag or declaration
constexpr std::size_t kMaxDeclarations = 1'024;                // of attributes
constexpr std::size_t kMaxComparisons = std::size_t{1} << 26;  // a fraction of a second
constexpr std::size_t kMaxExpanded = std::size_t{16} * 1'024;  // characters

// Far below what is refused, for estimates. libxml2's own bound on the depth of elements is 256.
constexpr std::size_t kUsualParts = kMaxParts / 4;
constexpr std::size_t kUsualComparisons = kMaxComparisons / 8;
constexpr std::size_t kUsualDepth = 200;

/// Stops the parse once a cost is beyond its bound. What follows an error is checked at the same cost, for nothing.
bool MayGoOn(xmlParserCtxt* context, std::size_t cost, std::size_t bound) noexcept {
  auto& costs = *static_cast<Costs*>(context->_private);
  costs.exceeded = costs.exceeded || cost > bound;
  if (!costs.exceeded && context->wellFormed) return true;
  context->wellFormed = 0;
  xmlStopParser(context);
  return false;
}

void OnAttributeDeclaration(void* user, const xmlChar* element, const xmlChar* name, int type, int kind,
                            const xmlChar* value, xmlEnumeration* alternatives) {
  auto* const context = static_cast<xmlParserCtxt*>(user);
  auto& costs = *static_cast<Costs*>(context->_private);
  if (MayGoOn(context, ++costs.declarations, kMaxDeclarations))
    return xmlSAX2AttributeDecl(context, element, name, type, kind, value, alternatives);
  xmlFreeEnumeration(alternatives);
}

void OnEntityDeclaration(void* user, const xmlChar* name, int type, const xmlChar* public_id, const xmlChar* system_id,
                         xmlChar* content) {
  auto* const context = static_cast<xmlParserCtxt*>(user);
  // What it stands for has references resolved that the text of the document does not show.
  if (MayGoOn(context, IsCrowded(View(content)) ? 1 : 0, 0))
    xmlSAX2EntityDecl(context, name, type, public_id, system_id, content);
}

xmlEntity* OnParameterEntity(void* user, const xmlChar* name) {
  auto* const context = static_cast<xmlParserCtxt*>(user);
  auto& costs = *static_cast<Costs*>(context->_private);
  xmlEntity* const entity = xmlSAX2GetParameterEntity(context, name);
  costs.expanded += entity ? static_cast<std::size_t>(entity->length) + 1 : 0;
  return MayGoOn(context, costs.expanded, kMaxExpanded) ? entity : nullptr;
}

void OnStartTag(void* user, const xmlChar* name, const xmlChar* prefix, const xmlChar* address, int declared,
                const xmlChar** declarations, int attributes, int defaulted, const xmlChar** values) {
  auto* const context = static_cast<xmlParserCtxt*>(user);
  auto& costs = *static_cast<Costs*>(context->_private);
  const auto names = static_cast<std::size_t>(declared + attributes + defaulted);
  const auto scope = static_cast<std::size_t>(context->nsNr > 0 ? context->nsNr + context->nodeNr : 0);
  costs.comparisons += names * names + (names + 1) * scope;
  if (MayGoOn(context, costs.comparisons, kMaxComparisons))
    xmlSAX2StartElementNs(context, name, prefix, address, declared, declarations, attributes, defaulted, values);
}

/// Counts the quoted values, and the bars outside of them, up to the end of a tag, which ends before the next "<".
std::size_t CountParts(std::string_view tag) noexcept {
  constexpr char kNone = 0;
  if (tag.starts_with("!-") || tag.starts_with("![") || tag.starts_with('?')) return 0;
  std::size_t parts = 0;
  char quote = kNone;
  for (const char c : tag) {
    if (c == '>' && quote == kNone) break;
    if (quote != kNone) {
      if (c == quote) quote = kNone;
    } else if (c == '"' || c == '\'') {
      quote = c;
      ++parts;
    } else if (c == '|') {
      ++parts;
    }
  }
  return parts;
}

}  // namespace

bool IsCrowded(std::string_view text) noexcept {
  // Tags inside of comments count as well: in an entity, what looks like the start of a comment is none.
  for (std::size_t at = text.find('<'); at != text.npos;) {
    const std::size_t next = text.find('<', at + 1);
    const std::string_view tag = text.substr(at + 1, next - at - 1);
    // Nearly every tag is too short to hold that many.
    if (tag.size() > kMaxParts && CountParts(tag) > kMaxParts) return true;
    at = next;
  }
  return false;
}

bool MayExceedBounds(xmlNode* root) noexcept {
  std::size_t depth = 0, deepest = 0, most = 0, names = 0, squares = 0, declared = 0;
  for (xmlNode* node = root; node;) {
    if (node->type == XML_ELEMENT_NODE) {
      std::size_t here = 1;
      for (const xmlAttr* attribute = node->properties; attribute; attribute = attribute->next) ++here;
      for (const xmlNs* declaration = node->nsDef; declaration; declaration = declaration->next) ++here, ++declared;
      most = std::max(most, here);
      names += here;
      squares += here * here;
    }
    if (HasChildren(node) && node->children) {
      node = node->children;
      deepest = std::max(deepest, ++depth);
      continue;
    }
    for (; node != root && !node->next; --depth) node = node->parent;
    node = node == root ? nullptr : node->next;
  }
  const std::size_t scope = declared > 0 ? declared + deepest : 0;
  return deepest > kUsualDepth || most > kUsualParts || squares + names * scope > kUsualComparisons;
}

void BoundCosts(xmlSAXHandler& handler) noexcept {
  handler.attributeDecl = OnAttributeDeclaration;
  handler.entityDecl = OnEntityDeclaration;
  handler.getParameterEntity = OnParameterEntity;
  handler.startElementNs = OnStartTag;
}

}  // namespace phone::xml
