#include "xml/node.h"

#include <algorithm>
#include <memory>
#include <string>

#include "system/faults.h"
#include "system/text.h"
#include "xml/append.h"
#include "xml/bstr.h"
#include "xml/doctype.h"
#include "xml/document.h"
#include "xml/namespaces.h"
#include "xml/node_list.h"
#include "xml/serialize.h"
#include "xml/text_content.h"
#include "xml/walk.h"

namespace phone::xml {
namespace {

class Node final : public NodeObject<IXMLDOMNode> {
 public:
  using NodeObject::NodeObject;
};

std::string Qualified(const xmlChar* prefix, const xmlChar* name) {
  std::string text(View(prefix));
  if (!text.empty()) text += ':';
  return text += View(name);
}

std::string NameOf(xmlNode* node) {
  switch (node->type) {
    case XML_ELEMENT_NODE:
    case XML_ATTRIBUTE_NODE: {
      // Both have their namespace, but not in the same place.
      const xmlNs* const name_space = node->type == XML_ELEMENT_NODE ? node->ns : AsAttribute(node)->ns;
      return Qualified(name_space ? name_space->prefix : nullptr, node->name);
    }
    case XML_ATTRIBUTE_DECL: return Qualified(AsDeclaration(node)->prefix, node->name);
    case XML_NAMESPACE_DECL: {
      const xmlChar* const prefix = AsNamespace(node)->prefix;
      return prefix ? Qualified(Chars("xmlns"), prefix) : "xmlns";
    }
    case XML_TEXT_NODE: return "#text";
    case XML_CDATA_SECTION_NODE: return "#cdata-section";
    case XML_COMMENT_NODE: return "#comment";
    case XML_DOCUMENT_NODE: return "#document";
    default: return std::string(View(node->name));
  }
}

DOMNodeType TypeOf(const xmlNode* node) noexcept {
  switch (node->type) {
    case XML_ATTRIBUTE_NODE:
    case XML_ATTRIBUTE_DECL:
    case XML_NAMESPACE_DECL: return NODE_ATTRIBUTE;
    case XML_TEXT_NODE: return NODE_TEXT;
    case XML_CDATA_SECTION_NODE: return NODE_CDATA_SECTION;
    case XML_ENTITY_REF_NODE: return NODE_ENTITY_REFERENCE;
    case XML_PI_NODE: return NODE_PROCESSING_INSTRUCTION;
    case XML_COMMENT_NODE: return NODE_COMMENT;
    case XML_DOCUMENT_NODE: return NODE_DOCUMENT;
    case XML_DTD_NODE: return NODE_DOCUMENT_TYPE;
    default: return NODE_ELEMENT;
  }
}

/// Whether the text may be the content of such a node, where its own end mark cannot be escaped.
bool FitsInto(const xmlNode* node, std::string_view text) noexcept {
  if (node->type == XML_COMMENT_NODE) return text.find("--") == text.npos && !text.ends_with('-');
  if (node->type == XML_PI_NODE) return text.find("?>") == text.npos;
  return true;
}

bool HasSettableText(const xmlNode* node) noexcept {
  switch (node->type) {
    case XML_ELEMENT_NODE:
    case XML_ATTRIBUTE_NODE:
    case XML_TEXT_NODE:
    case XML_CDATA_SECTION_NODE:
    case XML_COMMENT_NODE: return true;
    // The declaration stays as it was read: what it says steers how the document is written.
    case XML_PI_NODE: return !IsXmlDeclaration(node);
    default: return false;
  }
}

IXMLDOMNode* MakeCopy(const TreeRef& tree, xmlNode* node, bool deep) {
  TreeRef own = OwnSubtree(tree, CopyNode(node, deep));
  if (node->type == XML_DTD_NODE) own->internal_subset = tree->internal_subset;
  xmlNode* const root = own->root();
  return new Node(std::move(own), root);
}

}  // namespace

NodeCore::NodeCore(TreeRef tree, xmlNode* node, IXMLDOMNode* object) noexcept
    : tree_(std::move(tree)), node_(node), object_(object) {
  SetCore(node_, this);
}

NodeCore::~NodeCore() {
  SetCore(node_, nullptr);
}

void NodeCore::Rebind(TreeRef tree, xmlNode* node) noexcept {
  SetCore(node_, nullptr);
  tree_ = std::move(tree);
  node_ = node;
  SetCore(node_, this);
}

HRESULT NodeCore::NodeName(BSTR* name) noexcept {
  if (!name) return E_POINTER;
  *name = nullptr;
  if (FaultDue(Operation::get_nodeName)) return E_FAIL;
  return Guarded([&] { return GiveText(NameOf(node_), name); });
}

HRESULT NodeCore::NodeType(DOMNodeType* type) noexcept {
  if (!type) return E_POINTER;
  *type = TypeOf(node_);
  return S_OK;
}

HRESULT NodeCore::ChildNodes(IXMLDOMNodeList** children) noexcept {
  if (!children) return E_POINTER;
  *children = nullptr;
  if (FaultDue(Operation::get_childNodes)) return E_FAIL;
  return Guarded([&] {
    *children = MakeChildList(object_);
    return S_OK;
  });
}

HRESULT NodeCore::FirstChild(IXMLDOMNode** child) noexcept {
  if (!child) return E_POINTER;
  *child = nullptr;
  if (FaultDue(Operation::get_firstChild)) return E_FAIL;
  return Guarded([&] {
    *child = ObjectFor(tree_, HasChildren(node_) ? node_->children : nullptr);
    return *child ? S_OK : S_FALSE;
  });
}

HRESULT NodeCore::Attributes(IXMLDOMNamedNodeMap** attributes) noexcept {
  if (!attributes) return E_POINTER;
  *attributes = nullptr;
  if (FaultDue(Operation::get_attributes)) return E_FAIL;
  if (node_->type != XML_ELEMENT_NODE) return S_FALSE;
  return Guarded([&] {
    *attributes = MakeAttributeMap(object_);
    return S_OK;
  });
}

HRESULT NodeCore::CloneNode(VARIANT_BOOL deep, IXMLDOMNode** copy) noexcept {
  if (!copy) return E_POINTER;
  *copy = nullptr;
  if (FaultDue(Operation::cloneNode)) return E_FAIL;
  return Guarded([&] {
    const bool whole = deep != VARIANT_FALSE;
    if (node_->type == XML_DOCUMENT_NODE) {
      *copy = CopyDocument(tree_, whole);
      return S_OK;
    }
    if (TypeOf(node_) == NODE_ATTRIBUTE) return E_NOTIMPL;
    *copy = MakeCopy(tree_, node_, whole);
    return S_OK;
  });
}

HRESULT NodeCore::AppendChild(IXMLDOMNode* child, IXMLDOMNode** appended) noexcept {
  if (appended) *appended = nullptr;
  if (!child) return E_INVALIDARG;
  if (FaultDue(Operation::appendChild)) return E_FAIL;
  return Guarded([&] {
    void* core = nullptr;
    if (FAILED(child->QueryInterface(kNodeCoreIid, &core))) return E_INVALIDARG;
    const auto& added = *static_cast<const NodeCore*>(core);
    if (!Append(tree_, node_, added.tree(), added.node())) return E_FAIL;
    if (appended) {
      child->AddRef();
      *appended = child;
    }
    return S_OK;
  });
}

HRESULT NodeCore::Text(BSTR* text) noexcept {
  if (!text) return E_POINTER;
  *text = nullptr;
  if (FaultDue(Operation::get_text)) return E_FAIL;
  return Guarded([&] {
    if (const auto piece = TextInOnePiece(node_)) return GiveText(*piece, text);
    std::string collected;
    std::size_t& left = Tree::Context(tree_)->entity_texts_left;
    const std::size_t granted = std::min(left, kEntityTextBudget);
    std::size_t budget = granted;
    // Text that entities blow up beyond their bound is given as far as the bound.
    static_cast<void>(CollectText(tree_->document(), node_, budget, collected));
    left -= granted - budget;
    return GiveText(collected, text);
  });
}

HRESULT NodeCore::SetText(BSTR text) noexcept {
  if (FaultDue(Operation::put_text)) return E_FAIL;
  return Guarded([&] {
    if (!HasSettableText(node_)) return E_FAIL;
    const std::optional<std::string> content =
        ToUtf8(text ? std::u16string_view(text, SysStringLen(text)) : std::u16string_view());
    if (!content || !IsXmlText(*content) || !FitsInto(node_, *content)) return E_INVALIDARG;
    ++tree_->changes;
    ReplaceContent(tree_, node_, *content);
    return S_OK;
  });
}

HRESULT NodeCore::Xml(BSTR* xml) noexcept {
  if (!xml) return E_POINTER;
  *xml = nullptr;
  if (FaultDue(Operation::get_xml)) return E_FAIL;
  return Guarded([&] { return GiveText(NodeText(tree_, node_), xml); });
}

IXMLDOMNode* ObjectFor(const TreeRef& tree, xmlNode* node) {
  if (!node) return nullptr;
  if (const NodeCore* const core = CoreOf(node)) {
    core->object()->AddRef();
    return core->object();
  }
  // A declaration of a default attribute belongs to the document, whichever tree its element lies in.
  return new Node(node->type == XML_ATTRIBUTE_DECL ? Tree::Context(tree) : tree, node);
}

}  // namespace phone::xml
