/// \file
/// The objects that stand for nodes: light, made when somebody asks for a node.
#pragma once

#include <libxml/tree.h>

#include <exception>
#include <new>
#include <utility>

#include "msxml2.h"
#include "system/component.h"
#include "winerror.h"
#include "xml/tree.h"

namespace phone::xml {

/// Asks a node object for its NodeCore; known to this folder alone. The reference is not counted.
inline constexpr IID kNodeCoreIid = {0x8E1B5C02, 0x64D7, 0x4F3A, {0x9A, 0x2C, 0x41, 0x77, 0xD0, 0x1E, 0x5B, 0x36}};

/// Runs an entry point; what is thrown becomes its status.
template <typename Work>
HRESULT Guarded(Work&& work) noexcept {
  try {
    return work();
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (...) {
    return E_FAIL;
  }
}

/// What every node object is made of, and the operations of IXMLDOMNode upon it.
class NodeCore {
 public:
  /// Links the node to `object`, the interface of this same object.
  NodeCore(TreeRef tree, xmlNode* node, IXMLDOMNode* object) noexcept;
  NodeCore(const NodeCore&) = delete;
  NodeCore& operator=(const NodeCore&) = delete;

  const TreeRef& tree() const noexcept { return tree_; }
  xmlNode* node() const noexcept { return node_; }
  IXMLDOMNode* object() const noexcept { return object_; }
  /// The node lies in another tree now.
  void MoveTo(const TreeRef& tree) noexcept { tree_ = tree; }

 protected:
  ~NodeCore();
  /// Stands for another node from now on.
  void Rebind(TreeRef tree, xmlNode* node) noexcept;

  HRESULT NodeName(BSTR* name) noexcept;
  HRESULT NodeType(DOMNodeType* type) noexcept;
  HRESULT ChildNodes(IXMLDOMNodeList** children) noexcept;
  HRESULT FirstChild(IXMLDOMNode** child) noexcept;
  HRESULT Attributes(IXMLDOMNamedNodeMap** attributes) noexcept;
  HRESULT CloneNode(VARIANT_BOOL deep, IXMLDOMNode** copy) noexcept;
  HRESULT AppendChild(IXMLDOMNode* child, IXMLDOMNode** appended) noexcept;
  HRESULT Text(BSTR* text) noexcept;
  HRESULT SetText(BSTR text) noexcept;
  HRESULT Xml(BSTR* xml) noexcept;

 private:
  TreeRef tree_;
  xmlNode* node_;
  IXMLDOMNode* object_;
};

/// IXMLDOMNode, and interfaces derived from it, on a NodeCore.
template <typename Interface>
class NodeObject : public Component<Interface, IID_IXMLDOMNode>, public NodeCore {
 public:
  NodeObject(TreeRef tree, xmlNode* node) noexcept : NodeCore(std::move(tree), node, this) {}

  HRESULT QueryInterface(REFIID iid, void** object) override {
    if (object && iid == kNodeCoreIid) {
      *object = static_cast<NodeCore*>(this);
      return S_OK;
    }
    return Component<Interface, IID_IXMLDOMNode>::QueryInterface(Is(iid) ? IID_IXMLDOMNode : iid, object);
  }

  HRESULT get_nodeName(BSTR* name) override { return NodeName(name); }
  HRESULT get_nodeType(DOMNodeType* type) override { return NodeType(type); }
  HRESULT get_childNodes(IXMLDOMNodeList** children) override { return ChildNodes(children); }
  HRESULT get_firstChild(IXMLDOMNode** child) override { return FirstChild(child); }
  HRESULT get_attributes(IXMLDOMNamedNodeMap** attributes) override { return Attributes(attributes); }
  HRESULT cloneNode(VARIANT_BOOL deep, IXMLDOMNode** copy) override { return CloneNode(deep, copy); }
  HRESULT appendChild(IXMLDOMNode* child, IXMLDOMNode** appended) override { return AppendChild(child, appended); }
  HRESULT get_text(BSTR* text) override { return Text(text); }
  HRESULT put_text(BSTR text) override { return SetText(text); }
  HRESULT get_xml(BSTR* xml) override { return Xml(xml); }

 protected:
  virtual bool Is(REFIID) const noexcept { return false; }
};

/// Gives the object of a node, made when there is none; null for no node.
IXMLDOMNode* ObjectFor(const TreeRef& tree, xmlNode* node);

}  // namespace phone::xml
