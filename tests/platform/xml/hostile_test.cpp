#include <string>

#include "dom.h"

namespace {

class HostileDocuments : public DomFiles {};

TEST_F(HostileDocuments, DoNotLoad) {
  std::string nest;
  for (int i = 0; i < 200'000; ++i) nest += "<a>";
  const std::string documents[] = {
      "",
      "<home>",
      "<home></home>x",
      "<home>&undeclared;</home>",
      "<home><!-- -- --></home>",
      "<home>\xFF</home>",
      "<home a='1' a='2'/>",
      "<p:home/>\xC0\x80",
      "<?xml version='1.0' encoding='UTF-16'?><home/>",
      "<?xml version='1.0' encoding='x-nothing'?><home/>",
      "<?xml version='1.0' encoding='US-ASCII'?><home>\x80</home>",
      "<?xml version='1.0' encoding='Shift_JIS'?><home>\x83</home>",
      "<?xml version='1.0' encoding='../../etc/passwd'?><home/>",
      "<!DOCTYPE home [<!ENTITY a '&b;'><!ENTITY b '&a;'>]><home>&a;</home>",
      nest,
      "<home a=\"" + std::string(50'000'000, 'x') + "\"/>",
  };
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
