/// \file
/// Walking what an XML node holds, in document order. A list or an item that is missing although the call succeeded
/// counts as a missing object: E_OUTOFMEMORY.
#pragma once

#include <msxml2.h>

#include "base/com_owner.h"
#include "base/status.h"

/// What a visitor gives to end the walk without failing it.
inline constexpr HRESULT WALK_ENDS = S_FALSE;

/// Visits every item of a list or map. Ends with the first failure, a visitor's included, or when a visitor gives
/// WALK_ENDS; that is a success.
template <typename Collection, typename Visitor>
[[nodiscard]] HRESULT WalkItems(Collection* items, Visitor&& visit) noexcept {
  if (!items) return E_OUTOFMEMORY;
  LONG length = 0;
  RETURN_IF_FAILED(items->get_length(&length));
  for (LONG i = 0; i < length; ++i) {
    ComPtr<IXMLDOMNode> item;
    RETURN_IF_FAILED(items->get_item(i, item.Receive()));
    if (!item) return E_OUTOFMEMORY;
    const HRESULT status = visit(item.get());
    if (status == WALK_ENDS) return S_OK;
    RETURN_IF_FAILED(status);
  }
  return S_OK;
}

/// Visits the direct children of a node, whatever they are.
template <typename Visitor>
[[nodiscard]] HRESULT WalkChildren(IXMLDOMNode* node, Visitor&& visit) noexcept {
  ComPtr<IXMLDOMNodeList> children;
  RETURN_IF_FAILED(node->get_childNodes(children.Receive()));
  return WalkItems(children.get(), visit);
}

/// Visits the attributes of an element that have that name, without regard to case.
template <typename Visitor>
[[nodiscard]] HRESULT WalkAttributesNamed(IXMLDOMNode* element, LPCWSTR name, Visitor&& visit) noexcept {
  ComPtr<IXMLDOMNamedNodeMap> attributes;
  RETURN_IF_FAILED(element->get_attributes(attributes.Receive()));
  return WalkItems(attributes.get(), [&](IXMLDOMNode* attribute) -> HRESULT {
    Bstr found;
    RETURN_IF_FAILED(attribute->get_nodeName(found.Receive()));
    return lstrcmpiW(found.text(), name) == 0 ? visit(attribute) : S_OK;
  });
}

/// Tells whether a node is an element of that name, without regard to case. Instructions, comments and document types
/// never match, whatever they are called.
[[nodiscard]] inline HRESULT IsElementNamed(IXMLDOMNode* node, LPCWSTR name, bool& matches) noexcept {
  matches = false;
  DOMNodeType type = NODE_DOCUMENT;
  RETURN_IF_FAILED(node->get_nodeType(&type));
  if (type != NODE_ELEMENT) return S_OK;
  Bstr found;
  RETURN_IF_FAILED(node->get_nodeName(found.Receive()));
  matches = lstrcmpiW(found.text(), name) == 0;
  return S_OK;
}

/// Visits the direct children that are elements of that name.
template <typename Visitor>
[[nodiscard]] HRESULT WalkElementsNamed(IXMLDOMNode* node, LPCWSTR name, Visitor&& visit) noexcept {
  return WalkChildren(node, [&](IXMLDOMNode* child) -> HRESULT {
    bool matches = false;
    RETURN_IF_FAILED(IsElementNamed(child, name, matches));
    return matches ? visit(child) : S_OK;
  });
}

/// A deep copy of a node, and a copy of an element with its attributes only.
[[nodiscard]] inline HRESULT CopyNode(IXMLDOMNode* node, VARIANT_BOOL deep, ComPtr<IXMLDOMNode>& copy) noexcept {
  RETURN_IF_FAILED(node->cloneNode(deep, copy.Receive()));
  return copy ? S_OK : E_OUTOFMEMORY;
}
[[nodiscard]] inline HRESULT CopyDeep(IXMLDOMNode* node, ComPtr<IXMLDOMNode>& copy) noexcept {
  return CopyNode(node, VARIANT_TRUE, copy);
}
[[nodiscard]] inline HRESULT CopyShallow(IXMLDOMNode* node, ComPtr<IXMLDOMNode>& copy) noexcept {
  return CopyNode(node, VARIANT_FALSE, copy);
}
