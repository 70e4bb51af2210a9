#include "xml/document.h"

#include <libxml/parserInternals.h>

#include <cstring>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "system/faults.h"
#include "system/files.h"
#include "system/outside.h"
#include "system/text.h"
#include "xml/addresses.h"
#include "xml/append.h"
#include "xml/bounds.h"
#include "xml/dom_document.h"
#include "xml/encoding.h"
#include "xml/namespaces.h"
#include "xml/node.h"
#include "xml/parse.h"
#include "xml/serialize.h"
#include "xml/walk.h"

namespace phone::xml {
namespace {

/// A path given as a variant; nothing when it is none.
std::optional<std::u16string_view> PathOf(const VARIANT& variant) noexcept {
  if (variant.vt != VT_BSTR || !variant.bstrVal) return std::nullopt;
  return std::u16string_view(variant.bstrVal, SysStringLen(variant.bstrVal));
}

TreeRef ParseFile(std::u16string_view path) {
  std::vector<std::byte> bytes;
  const DWORD error = ReadWholeFile(path, bytes);
  if (error == ERROR_NOT_ENOUGH_MEMORY) throw std::bad_alloc();
  DecodedText decoded;
  if (error != ERROR_SUCCESS || !Decode(bytes, decoded)) return nullptr;
  return Parse(decoded.text);
}

TreeRef ParseText(std::u16string_view text) {
  if (text.starts_with(u'\uFEFF')) text.remove_prefix(1);
  const std::optional<std::string> utf8 = ToUtf8(text);
  return utf8 ? Parse(*utf8) : nullptr;
}

/// Whether what is written of the document is read again before it replaces a file: where references stand that no node
/// holds, in an encoding with states of its own, or where parts of several files have become more than one may hold, it
/// would cost the user the file that it cannot be read.
bool NeedsProof(const TreeRef& tree, std::string_view encoding, std::span<const std::byte> bytes) {
  if (tree->document()->intSubset || !IsUtf8(encoding)) return true;
  // Neighbouring texts become one when they are read.
  if (bytes.size() > XML_MAX_TEXT_LENGTH || MayExceedBounds(AsNode(tree->document()))) return true;
  // What is written without an ampersand has no reference anywhere.
  return std::memchr(bytes.data(), '&', bytes.size()) != nullptr && HasReferenceInAddress(tree->document());
}

bool CanBeRead(const TreeRef& tree, std::string_view encoding, std::span<const std::byte> bytes) {
  if (bytes.size() > static_cast<std::size_t>(kLargestFile)) return false;
  if (!NeedsProof(tree, encoding, bytes)) return true;
  DecodedText decoded;
  return Decode(bytes, decoded) && Parse(decoded.text) != nullptr;
}

class Document final : public NodeObject<IXMLDOMDocument> {
 public:
  explicit Document(const TreeRef& tree) noexcept : NodeObject(tree, AsNode(tree->document())) {}

  /// Every load is complete when it returns, whatever is asked for.
  HRESULT put_async(VARIANT_BOOL) override { return S_OK; }

  HRESULT load(VARIANT source, VARIANT_BOOL* success) override {
    if (success) *success = VARIANT_FALSE;
    if (FaultDue(Operation::load)) return E_FAIL;
    const auto path = PathOf(source);
    if (!path) return E_INVALIDARG;
    return Guarded([&] { return Take([&] { return ParseFile(*path); }, success); });
  }

  HRESULT loadXML(BSTR xml, VARIANT_BOOL* success) override {
    if (success) *success = VARIANT_FALSE;
    if (FaultDue(Operation::loadXML)) return E_FAIL;
    if (!xml) return E_INVALIDARG;
    return Guarded([&] { return Take([&] { return ParseText({xml, SysStringLen(xml)}); }, success); });
  }

  HRESULT save(VARIANT destination) override {
    if (FaultDue(Operation::save)) return E_FAIL;
    const auto path = PathOf(destination);
    if (!path) return E_INVALIDARG;
    return Guarded([&] {
      if (!xmlDocGetRootElement(tree()->document())) return E_FAIL;
      const std::string_view encoding = EncodingOf(tree());
      const auto bytes = Encode(DocumentPieces(tree()), encoding);
      const bool writable = bytes && CanBeRead(tree(), encoding, *bytes);
      const DWORD error = writable ? WriteWholeFile(*path, *bytes, Writer::program) : ERROR_INVALID_DATA;
      ReportOutcome(Operation::save, *path, error);
      return writable ? HRESULT_FROM_WIN32(error) : E_FAIL;
    });
  }

 private:
  bool Is(REFIID iid) const noexcept override { return iid == IID_IXMLDOMDocument; }

  /// Becomes what `parse` gives, or empty: also when it throws.
  template <typename Load>
  HRESULT Take(Load&& parse, VARIANT_BOOL* success) {
    SetTree(NewDocumentTree());
    const TreeRef loaded = parse();
    if (!loaded) return S_FALSE;
    SetTree(loaded);
    if (success) *success = VARIANT_TRUE;
    return S_OK;
  }

  void SetTree(const TreeRef& tree) noexcept { Rebind(tree, AsNode(tree->document())); }
};

}  // namespace

IXMLDOMNode* CopyDocument(const TreeRef& tree, bool deep) {
  const TreeRef copy = NewDocumentTree();
  for (xmlNode* node = deep ? tree->document()->children : nullptr; node; node = node->next) {
    const TreeRef own = OwnSubtree(tree, CopyNode(node, /*deep=*/true));
    own->internal_subset = tree->internal_subset;
    if (!Append(copy, AsNode(copy->document()), own, own->root())) throw std::bad_alloc();
  }
  return new Document(copy);
}

}  // namespace phone::xml

namespace phone {

HRESULT CreateDomDocument(REFIID iid, void** object) noexcept {
  if (!object) return E_POINTER;
  *object = nullptr;
  return xml::Guarded([&] {
    auto* const document = new xml::Document(xml::NewDocumentTree());
    const HRESULT status = document->QueryInterface(iid, object);
    document->Release();
    return status;
  });
}

}  // namespace phone
