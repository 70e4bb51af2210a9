#include "xml/node_list.h"

#include <optional>

#include "system/component.h"
#include "system/faults.h"
#include "xml/doctype.h"
#include "xml/namespaces.h"
#include "xml/node.h"
#include "xml/walk.h"

namespace phone::xml {
namespace {

/// How a list steps through its nodes.
struct ChildSteps {
  static xmlNode* First(xmlNode* parent) noexcept { return HasChildren(parent) ? parent->children : nullptr; }
  static xmlNode* Next(xmlNode*, xmlNode* child) noexcept { return child->next; }
};

/// Namespace declarations, then attributes, then what the document type adds. Declarations that only a copy needs are
/// passed over.
struct AttributeSteps {
  static xmlNode* First(xmlNode* element) noexcept { return FromDeclaration(element, element->nsDef); }
  static xmlNode* Next(xmlNode* element, xmlNode* item) noexcept {
    if (item->type == XML_NAMESPACE_DECL) return FromDeclaration(element, AsNamespace(item)->next);
    if (item->type == XML_ATTRIBUTE_DECL) return AsNode(NextDefault(element, AsDeclaration(item)));
    return FromAttribute(element, AsAttribute(item)->next);
  }

 private:
  static xmlNode* FromDeclaration(xmlNode* element, xmlNs* declaration) noexcept {
    while (declaration && IsImplied(declaration)) declaration = declaration->next;
    return declaration ? AsNode(declaration) : FromAttribute(element, element->properties);
  }
  static xmlNode* FromAttribute(xmlNode* element, xmlAttr* attribute) noexcept {
    return attribute ? AsNode(attribute) : AsNode(NextDefault(element, nullptr));
  }
};

/// Walked in order it steps from item to item: it keeps its place while the tree does not change.
template <typename Interface, typename Steps>
class List final : public Component<Interface> {
 public:
  explicit List(IXMLDOMNode* parent) noexcept : parent_(parent) {
    parent->AddRef();
    void* core = nullptr;
    parent->QueryInterface(kNodeCoreIid, &core);
    core_ = static_cast<NodeCore*>(core);
  }

  HRESULT get_item(LONG index, IXMLDOMNode** node) override {
    if (!node) return E_POINTER;
    *node = nullptr;
    if (FaultDue(Operation::get_item)) return E_FAIL;
    if (index < 0) return E_INVALIDARG;
    return Guarded([&] {
      *node = ObjectFor(core_->tree(), Find(index));
      return *node ? S_OK : S_FALSE;
    });
  }

  HRESULT get_length(LONG* length) override {
    if (!length) return E_POINTER;
    *length = 0;
    if (FaultDue(Operation::get_length)) return E_FAIL;
    ForgetIfChanged();
    if (!length_) {
      LONG count = 0;
      for (xmlNode* item = Steps::First(core_->node()); item; item = Steps::Next(core_->node(), item)) ++count;
      length_ = count;
    }
    *length = *length_;
    return S_OK;
  }

 private:
  ~List() override { parent_->Release(); }

  void ForgetIfChanged() noexcept {
    // The parent may lie in another tree by now, with a count of its own.
    if (tree_ == core_->tree() && changes_ == tree_->changes) return;
    tree_ = core_->tree();
    changes_ = tree_->changes;
    length_.reset();
    place_ = nullptr;
  }

  xmlNode* Find(LONG index) noexcept {
    ForgetIfChanged();
    if (!place_ || index < place_index_) {
      place_ = Steps::First(core_->node());
      place_index_ = 0;
    }
    while (place_ && place_index_ < index) {
      place_ = Steps::Next(core_->node(), place_);
      ++place_index_;
    }
    return place_;
  }

  IXMLDOMNode* parent_;
  NodeCore* core_;
  TreeRef tree_;
  std::uint64_t changes_ = 0;
  std::optional<LONG> length_;
  xmlNode* place_ = nullptr;
  LONG place_index_ = 0;
};

}  // namespace

IXMLDOMNodeList* MakeChildList(IXMLDOMNode* parent) {
  return new List<IXMLDOMNodeList, ChildSteps>(parent);
}

IXMLDOMNamedNodeMap* MakeAttributeMap(IXMLDOMNode* element) {
  return new List<IXMLDOMNamedNodeMap, AttributeSteps>(element);
}

}  // namespace phone::xml
