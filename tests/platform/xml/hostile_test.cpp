#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "dom.h"

namespace {

class HostileDocuments : public DomFiles {};

std::string Repeat(int count, const std::function<std::string(int)>& part) {
  std::string text;
  for (int i = 0; i < count; ++i) text += part(i);
  return text;
}

/// A text with a number in it.
std::string Numbered(const char* before, int number, const char* after) {
  return before + std::to_string(number) + after;
}

/// Documents that are small, and well formed but for one, over which libxml2 by itself would be busy for minutes.
std::vector<std::string> Laborious() {
  const auto values = Repeat(100'000, [](int i) { return Numbered(" a", i, "=''"); });
  const auto defaults = Repeat(2'000, [](int i) { return Numbered("<!ATTLIST a a", i, " CDATA ''>"); });
  const auto some_defaults = Repeat(1'000, [](int i) { return Numbered("<!ATTLIST a a", i, " CDATA ''>"); });
  const auto elements = Repeat(10'000, [](int) { return "<a/>"; });
  const auto alternatives = Repeat(100'000, [](int i) { return Numbered("|a", i, ""); });
  const auto names = Repeat(3'000, [](int i) { return Numbered(" xmlns:a", i, "='u'"); });
  const auto parameters = Repeat(3'000, [](int i) { return Numbered("|%p;|a", i, ""); });
  return {
      "<home" + values + "/>",
      "<!DOCTYPE home [<!ENTITY c '<!-- \"'>]><home" + values + "/>",
      "<!DOCTYPE home [<!ENTITY e \"<a" + values + "/>\">]><home>&e;</home>",
      "<!DOCTYPE home [" + defaults + "]><home>" + elements + "</home>",
      "<!DOCTYPE home [" + some_defaults + "]><home>" + elements + "</home>",
      "<!DOCTYPE home [" + some_defaults + "]><home>&undeclared;" + elements + "</home>",
      "<!DOCTYPE home [<!ELEMENT home><!x>" + defaults + "]><home>" + elements + "</home>",
      "<!DOCTYPE home [<!ENTITY e '" + elements + "'>" + some_defaults + "]><home>&e;</home>",
      "<!DOCTYPE home [<!ATTLIST home a (x" + alternatives + ") #IMPLIED>]><home/>",
      "<!DOCTYPE home [<!ENTITY % p '<!ATTLIST home a (x" + alternatives + ") #IMPLIED>'> %p;]><home/>",
      "<!DOCTYPE home [<!ENTITY % p 'x" + parameters +
          "'> <!ENTITY % q '<!ATTLIST home a (%p;) #IMPLIED>'>%q;]><home/>",
      "<home" + names + ">" + Repeat(100'000, [](int) { return "<a1:b/>"; }) + "</home>",
  };
}

TEST_F(HostileDocuments, DoNotLoad) {
  std::string nest;
  for (int i = 0; i < 200'000; ++i) nest += "<a>";
  std::vector<std::string> documents = {
      "",
      "<home>",
      "<home></home>x",
      "<home>&undeclared;</home>",
      "<home><!-- -- --></home>",
      std::string("\xFF\xFE<\0a\0/\0>\0\0\0", 12),
      "\xFF\xFE<" + std::string(1, '\0') + "\x3D\xD8",
      "<home>\xFF</home>",
      "<home a='1' a='2'/>",
      "<p:home/>\xC0\x80",
      std::string("<home/>\0<lost/>", 15),
      "\xEF\xBB\xBF\xEF\xBB\xBF<home/>",
      "<!DOCTYPE home SYSTEM 'home.dtd'><home a='&outside;'/>",
      "<?xml version='1.0' encoding='UTF-16'?><home/>",
      "<?xml version='1.0' encoding='x-nothing'?><home/>",
      "<?xml version='1.0' encoding='US-ASCII'?><home>\x80</home>",
      "<?xml version='1.0' encoding='Shift_JIS'?><home>\x83</home>",
      "<?xml version='1.0' encoding='../../etc/passwd'?><home/>",
      "<!DOCTYPE home [<!ENTITY a '&b;'><!ENTITY b '&a;'>]><home>&a;</home>",
      nest,
      "<home a=\"" + std::string(50'000'000, 'x') + "\"/>",
  };
  for (std::string& document : Laborious()) documents.push_back(std::move(document));
  for (const std::string& document : documents) {
    Put("in.xml", document);
    const DocumentRef loaded = FromText("<old/>");
    EXPECT_FALSE(Load(loaded, "in.xml")) << document.substr(0, 80);
    NodeRef first;
    EXPECT_EQ(S_FALSE, loaded->get_firstChild(first.Receive())) << "a failed load leaves nothing";
  }
  const DocumentRef missing = NewDocument();
  EXPECT_FALSE(Load(missing, "missing.xml"));
}

TEST_F(HostileDocuments, NeitherExplodeNorReachOutside) {
  const DocumentRef external = FromText("<!DOCTYPE home [<!ENTITY e SYSTEM 'file:///etc/passwd'>]><home>[&e;]</home>");
  EXPECT_EQ("[]", ContentOf(Root(external).get()));

  // A text is cut short between characters, and what many texts take together is bounded too.
  const DocumentRef large = FromText("<!DOCTYPE h [<!ENTITY e 'x" + Repeat(40'000, [](int) { return "\xC3\xA9"; }) +
                                     "'>]><h a='&e;'>1&e;2&e;</h>");
  const NodeRef home = Root(large);
  const std::string cut = ContentOf(home.get());
  EXPECT_EQ("1x\xC3\xA9", cut.substr(0, 4));
  EXPECT_EQ("\xC3\xA9", cut.substr(cut.size() - 2));
  EXPECT_NEAR(65'536.0, static_cast<double>(cut.size()), 4.0);
  for (int i = 0; i < 300; ++i) ContentOf(home.get());
  EXPECT_EQ("1", ContentOf(home.get()));
  EXPECT_NE(std::string::npos, XmlOf(large.get()).find("<h a=\"&e;\">1&e;2&e;</h>"));

  std::string bomb = "<!DOCTYPE home [<!ENTITY e0 'lol'>";
  for (int i = 1; i < 30; ++i) {
    const std::string inner = "&e" + std::to_string(i - 1) + ";";
    bomb += "<!ENTITY e" + std::to_string(i) + " '" + inner + inner + inner + inner + "'>";
  }
  bomb += "]><home><title a='&e29;'>&e29;</title></home>";
  const DocumentRef document = NewDocument();
  if (!LoadText(document, bomb)) return;  // the parser's own bound may come first
  const NodeRef root = Root(document);
  EXPECT_LT(ContentOf(root.get()).size(), 2'000'000U);
  EXPECT_LT(XmlOf(root.get()).size(), 10'000'000U);
}

}  // namespace
