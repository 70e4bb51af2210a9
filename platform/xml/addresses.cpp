#include "xml/addresses.h"

#include <libxml/entities.h>

#include <new>
#include <string>

#include "xml/walk.h"

namespace phone::xml {
namespace {

constexpr std::string_view kNeverRaw = "<\"\t\n\r";

std::string Escape(std::string_view text, std::string_view escaped) {
  std::string result;
  for (;;) {
    const std::size_t raw = text.find_first_of(escaped);
    result += text.substr(0, raw);
    if (raw == std::string_view::npos) return result;
    result += "&#" + std::to_string(text[raw]) + ';';
    text.remove_prefix(raw + 1);
  }
}

void Store(xmlNs* declaration, const std::string& address) {
  xmlChar* const copy = xmlStrndup(Chars(address.data()), static_cast<int>(address.size()));
  if (!copy) throw std::bad_alloc();
  xmlFree(const_cast<xmlChar*>(declaration->href));
  declaration->href = copy;
}

template <typename Visit>
void ForEachDeclaration(xmlNode* root, Visit visit) {
  for (xmlNode* node = root; node; node = NextUnder(root, node)) {
    if (node->type != XML_ELEMENT_NODE) continue;
    for (xmlNs* declaration = node->nsDef; declaration; declaration = declaration->next) visit(declaration);
  }
}

/// The parser leaves references to entities, and to the character that would begin one.
void StoreUnder(xmlNode* root) {
  ForEachDeclaration(root, [](xmlNs* declaration) {
    const std::string_view address = View(declaration->href);
    if (address.find_first_of(kNeverRaw) != std::string_view::npos) Store(declaration, Escape(address, kNeverRaw));
  });
}

}  // namespace

void SetAddress(xmlNs* declaration, std::string_view text) {
  Store(declaration, Escape(text, std::string(kNeverRaw) + '&'));
}

void StoreAddresses(xmlDoc* document) {
  StoreUnder(AsNode(document));
  if (!document->intSubset) return;
  for (const xmlNode* node = document->intSubset->children; node; node = node->next)
    for (xmlNode* part = node->type == XML_ENTITY_DECL ? node->children : nullptr; part; part = part->next)
      StoreUnder(part);
}

bool HasReferenceInAddress(xmlDoc* document) noexcept {
  bool found = false;
  ForEachDeclaration(AsNode(document), [&found](const xmlNs* declaration) {
    found = found || View(declaration->href).find('&') != std::string_view::npos;
  });
  return found;
}

}  // namespace phone::xml
