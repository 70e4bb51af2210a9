// The document object model, used in ways the program does not use it. The first line of an input is what is done, two
// characters a step: a letter for the call, and a digit or letter for the node it is made on, of those held so far. The
// rest is the document, once as a file and once as text.

#include <msxml2.h>

#include <vector>

#include "base/com_owner.h"
#include "fuzz/fuzzing.h"
#include "system/text.h"
#include "xml/dom_document.h"

namespace {

using fuzzing::Phone;
using fuzzing::Require;

constexpr std::size_t kMostNodes = 24;
constexpr std::size_t kMostSteps = 40;
constexpr std::size_t kLongestText = 1 << 16;  // code units; copies of copies grow fast

/// The nodes at hand, and the calls on them. Every call may refuse; none may crash, and what it gives must be usable.
class Hands {
 public:
  explicit Hands(ComPtr<IXMLDOMDocument>& document) {
    document->AddRef();
    *nodes_.emplace_back().Receive() = document.get();
  }

  void Do(char call, char at) {
    IXMLDOMNode* const node = Pick(at);
    switch (call) {
      case 'c': return Children(node, at);
      case 'm': return Attributes(node, at);
      case 'f': return Keep([&](IXMLDOMNode** found) { return node->get_firstChild(found); });
      case 'd': return Keep([&](IXMLDOMNode** copy) { return node->cloneNode(VARIANT_TRUE, copy); });
      case 's': return Keep([&](IXMLDOMNode** copy) { return node->cloneNode(VARIANT_FALSE, copy); });
      case 'a': return Append(node);
      case 't': return Text(node);
      case 'n': return Name(node);
      case 'x': return Xml(node);
      case 'r': return Release(at);
      default: return;
    }
  }

 private:
  std::size_t Place(char at) const { return static_cast<unsigned char>(at) % nodes_.size(); }
  IXMLDOMNode* Pick(char at) { return nodes_[Place(at)].get(); }

  template <typename Call>
  void Keep(Call call) {
    ComPtr<IXMLDOMNode> node;
    const HRESULT status = call(node.Receive());
    if (status == S_OK) Require(static_cast<bool>(node), "a success gives a node");
    if (node && nodes_.size() < kMostNodes) nodes_.push_back(std::move(node));
  }

  template <typename List>
  void KeepItem(List* list, char at) {
    LONG length = 0;
    Require(list->get_length(&length) == S_OK && length >= 0, "a list has a length");
    if (length > 0) Keep([&](IXMLDOMNode** item) { return list->get_item(at % length, item); });
    ComPtr<IXMLDOMNode> beyond;
    Require(list->get_item(length, beyond.Receive()) != S_OK && !beyond, "nothing lies beyond the end");
  }

  void Children(IXMLDOMNode* node, char at) {
    ComPtr<IXMLDOMNodeList> children;
    if (node->get_childNodes(children.Receive()) == S_OK) KeepItem(children.get(), at);
  }
  void Attributes(IXMLDOMNode* node, char at) {
    ComPtr<IXMLDOMNamedNodeMap> attributes;
    if (node->get_attributes(attributes.Receive()) == S_OK) KeepItem(attributes.get(), at);
  }
  /// Appends the node that was had last.
  void Append(IXMLDOMNode* parent) {
    Keep([&](IXMLDOMNode** appended) { return parent->appendChild(nodes_.back().get(), appended); });
  }
  void Text(IXMLDOMNode* node) {
    const Bstr text(TEXT("a<&\u00e9]]>\n"));
    Bstr read;
    if (SUCCEEDED(node->put_text(text.get())) && SUCCEEDED(node->get_text(read.Receive())))
      Require(std::u16string_view(read.text()) == text.text() || IsDocument(node), "a text is as it was put");
  }
  void Name(IXMLDOMNode* node) {
    Bstr name;
    Require(node->get_nodeName(name.Receive()) == S_OK && name.length() > 0, "a node has a name");
  }
  void Xml(IXMLDOMNode* node) {
    Bstr xml;
    Bstr text;
    Require(node->get_xml(xml.Receive()) == S_OK, "a node has an XML text");
    Require(node->get_text(text.Receive()) == S_OK, "a node has a text");
    if (xml.length() > kLongestText) nodes_.resize(1);
  }
  /// The document stays at hand.
  void Release(char at) {
    if (Place(at) > 0) nodes_.erase(nodes_.begin() + static_cast<std::ptrdiff_t>(Place(at)));
  }

  static bool IsDocument(IXMLDOMNode* node) {
    DOMNodeType type{};
    return node->get_nodeType(&type) == S_OK && type == NODE_DOCUMENT;
  }

  std::vector<ComPtr<IXMLDOMNode>> nodes_;
};

ComPtr<IXMLDOMDocument> NewDocument() {
  ComPtr<IXMLDOMDocument> document;
  phone::CreateDomDocument(IID_IXMLDOMDocument, reinterpret_cast<void**>(document.Receive()));
  Require(static_cast<bool>(document), "there are documents");
  return document;
}

bool LoadFile(IXMLDOMDocument& document, LPCWSTR path) {
  VARIANT_BOOL success = VARIANT_FALSE;
  const Bstr file(path);
  const HRESULT status = document.load(TextVariant(file), &success);
  Require((status == S_OK) == (success == VARIANT_TRUE), "status and success agree");
  return status == S_OK;
}

bool LoadText(IXMLDOMDocument& document, const std::u16string& text) {
  VARIANT_BOOL success = VARIANT_FALSE;
  return document.loadXML(Bstr(text.c_str()).get(), &success) == S_OK;
}

/// What is saved after all that was done is well formed.
void SaveAndLoad(IXMLDOMDocument& document) {
  const Bstr path(TEXT("\\out.xml"));
  if (FAILED(document.save(TextVariant(path)))) return;
  const ComPtr<IXMLDOMDocument> again = NewDocument();
  Require(LoadFile(*again.get(), path.text()), "what was saved is a well-formed document");
}

void Work(ComPtr<IXMLDOMDocument>& document, std::string_view steps) {
  {
    Hands hands(document);
    for (std::size_t i = 0; i + 1 < std::min(steps.size(), 2 * kMostSteps); i += 2) hands.Do(steps[i], steps[i + 1]);
  }
  SaveAndLoad(*document.get());
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view text = fuzzing::TextOf(data, size);
  const std::string_view steps = fuzzing::CutLine(text);
  Phone::On().Put("in.xml", text);
  ComPtr<IXMLDOMDocument> document = NewDocument();
  if (LoadFile(*document.get(), TEXT("\\in.xml"))) Work(document, steps);
  const auto units = phone::ToUtf16(text);
  if (units && LoadText(*document.get(), *units)) Work(document, steps);
  return 0;
}
