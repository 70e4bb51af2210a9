/// \file
/// The XML document object model. Every object that a call gives is the caller's to release, every BSTR to free.
#pragma once

#include <oleauto.h>

inline constexpr CLSID CLSID_DOMDocument = {
    0xF6D90F11, 0x9C73, 0x11D3, {0xB3, 0x2E, 0x00, 0xC0, 0x4F, 0x99, 0x0B, 0xB4}};
inline constexpr IID IID_IXMLDOMDocument = {
    0x2933BF81, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};
inline constexpr IID IID_IXMLDOMNode = {0x2933BF80, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

struct IXMLDOMNodeList;
struct IXMLDOMNamedNodeMap;

enum DOMNodeType {
  NODE_ELEMENT = 1,
  NODE_ATTRIBUTE = 2,
  NODE_TEXT = 3,
  NODE_CDATA_SECTION = 4,
  NODE_ENTITY_REFERENCE = 5,
  NODE_PROCESSING_INSTRUCTION = 7,  ///< the XML declaration too
  NODE_COMMENT = 8,
  NODE_DOCUMENT = 9,
  NODE_DOCUMENT_TYPE = 10,
};

/// A node of a document. The declaration, comments and instructions are nodes too; the names of these are "xml",
/// "#comment" and the instruction's target.
struct IXMLDOMNode : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE get_nodeName(BSTR* name) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_nodeType(DOMNodeType* type) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_childNodes(IXMLDOMNodeList** children) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_firstChild(IXMLDOMNode** child) = 0;
  /// S_FALSE and null for a node that is no element.
  virtual HRESULT STDMETHODCALLTYPE get_attributes(IXMLDOMNamedNodeMap** attributes) = 0;
  /// A copy without a parent; deep: with all descendants, else the element and its attributes only.
  virtual HRESULT STDMETHODCALLTYPE cloneNode(VARIANT_BOOL deep, IXMLDOMNode** copy) = 0;
  /// Appends a node as the last child, also one of another document; `appended` may be null.
  virtual HRESULT STDMETHODCALLTYPE appendChild(IXMLDOMNode* child, IXMLDOMNode** appended) = 0;
  /// The text content, as it stands.
  virtual HRESULT STDMETHODCALLTYPE get_text(BSTR* text) = 0;
  /// Replaces all content by the text.
  virtual HRESULT STDMETHODCALLTYPE put_text(BSTR text) = 0;
  /// The XML text of the node and its descendants.
  virtual HRESULT STDMETHODCALLTYPE get_xml(BSTR* xml) = 0;
};

struct IXMLDOMNodeList : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE get_item(LONG index, IXMLDOMNode** node) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_length(LONG* length) = 0;
};

struct IXMLDOMNamedNodeMap : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE get_item(LONG index, IXMLDOMNode** node) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_length(LONG* length) = 0;
};

struct IXMLDOMDocument : IXMLDOMNode {
  virtual HRESULT STDMETHODCALLTYPE put_async(VARIANT_BOOL async) = 0;
  /// Loads a file (a path as a text variant). S_FALSE and VARIANT_FALSE when it does not parse.
  virtual HRESULT STDMETHODCALLTYPE load(VARIANT source, VARIANT_BOOL* success) = 0;
  virtual HRESULT STDMETHODCALLTYPE loadXML(BSTR xml, VARIANT_BOOL* success) = 0;
  /// Writes the document to a file (a path as a text variant), whole or not at all.
  virtual HRESULT STDMETHODCALLTYPE save(VARIANT destination) = 0;
};
