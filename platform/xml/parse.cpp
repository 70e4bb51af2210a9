#include "xml/parse.h"

#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/valid.h>

#include <limits>
#include <memory>
#include <new>
#include <string>

#include "xml/addresses.h"
#include "xml/bounds.h"
#include "xml/encoding.h"
#include "xml/walk.h"

namespace phone::xml {
namespace {

// With recovery the calls go on after an error, so that the first of them can stop the parse.
constexpr int kOptions =
    XML_PARSE_RECOVER | XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_IGNORE_ENC;

struct FreeContext {
  void operator()(xmlParserCtxt* context) const noexcept { xmlFreeParserCtxt(context); }
};
using Context = std::unique_ptr<xmlParserCtxt, FreeContext>;

/// What a parse keeps: its costs, and where the internal subset stands in the text.
struct Progress : Costs {
  std::size_t subset_begin = 0;
  std::size_t subset_end = 0;
  bool no_memory = false;
};

Progress& ProgressOf(const xmlParserCtxt* context) noexcept {
  return *static_cast<Progress*>(static_cast<Costs*>(context->_private));
}

std::size_t Position(const xmlParserCtxt* context) noexcept {
  const xmlParserInput* const input = context->input;
  return input->consumed + static_cast<std::size_t>(input->cur - input->base);
}

void OnDoctypeBegin(void* user, const xmlChar* name, const xmlChar* public_id, const xmlChar* system_id) {
  auto* const context = static_cast<xmlParserCtxt*>(user);
  ProgressOf(context).subset_begin = Position(context);
  xmlSAX2InternalSubset(context, name, public_id, system_id);
}

/// The parser offers to load the external subset here, which is not done; the declaration is complete.
void OnDoctypeEnd(void* user, const xmlChar*, const xmlChar*, const xmlChar*) {
  auto* const context = static_cast<xmlParserCtxt*>(user);
  ProgressOf(context).subset_end = Position(context);
}

/// Each section is a node: the default would join neighbours.
void OnCdata(void* user, const xmlChar* value, int length) {
  auto* const context = static_cast<xmlParserCtxt*>(user);
  xmlNode* const section = xmlNewCDataBlock(context->myDoc, value, length);
  if (section && xmlAddChild(context->node, section)) return;
  xmlFreeNode(section);
  ProgressOf(context).no_memory = true;
  context->wellFormed = 0;
  xmlStopParser(context);
}

/// In a value, a reference that cannot be resolved would be lost: libxml2 keeps none there, and a node of it nearby.
void OnReference(void* user, const xmlChar* name) {
  auto* const context = static_cast<xmlParserCtxt*>(user);
  if (context->instate != XML_PARSER_ATTRIBUTE_VALUE) return xmlSAX2Reference(context, name);
  context->wellFormed = 0;
  xmlStopParser(context);
}

xmlParserInput* RefuseEntity(void*, const xmlChar*, const xmlChar*) {
  return nullptr;
}

void KeepSilent(void*, xmlError*) {}

Context MakeContext(Progress& progress) {
  Context context(xmlNewParserCtxt());
  if (!context) throw std::bad_alloc();
  context->_private = static_cast<Costs*>(&progress);
  BoundCosts(*context->sax);
  context->sax->internalSubset = OnDoctypeBegin;
  context->sax->externalSubset = OnDoctypeEnd;
  context->sax->cdataBlock = OnCdata;
  context->sax->reference = OnReference;
  context->sax->resolveEntity = RefuseEntity;
  context->sax->serror = KeepSilent;
  return context;
}

/// The names under which nodes can be looked up are not used here, and would have to follow every move of a node.
void DropTables(xmlDoc* document) noexcept {
  xmlFreeIDTable(static_cast<xmlIDTable*>(document->ids));
  xmlFreeRefTable(static_cast<xmlRefTable*>(document->refs));
  document->ids = document->refs = nullptr;
}

void NameEncoding(xmlDoc* document) {
  if (document->encoding) xmlFree(const_cast<xmlChar*>(document->encoding));
  document->encoding = xmlStrdup(Chars("UTF-8"));
  if (!document->encoding) throw std::bad_alloc();
}

void PutDeclarationFirst(xmlDoc* document, std::string_view declaration) {
  xmlNode* const node = xmlNewDocPI(document, Chars("xml"), Chars(std::string(declaration).c_str()));
  if (!node) throw std::bad_alloc();
  LinkChild(AsNode(document), node, document->children);
}

std::string SubsetText(std::string_view text, const Progress& progress) {
  if (progress.subset_begin >= progress.subset_end || progress.subset_end > text.size()) return {};
  const std::string_view whole = text.substr(progress.subset_begin, progress.subset_end - progress.subset_begin);
  const std::size_t last = whole.rfind(']');
  if (whole.front() != '[' || last == std::string_view::npos) return {};
  return std::string(whole.substr(0, last + 1));
}

}  // namespace

TreeRef Parse(std::string_view text) {
  if (text.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) return nullptr;
  // libxml2 takes a zero for the end of the text, and a second mark for a blank.
  if (text.find('\0') != text.npos || text.starts_with("\xEF\xBB\xBF") || IsCrowded(text)) return nullptr;
  Progress progress;
  const Context context = MakeContext(progress);
  xmlDoc* const document =
      xmlCtxtReadMemory(context.get(), text.data(), static_cast<int>(text.size()), nullptr, nullptr, kOptions);
  const bool no_memory = progress.no_memory || context->errNo == XML_ERR_NO_MEMORY;
  TreeRef tree = document ? OwnDocument(document) : nullptr;
  if (no_memory) throw std::bad_alloc();
  if (!tree || !context->wellFormed || progress.exceeded) return nullptr;
  DropTables(document);
  StoreAddresses(document);
  NameEncoding(document);
  tree->internal_subset = SubsetText(text, progress);
  if (const auto declaration = FindDeclaration(text)) PutDeclarationFirst(document, *declaration);
  return tree;
}

}  // namespace phone::xml
