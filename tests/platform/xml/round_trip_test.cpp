#include <string>
#include <string_view>

#include "dom.h"

namespace {

using namespace std::string_view_literals;

class RoundTrips : public DomFiles {};

TEST_F(RoundTrips, KeepWhatTheWriterDoesNotChange) {
  // Each comes back byte for byte, but for the line break after each top-level node.
  const std::string_view documents[] = {
      "<home/>\n",
      "<?xml version=\"1.0\"?>\n<home/>\n",
      "<?xml version='1.0' encoding='utf-8' standalone=\"yes\"?>\n<home>\xE4\xB8\xAD \xF0\x9F\x98\x80</home>\n",
      "<!-- a & b -->\n<?pi x < y?>\n<home>\n\t<title lang=\"0x0409\">T</title>\n <!--c--> \n<?in side "
      "?></home>\n<!--z-->\n",
      "<home> \n <a> </a>\n</home>\n",
      "<home><a x=\"&lt;&amp;&quot;'&#10;&#9;&#13;\">&lt;&amp;&gt;\"'&#13;</a></home>\n",
      "<home><a><![CDATA[<raw> & ]]]]><![CDATA[>]]></a><b><![CDATA[one]]><![CDATA[two]]><![CDATA[]]></b></home>\n",
      "<home z=\"1\" a=\"2\" M=\"3\"><plugin name=\"n\" clsid=\"{1}\"/></home>\n",
      "<home xmlns=\"u:1\" xmlns:p=\"u:2\" p:a=\"1\"><plugin p:b=\"2\"><p:c xmlns:q=\"u:3\" "
      "q:d=\"3\"/></plugin></home>\n",
      "<p:home xmlns:p=\"u:1\"><plugin/><p:plugin xmlns=\"u:2\"><x/><y xmlns=\"\"/></p:plugin></p:home>\n",
      "<home xmlns=\"u:1\"><plugin xmlns=\"u:1\"/><plugin xmlns=\"\"><x/></plugin></home>\n",
      "<home xmlns=\"x'y\" xmlns:p=\"&#60;&#38;&#34;'&#10;&#9;&#13;>\"><p:a xmlns:q=\"&#60;\" q:b=\"\"/></home>\n",
      "<home xml:lang=\"de\"><a xml:space=\"preserve\"> </a></home>\n",
      "<!DOCTYPE home>\n<home/>\n",
      "<!DOCTYPE home SYSTEM \"http://127.0.0.1/home.dtd\">\n<home/>\n",
      "<!DOCTYPE home PUBLIC \"-//X//Y\" 'a\"b'>\n<home/>\n",
      "<!DOCTYPE home SYSTEM \"home.dtd\">\n<home>&outside;<a>1&outside;2</a></home>\n",
      "<!DOCTYPE home [\n <!-- > ]> -->\n <!ENTITY e 'v<b>w</b>'>  <!ELEMENT home ANY>\n"
      " <!ATTLIST home d CDATA \"def\" id ID #IMPLIED>\n <?pi ]?> ]>\n<home id=\"i\" a=\"1 &lt;\">1&e;2 &e;</home>\n",
      "<!DOCTYPE html PUBLIC \"-//W3C//DTD XHTML 1.0 Strict//EN\" "
      "\"http://www.w3.org/TR/xhtml1/DTD/xhtml1-strict.dtd\">\n"
      "<html xmlns=\"http://www.w3.org/1999/xhtml\"><head/><body><br/></body></html>\n",
  };
  for (const std::string_view document : documents) EXPECT_EQ(document, RoundTrip(document));
}

TEST_F(RoundTrips, KeepReferencesToEntitiesInAttributes) {
  constexpr auto kDocument = "<!DOCTYPE home [<!ENTITY e 'v'>]>\n<home a=\"1 &e; 2\"><b c=\"&e;\"/>&e;</home>\n";
  EXPECT_EQ(kDocument, RoundTrip(kDocument));
}

TEST_F(RoundTrips, WriteDefaultNamespacesWhole) {
  const std::string doctype =
      "<!DOCTYPE home [<!ATTLIST home xmlns CDATA #FIXED \"a&#60;b\"><!ENTITY e '<i "
      "xmlns:p=\"&#38;#60;\"/>'>]>\n";
  EXPECT_EQ(doctype + "<home xmlns=\"a&#60;b\">&e;</home>\n", RoundTrip(doctype + "<home>&e;</home>"));
  EXPECT_EQ("<home xmlns=\"a&#60;b\"><i xmlns:p=\"&#60;\"/></home>",
            XmlOf(Root(FromText(doctype + "<home>&e;</home>")).get()));
}

TEST_F(RoundTrips, KeepEncodings) {
  const std::string_view documents[] = {
      "<?xml version=\"1.0\" encoding=\"windows-1252\"?>\n<!--\x80-->\n<home a=\"\xE9\">\x80\xFC</home>\n",
      "<?xml version=\"1.0\" encoding=\"ISO-8859-5\"?>\n<home>\xD0\xD1\xD2</home>\n",
      "<?xml version=\"1.0\" encoding=\"Shift_JIS\"?>\n<home>\x83\x5C\x83\x8B</home>\n",
      "<?xml version=\"1.0\" encoding=\"GBK\"?>\n<home \xD6\xD0=\"\xB9\xFA\"/>\n",
      "\xFF\xFE<\0?\0x\0m\0l\0 \0v\0e\0r\0s\0i\0o\0n\0=\0'\0001\0.\0000\0'\0 \0e\0n\0c\0o\0d\0i\0n\0g\0=\0'\0"
      "U\0T\0F\0-\0001\0006\0'\0?\0>\0\n\0<\0h\0o\0m\0e\0>\0-\x4E<\0/\0h\0o\0m\0e\0>\0\n\0"sv,
  };
  for (const std::string_view document : documents) EXPECT_EQ(document, RoundTrip(document));
  for (const char* const name : {"UCS-2", "unicode", "UnicodeLittle", "ISO-10646-UCS-4"}) {
    const std::string document =
        std::string("<?xml version=\"1.0\" encoding=\"") + name + "\"?>\n<home>\xC3\xA9</home>\n";
    ASSERT_EQ(S_OK, Save(FromText(document), "in.xml")) << name;
    const DocumentRef loaded = NewDocument();
    ASSERT_TRUE(Load(loaded, "in.xml")) << name;
    EXPECT_EQ(document, XmlOf(loaded.get())) << name;
    ASSERT_EQ(S_OK, Save(loaded, "out.xml")) << name;
    EXPECT_EQ(Get("in.xml"), Get("out.xml")) << name;
  }
}

TEST_F(RoundTrips, ReadByteOrderMarks) {
  EXPECT_EQ("<home>\xC3\xA9</home>\n", RoundTrip("\xEF\xBB\xBF<home>\xC3\xA9</home>"));
  EXPECT_EQ("<home>\xC3\xA9</home>\n", RoundTrip("\xFE\xFF\0<\0h\0o\0m\0e\0>\0\xE9\0<\0/\0h\0o\0m\0e\0>"sv));
  EXPECT_EQ("<a/>\n", RoundTrip("\xFF\xFE<\0a\0/\0>\0"sv));
  std::string wide("\xFF\xFE<\0a\0>\0", 8);
  std::string text = "<a>";
  for (int i = 0; i < 20'000; ++i) {
    wide += "\x3D\xD8\x0D\xDE";
    text += "\xF0\x9F\x98\x8D";
  }
  EXPECT_EQ(text + "</a>\n", RoundTrip(wide.append("<\0/\0a\0>\0"sv)));
}

TEST_F(RoundTrips, WriteReferencesForWhatTheEncodingCannotHold) {
  const std::string declaration = "<?xml version=\"1.0\" encoding=\"windows-1252\"?>\n";
  // The text of a loaded string is decoded already, whatever encoding it declares.
  const auto save = [&](const std::string& content) {
    const DocumentRef document = FromText(declaration + content);
    return SUCCEEDED(Save(document, "out.xml")) ? Get("out.xml") : "(not saved)";
  };
  EXPECT_EQ(declaration + "<a b=\"&#20013;'&gt;\">\xE9&#128512;<![CDATA[<x]]>&#20013;<![CDATA[y>]]></a>\n",
            save("<a b=\"\xE4\xB8\xAD'>\">\xC3\xA9\xF0\x9F\x98\x80<![CDATA[<x\xE4\xB8\xADy>]]></a>"));
  EXPECT_EQ("(not saved)", save("<\xE4\xB8\xAD/>"));
  EXPECT_EQ("(not saved)", save("<a><!--\xE4\xB8\xAD--></a>"));
  EXPECT_EQ("(not saved)", save("<?pi \xE4\xB8\xAD?><a/>"));
}

TEST_F(RoundTrips, AnUnknownEncodingIsNotWritten) {
  Put("out.xml", "old");
  const DocumentRef document = FromText("<?xml version=\"1.0\" encoding=\"x-nothing\"?><home/>");
  EXPECT_EQ(E_FAIL, Save(document, "out.xml"));
  EXPECT_EQ("old", Get("out.xml"));
  EXPECT_EQ(E_FAIL, Save(NewDocument(), "out.xml")) << "a document without a root";
  EXPECT_EQ("old", Get("out.xml"));
}

/// Parts that can be read may make a whole that cannot.
TEST_F(RoundTrips, WhatCouldNotBeReadAgainIsNotWritten) {
  constexpr int kLevels = 240;
  std::string deep = "<a/>", crowded = "<a/>", text = "<a>";
  for (int i = 1; i < kLevels; ++i) deep = "<a>" + deep + "</a>";
  for (int i = 0; i < 4'096; ++i) crowded.insert(2, " x" + std::to_string(i) + "=''");
  for (int i = 0; i < 3'000'000; ++i) text += "\xC3\xA9";
  text += "</a>";
  const struct {
    std::string home;
    std::string part;
    int levels;  ///< between the place of a part and that of the next one
    int copies;
  } wholes[] = {
      {"<home/>", deep, kLevels, 2},
      {"<home/>", crowded, 0, 5},
      {"<home xmlns='u'/>", crowded, 0, 1},
      {"<home/>", text, 0, 2},
  };
  for (const auto& whole : wholes) {
    SCOPED_TRACE(whole.part.substr(0, 20));
    const DocumentRef document = FromText(whole.home);
    NodeRef parent = Root(document);
    for (int i = 0; i < whole.copies; ++i) {
      EXPECT_EQ(S_OK, Save(document, "out.xml")) << i;
      NodeRef part = Clone(Root(FromText(whole.part)).get());
      if (whole.part == text) part = Child(part.get(), 0);
      ASSERT_EQ(S_OK, parent->appendChild(part.get(), nullptr));
      for (int level = 0; level < whole.levels; ++level) parent = Child(parent.get(), 0);
    }
    const std::string before = Get("out.xml");
    EXPECT_EQ(E_FAIL, Save(document, "out.xml"));
    EXPECT_TRUE(before == Get("out.xml"));
  }
}

TEST_F(RoundTrips, ErrorsOfTheFileSystemAreGivenOn) {
  const DocumentRef document = FromText("<home/>");
  EXPECT_EQ(HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND), Save(document, "nowhere\\out.xml"));
  EXPECT_EQ(E_INVALIDARG, document->save(VARIANT{}));
}

}  // namespace
