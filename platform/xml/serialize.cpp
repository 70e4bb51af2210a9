#include "xml/serialize.h"

#include <libxml/xmlsave.h>

#include <memory>
#include <new>

#include "xml/doctype.h"
#include "xml/namespaces.h"
#include "xml/walk.h"

namespace phone::xml {
namespace {

constexpr int kSaveOptions = XML_SAVE_NO_DECL | XML_SAVE_AS_XML | XML_SAVE_NO_XHTML;

int AppendChunk(void* text, const char* chunk, int length) noexcept {
  try {
    static_cast<std::string*>(text)->append(chunk, static_cast<std::size_t>(length));
    return length;
  } catch (...) {
    return -1;
  }
}

void AppendNode(xmlNode* node, std::string& text) {
  xmlSaveCtxt* const context = xmlSaveToIO(AppendChunk, nullptr, &text, nullptr, kSaveOptions);
  if (!context) throw std::bad_alloc();
  // Without an encoding the writer would escape what is not ASCII.
  xmlSaveSetEscape(context, nullptr);
  xmlSaveTree(context, node);
  if (xmlSaveClose(context) < 0) throw std::bad_alloc();
}

void AppendQuoted(std::string_view identifier, std::string& text) {
  const char quote = identifier.find('"') == std::string_view::npos ? '"' : '\'';
  ((text += quote) += identifier) += quote;
}

void AppendDoctype(const TreeRef& tree, const xmlDtd* doctype, std::string& text) {
  (text += "<!DOCTYPE ") += View(doctype->name);
  if (doctype->ExternalID) {
    text += " PUBLIC ";
    AppendQuoted(View(doctype->ExternalID), text);
    text += ' ';
  } else if (doctype->SystemID) {
    text += " SYSTEM ";
  }
  if (doctype->SystemID) AppendQuoted(View(doctype->SystemID), text);
  if (!tree->internal_subset.empty()) (text += ' ') += tree->internal_subset;
  text += '>';
}

struct FreeNode {
  void operator()(xmlNode* node) const noexcept { xmlFreeNode(node); }
};

/// The text of a node that leans on what stands around it: of a copy that does not.
void AppendAlone(const TreeRef& tree, xmlNode* node, std::string& text) {
  const std::unique_ptr<xmlNode, FreeNode> copy(CopyNode(node, /*deep=*/true));
  // An entity that grows beyond its bound stays a reference.
  static_cast<void>(TakeAlong(tree, copy.get(), nullptr));
  AppendNode(copy.get(), text);
}

void Append(const TreeRef& tree, xmlNode* node, std::string& text) {
  if (node->type == XML_DTD_NODE) return AppendDoctype(tree, AsDoctype(node), text);
  AppendNode(node, text);
}

}  // namespace

std::string NodeText(const TreeRef& tree, xmlNode* node) {
  std::string text;
  if (node->type == XML_DOCUMENT_NODE) {
    for (const Piece& piece : DocumentPieces(tree)) text += piece.text;
  } else if (node->type == XML_ELEMENT_NODE && (!DeclaresWhatItUses(node) || LeansOnDoctype(node, nullptr))) {
    AppendAlone(tree, node, text);
  } else {
    Append(tree, node, text);
  }
  return text;
}

std::vector<Piece> DocumentPieces(const TreeRef& tree) {
  std::vector<Piece> pieces;
  for (xmlNode* node = tree->document()->children; node; node = node->next) {
    Piece& piece = pieces.emplace_back(Piece{{}, node->type != XML_ELEMENT_NODE});
    Append(tree, node, piece.text);
    piece.text += '\n';
  }
  return pieces;
}

std::string_view EncodingOf(const TreeRef& tree) noexcept {
  const xmlNode* const first = tree->document()->children;
  const bool declared = first && IsXmlDeclaration(first);
  return declared ? DeclaredEncoding(View(first->content)) : std::string_view();
}

}  // namespace phone::xml
