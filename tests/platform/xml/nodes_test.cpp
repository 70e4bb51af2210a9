#include <functional>
#include <string>
#include <vector>

#include "dom.h"

namespace {

class Nodes : public DomFiles {};

std::string AttributesOf(IXMLDOMNode* element) {
  Ref<IXMLDOMNamedNodeMap> attributes;
  LONG count = 0;
  EXPECT_EQ(S_OK, element->get_attributes(attributes.Receive()));
  EXPECT_EQ(S_OK, attributes->get_length(&count));
  std::string text;
  for (LONG index = 0; index < count; ++index) {
    NodeRef attribute;
    EXPECT_EQ(S_OK, attributes->get_item(index, attribute.Receive()));
    EXPECT_EQ(NODE_ATTRIBUTE, TypeOf(attribute.get()));
    text += NameOf(attribute.get()) + "=" + ContentOf(attribute.get()) + ";";
  }
  return text;
}

void SetAttribute(IXMLDOMNode* element, LONG index, std::string_view value) {
  Ref<IXMLDOMNamedNodeMap> attributes;
  NodeRef attribute;
  ASSERT_EQ(S_OK, element->get_attributes(attributes.Receive()));
  ASSERT_EQ(S_OK, attributes->get_item(index, attribute.Receive()));
  EXPECT_EQ(S_OK, attribute->put_text(Argument(value).text()));
}

TEST_F(Nodes, HaveTheirNamesTypesAndTexts) {
  const DocumentRef document = FromText(
      "<?xml version=\"1.0\" encoding=\"utf-8\"?><!DOCTYPE home [<!ENTITY e 'v<b>w</b>'>]>"
      "<home xmlns:p='u'>t<p:a> x&amp;<!--no-->&e;<c><![CDATA[<]]></c></p:a><!--c--><?pi  d "
      "?>&e;<![CDATA[raw]]></home>");
  std::string seen;
  const std::function<void(IXMLDOMNode*)> visit = [&](IXMLDOMNode* node) {
    seen += NameOf(node) + "|" + std::to_string(TypeOf(node)) + "|" + ContentOf(node) + "\n";
  };
  visit(document.get());
  ForEachChild(document.get(), visit);
  ForEachChild(Root(document).get(), visit);
  EXPECT_EQ(
      "#document|9|t x&vw<vwraw\n"
      "xml|7|version=\"1.0\" encoding=\"utf-8\"\nhome|10|\nhome|1|t x&vw<vwraw\n"
      "#text|3|t\np:a|1| x&vw<\n#comment|8|c\npi|7|d \ne|5|vw\n#cdata-section|4|raw\n",
      seen);
}

TEST_F(Nodes, AttributesIncludeDeclarationsAndDefaults) {
  const DocumentRef document = FromText(
      "<!DOCTYPE home [<!ENTITY e 'v'><!ATTLIST home lang CDATA '0&e;&amp;&lt;' q CDATA 'no'>]>"
      "<home b='1' xmlns='u&amp;&lt;&quot;&e;&#9;1' q='2' xmlns:p='u:2' p:a='&e;&lt;'>text</home>");
  const NodeRef root = Root(document);
  EXPECT_EQ("xmlns=u&<\"v\t1;xmlns:p=u:2;b=1;q=2;p:a=v<;lang=0v&<;", AttributesOf(root.get()));
  EXPECT_EQ(AttributesOf(root.get()), AttributesOf(Clone(root.get()).get()));
  EXPECT_EQ(AttributesOf(root.get()), AttributesOf(Root(Rebuild(document)).get()));
  EXPECT_EQ(
      "<home xmlns=\"u&#38;&#60;&#34;v&#9;1\" xmlns:p=\"u:2\" b=\"1\" q=\"2\" p:a=\"v&lt;\" "
      "lang=\"0v&amp;&lt;\">text</home>",
      XmlOf(root.get()));
  const NodeRef text = Child(root.get(), 0);
  Ref<IXMLDOMNamedNodeMap> none;
  EXPECT_EQ(S_FALSE, text->get_attributes(none.Receive()));
  EXPECT_EQ(nullptr, none.get());
}

TEST_F(Nodes, AShallowCopyHasAttributesOnly) {
  const DocumentRef document = FromText("<home xmlns:p='u' p:a='1' b='2'><x/>text</home>");
  const NodeRef copy = Clone(Root(document).get(), VARIANT_FALSE);
  EXPECT_EQ("<home xmlns:p=\"u\" p:a=\"1\" b=\"2\"/>", XmlOf(copy.get()));
}

TEST_F(Nodes, TextIsReplacedAndEscaped) {
  const DocumentRef document = FromText("<home name='old'>a<b/><![CDATA[c]]><!--d--></home>");
  const NodeRef root = Root(document);
  const NodeRef held = Child(root.get(), 1);
  SetAttribute(root.get(), 0, "\"<&\n\xE4\xB8\xAD");
  EXPECT_EQ(S_OK, root->put_text(Argument("<T> & ]]> \"").text()));
  EXPECT_EQ("<home name=\"&quot;&lt;&amp;&#10;\xE4\xB8\xAD\">&lt;T&gt; &amp; ]]&gt; \"</home>", XmlOf(root.get()));
  EXPECT_EQ("b", NameOf(held.get())) << "a node that was replaced lives as long as its object";
  EXPECT_EQ(S_OK, root->put_text(nullptr));
  EXPECT_EQ("", ContentOf(root.get()));
  const std::u16string_view refused[] = {u"\x01", u"\xD800x", u"\xFFFE"};
  for (const std::u16string_view text : refused) EXPECT_EQ(E_INVALIDARG, root->put_text(Argument(text).text()));
  EXPECT_EQ(E_FAIL, document->put_text(Argument("x").text()));
}

TEST_F(Nodes, XmlStandsAlone) {
  const DocumentRef document = FromText(
      "<!DOCTYPE home [<!ENTITY a 'vw'><!ENTITY e 'v<i>w</i>'><!ENTITY f '&e;&e;'><!ATTLIST plugin name CDATA 'D'>]>"
      "<home xmlns='u:1' xmlns:p='u:2' xmlns:q='u:3'><plugin p:a='&a;'>&f;<p:x/></plugin></home>");
  const NodeRef plugin = Child(Root(document).get(), 0);
  const std::string alone = XmlOf(plugin.get());
  EXPECT_EQ("<plugin xmlns=\"u:1\" xmlns:p=\"u:2\" p:a=\"vw\" name=\"D\">v<i>w</i>v<i>w</i><p:x/></plugin>", alone);
  EXPECT_EQ(alone, XmlOf(Clone(plugin.get()).get()));
  EXPECT_EQ(alone, XmlOf(Root(FromText(alone)).get()));
  const DocumentRef unknown = FromText("<!DOCTYPE h [<!ENTITY s SYSTEM 's'><!ENTITY % p ''> %p;]><h>1&s;2&none;3</h>");
  EXPECT_EQ("<h>123</h>", XmlOf(Root(unknown).get()));
  EXPECT_NE(std::string::npos, XmlOf(document.get()).find("<plugin p:a=\"&a;\">&f;<p:x/></plugin>"))
      << "the document itself is as it was";
}

TEST_F(Nodes, OutliveTheirDocument) {
  NodeRef copied;
  NodeRef inner;
  Ref<IXMLDOMNodeList> list;
  {
    const DocumentRef document = FromText("<!DOCTYPE h [<!ENTITY e 'v'>]><h xmlns:p='u'><p:a b='1'>x&e;</p:a></h>");
    const NodeRef root = Root(document);
    copied = Clone(Child(root.get(), 0).get());
    inner = Child(root.get(), 0);
    ASSERT_EQ(S_OK, root->get_childNodes(list.Receive()));
    EXPECT_TRUE(LoadText(document, "<other/>"));
  }
  EXPECT_EQ("xv", ContentOf(inner.get()));
  EXPECT_EQ("b=1;", AttributesOf(copied.get()));
  NodeRef again;
  EXPECT_EQ(S_OK, list->get_item(0, again.Receive()));
  EXPECT_EQ(inner.get(), again.get()) << "a node has one object at a time";
  list.Reset();
  const NodeRef text = Child(copied.get(), 0);
  copied.Reset();
  EXPECT_EQ("x", ContentOf(text.get()));
}

TEST_F(Nodes, MoveBetweenDocuments) {
  // The home of the first has a default namespace, a declared prefix and an entity; what comes in has its own.
  const DocumentRef target =
      FromText("<!DOCTYPE home [<!ENTITY same 's'><!ENTITY other 't'>]><home xmlns='u:1' xmlns:p='u:2'><keep/></home>");
  const NodeRef home = Root(target);
  NodeRef moved;
  NodeRef inner;
  {
    const DocumentRef source = FromText(
        "<!DOCTYPE h [<!ENTITY same 's'><!ENTITY other 'o'><!ENTITY own 'w<i/>'><!ENTITY att 'w'>]>"
        "<h xmlns:p='u:2' xmlns:q='u:&att;4'><a xml:lang='de' p:x='1' "
        "q:y='&att;&same;'><longname/>&same;&other;&own;</a></h>");
    const NodeRef attached = Child(Root(source).get(), 0);
    inner = Child(attached.get(), 0);
    EXPECT_EQ(S_OK, home->appendChild(attached.get(), moved.Receive()));
    EXPECT_EQ(moved.get(), attached.get());
    EXPECT_EQ("<h xmlns:p=\"u:2\" xmlns:q=\"u:w4\"/>", XmlOf(Root(source).get())) << "it has left its document";
  }
  EXPECT_EQ("longname", NameOf(inner.get()));
  EXPECT_EQ("so", ContentOf(moved.get()).substr(0, 2));
  const std::string xml = XmlOf(target.get());
  EXPECT_EQ(
      "<home xmlns=\"u:1\" xmlns:p=\"u:2\"><keep/><a xmlns:q=\"u:w4\" xmlns=\"\" xml:lang=\"de\" p:x=\"1\" "
      "q:y=\"ws\"><longname/>&same;ow<i/></a></home>\n",
      xml.substr(xml.find("<home xmlns")));
  EXPECT_EQ(S_OK, home->appendChild(Child(home.get(), 0).get(), nullptr)) << "within one document, to the end";
  EXPECT_EQ("a", NameOf(Child(home.get(), 0).get()));
  EXPECT_EQ(S_OK, inner->appendChild(Clone(moved.get()).get(), nullptr));
}

TEST_F(Nodes, OnlyWhatFitsIsAppended) {
  const DocumentRef document = FromText("<?xml version='1.0'?><!DOCTYPE a><a>t<b/><![CDATA[c]]></a>");
  const NodeRef root = Root(document);
  const NodeRef inner = Child(root.get(), 1);
  const DocumentRef empty = NewDocument();
  const std::pair<IXMLDOMNode*, NodeRef> refused[] = {
      {document.get(), Clone(root.get())},
      {document.get(), Clone(Child(document.get(), 0).get())},
      {document.get(), Clone(Child(document.get(), 1).get())},
      {document.get(), Child(root.get(), 0)},
      {empty.get(), Child(document.get(), 1)},
      {root.get(), Clone(Child(document.get(), 0).get())},
      {inner.get(), Root(document)},
      {root.get(), Clone(document.get())},
      {inner.get(), Root(document)},
  };
  for (const auto& [parent, child] : refused) EXPECT_EQ(E_FAIL, parent->appendChild(child.get(), nullptr));
  EXPECT_EQ(E_INVALIDARG, root->appendChild(nullptr, nullptr));
  EXPECT_EQ("<?xml version='1.0'?>\n<!DOCTYPE a>\n<a>t<b/><![CDATA[c]]></a>\n", XmlOf(document.get()));
  EXPECT_EQ(XmlOf(document.get()), XmlOf(Clone(document.get()).get()));
}

TEST_F(Nodes, ListsFollowChanges) {
  const DocumentRef document = FromText("<a><b/><c/></a>");
  const NodeRef root = Root(document);
  Ref<IXMLDOMNodeList> children;
  NodeRef item;
  LONG length = 0;
  ASSERT_EQ(S_OK, root->get_childNodes(children.Receive()));
  for (const LONG index : {1, 0, 1}) {
    EXPECT_EQ(S_OK, children->get_item(index, item.Receive()));
    EXPECT_EQ(index == 0 ? "b" : "c", NameOf(item.get()));
  }
  EXPECT_EQ(S_OK, children->get_length(&length));
  EXPECT_EQ(2, length);
  EXPECT_EQ(S_OK, root->appendChild(Clone(item.get()).get(), nullptr));
  EXPECT_EQ(S_OK, children->get_length(&length));
  EXPECT_EQ(3, length);
  EXPECT_EQ(S_FALSE, children->get_item(3, item.Receive()));
  EXPECT_EQ(nullptr, item.get());
  EXPECT_EQ(E_INVALIDARG, children->get_item(-1, item.Receive()));
  EXPECT_EQ(S_OK, root->put_text(nullptr));
  EXPECT_EQ(S_FALSE, children->get_item(0, item.Receive()));
}

TEST_F(Nodes, EachOperationCanFail) {
  const DocumentRef document = FromText("<home a='1'><b/></home>");
  const NodeRef root = Root(document);
  Ref<IXMLDOMNodeList> list;
  ASSERT_EQ(S_OK, root->get_childNodes(list.Receive()));
  IXMLDOMNamedNodeMap* const map = nullptr;
  LONG length = 0;
  const Argument text(u"x");
  const BSTR some = text.text();
  // A call that fails gives nothing.
  const auto refuses = [](auto* out, const auto& call) {
    const HRESULT status = call(&out);
    EXPECT_EQ(nullptr, out);
    return status;
  };
  using enum phone::Operation;
  const std::pair<phone::Operation, std::function<HRESULT()>> calls[] = {
      {load, [&] { return document->load(text.variant(), nullptr); }},
      {loadXML, [&] { return document->loadXML(some, nullptr); }},
      {save, [&] { return document->save(text.variant()); }},
      {get_childNodes, [&] { return refuses(list.get(), [&](auto** out) { return root->get_childNodes(out); }); }},
      {get_length, [&] { return list->get_length(&length); }},
      {get_item, [&] { return refuses(root.get(), [&](auto** out) { return list->get_item(0, out); }); }},
      {get_nodeName, [&] { return refuses(some, [&](BSTR* out) { return root->get_nodeName(out); }); }},
      {get_attributes, [&] { return refuses(map, [&](auto** out) { return root->get_attributes(out); }); }},
      {get_text, [&] { return refuses(some, [&](BSTR* out) { return root->get_text(out); }); }},
      {put_text, [&] { return root->put_text(some); }},
      {get_xml, [&] { return refuses(some, [&](BSTR* out) { return root->get_xml(out); }); }},
      {get_firstChild, [&] { return refuses(root.get(), [&](auto** out) { return root->get_firstChild(out); }); }},
      {cloneNode, [&] { return refuses(root.get(), [&](auto** out) { return root->cloneNode(-1, out); }); }},
      {appendChild, [&] { return root->appendChild(root.get(), nullptr); }},
  };
  for (const auto& [operation, call] : calls) {
    phone::ResetFaults();
    phone::SetFault(operation, 1, 0);
    EXPECT_EQ(E_FAIL, call()) << phone::OperationName(operation);
    EXPECT_EQ(1U, phone::CallCount(operation)) << phone::OperationName(operation);
  }
  EXPECT_EQ("<home a=\"1\"><b/></home>\n", XmlOf(document.get())) << "and nothing has changed";
}

TEST_F(Nodes, CountedStringsKeepTheirLength) {
  EXPECT_EQ(nullptr, SysAllocString(nullptr));
  EXPECT_EQ(0U, SysStringLen(nullptr));
  const BSTR text = SysAllocString(u"ab\U0001F600");
  EXPECT_EQ(4U, SysStringLen(text));
  EXPECT_EQ(0, text[4]);
  SysFreeString(text);
  SysFreeString(nullptr);
}

}  // namespace
