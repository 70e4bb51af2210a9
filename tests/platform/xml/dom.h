/// \file
/// What the tests of the DOM share: owners, short forms of its calls, and a phone folder to load from and save to.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>

#include "msxml2.h"
#include "support/file_content.h"
#include "support/temporary_folder.h"
#include "system/faults.h"
#include "system/files.h"
#include "system/text.h"
#include "xml/dom_document.h"

/// Owns one reference.
template <typename Interface>
class Ref {
 public:
  Ref() = default;
  Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  Ref& operator=(Ref&& other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~Ref() { Reset(); }
  void Reset() {
    if (Interface* const object = std::exchange(object_, nullptr)) object->Release();
  }
  Interface** Receive() {
    Reset();
    return &object_;
  }
  Interface* get() const { return object_; }
  Interface* operator->() const { return object_; }

 private:
  Interface* object_ = nullptr;
};

using NodeRef = Ref<IXMLDOMNode>;
using DocumentRef = Ref<IXMLDOMDocument>;

/// The text of a counted string, which is freed; "(null)" for none.
inline std::string TextOf(BSTR text) {
  const std::string utf8 = text ? phone::ToUtf8Lossy({text, SysStringLen(text)}) : "(null)";
  SysFreeString(text);
  return utf8;
}

/// A counted string for a call.
class Argument {
 public:
  explicit Argument(std::u16string_view text) : text_(SysAllocString(std::u16string(text).c_str())) {}
  explicit Argument(std::string_view utf8) : Argument(*phone::ToUtf16(utf8)) {}
  Argument(const Argument&) = delete;
  Argument& operator=(const Argument&) = delete;
  ~Argument() { SysFreeString(text_); }
  BSTR text() const { return text_; }
  VARIANT variant() const {
    VARIANT value{};
    value.vt = VT_BSTR;
    value.bstrVal = text_;
    return value;
  }

 private:
  BSTR text_;
};

inline DocumentRef NewDocument() {
  DocumentRef document;
  EXPECT_EQ(S_OK, phone::CreateDomDocument(IID_IXMLDOMDocument, reinterpret_cast<void**>(document.Receive())));
  return document;
}

inline bool LoadText(const DocumentRef& document, std::string_view utf8) {
  VARIANT_BOOL success = VARIANT_FALSE;
  const HRESULT status = document->loadXML(Argument(utf8).text(), &success);
  EXPECT_EQ(success == VARIANT_TRUE ? S_OK : S_FALSE, status);
  return success == VARIANT_TRUE;
}

inline DocumentRef FromText(std::string_view utf8) {
  DocumentRef document = NewDocument();
  EXPECT_TRUE(LoadText(document, utf8)) << utf8;
  return document;
}

inline NodeRef Child(IXMLDOMNode* parent, LONG index) {
  Ref<IXMLDOMNodeList> children;
  NodeRef child;
  EXPECT_EQ(S_OK, parent->get_childNodes(children.Receive()));
  children->get_item(index, child.Receive());
  return child;
}

inline std::string NameOf(IXMLDOMNode* node) {
  BSTR name = nullptr;
  EXPECT_EQ(S_OK, node->get_nodeName(&name));
  return TextOf(name);
}

inline std::string ContentOf(IXMLDOMNode* node) {
  BSTR text = nullptr;
  EXPECT_EQ(S_OK, node->get_text(&text));
  return TextOf(text);
}

inline std::string XmlOf(IXMLDOMNode* node) {
  BSTR xml = nullptr;
  EXPECT_EQ(S_OK, node->get_xml(&xml));
  return TextOf(xml);
}

inline NodeRef Clone(IXMLDOMNode* node, VARIANT_BOOL deep = VARIANT_TRUE) {
  NodeRef copy;
  EXPECT_EQ(S_OK, node->cloneNode(deep, copy.Receive()));
  return copy;
}

/// The children of a node by index, as the program walks them.
template <typename Visit>
void ForEachChild(IXMLDOMNode* parent, Visit visit) {
  Ref<IXMLDOMNodeList> children;
  LONG count = 0;
  ASSERT_EQ(S_OK, parent->get_childNodes(children.Receive()));
  ASSERT_EQ(S_OK, children->get_length(&count));
  for (LONG index = 0; index < count; ++index) {
    NodeRef child;
    ASSERT_EQ(S_OK, children->get_item(index, child.Receive()));
    visit(child.get());
  }
}

inline DOMNodeType TypeOf(IXMLDOMNode* node) {
  DOMNodeType type{};
  EXPECT_EQ(S_OK, node->get_nodeType(&type));
  return type;
}

/// The root element.
inline NodeRef Root(const DocumentRef& document) {
  NodeRef root;
  ForEachChild(document.get(), [&root](IXMLDOMNode* child) {
    if (TypeOf(child) != NODE_ELEMENT) return;
    child->AddRef();
    *root.Receive() = child;
  });
  return root;
}

/// A new document made of copies the way the program writes one: the root shallow, then its children one by one.
inline DocumentRef Rebuild(const DocumentRef& source) {
  DocumentRef copy = NewDocument();
  ForEachChild(source.get(), [&copy](IXMLDOMNode* child) {
    const bool root = TypeOf(child) == NODE_ELEMENT;
    const NodeRef top = Clone(child, root ? VARIANT_FALSE : VARIANT_TRUE);
    EXPECT_EQ(S_OK, copy->appendChild(top.get(), nullptr));
    if (root)
      ForEachChild(child, [&top](IXMLDOMNode* part) { EXPECT_EQ(S_OK, top->appendChild(Clone(part).get(), nullptr)); });
  });
  return copy;
}

/// Tests with a phone folder mounted.
class DomFiles : public ::testing::Test {
 protected:
  DomFiles() {
    phone::ResetFaults();
    phone::MountFiles(folder_.path, folder_.path, u"\\Program Files\\Quillmark\\Quillmark.exe");
  }
  ~DomFiles() override { phone::UnmountFiles(); }

  void Put(const std::string& name, std::string_view bytes) const { WriteFile(folder_.path / name, bytes); }
  std::string Get(const std::string& name) const { return ReadFile(folder_.path / name); }
  static bool Load(const DocumentRef& document, const std::string& name) {
    VARIANT_BOOL success = VARIANT_FALSE;
    const HRESULT status = document->load(Argument("\\" + name).variant(), &success);
    EXPECT_EQ(success == VARIANT_TRUE ? S_OK : S_FALSE, status);
    return success == VARIANT_TRUE;
  }
  static HRESULT Save(const DocumentRef& document, const std::string& name) {
    return document->save(Argument("\\" + name).variant());
  }
  /// What the bytes become when they are loaded, rebuilt and saved; "(not loaded)" or "(not saved)".
  std::string RoundTrip(std::string_view bytes) const {
    Put("in.xml", bytes);
    const DocumentRef document = NewDocument();
    if (!Load(document, "in.xml")) return "(not loaded)";
    return SUCCEEDED(Save(Rebuild(document), "out.xml")) ? Get("out.xml") : "(not saved)";
  }

  TemporaryFolder folder_;
};
