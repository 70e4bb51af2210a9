#include "theme_test.h"

namespace {

TEST(ThemeTitle, FollowsLanguageAndOrder) {
  const std::string longest(254, 'x');
  const struct {
    std::u16string home;
    std::string title;
  } cases[] = {
      {u"<home/>", "Unknow"},
      {u"<home><title lang='0x0407'>Eins</title><title>One</title></home>", "One"},
      {u"<home><title>Plain</title><title lang='0x0409'>English</title></home>", "English"},
      {u"<home><title lang='0x0409'>English</title><title>Plain</title></home>", "English"},
      {u"<HOME><Title Lang='0X0409'>English</Title><title>Plain</title></HOME>", "English"},
      {u"<home><title lang='0x0407'>Eins</title><title lang='0x040c'>Un</title></home>", "Eins"},
      {u"<home><title/><title>First</title><title>Second</title></home>", "First"},
      {u"<home><title lang='0x0407'>Eins</title><title lang='0x0409'/><title>Late</title></home>", "Eins"},
      {u"<home><title>Plain</title><title lang='0x0409'/></home>", "Plain"},
      {u"<home><title lang=''>Empty language</title><title>None</title></home>", "None"},
      {u"<home><group><title>Nested</title></group></home>", "Unknow"},
      {u"<home><?title Instruction?><!--title--><title>Element</title></home>", "Element"},
      {u"<home><title> a <b>b</b>&amp;<![CDATA[<c>]]> </title></home>", " a b&<c> "},
      {u"<home><title>" + std::u16string(254, u'x') + u"\U0001F30A</title></home>", longest},  // outside of pairs
  };
  OnPhone([&](TestHost&, const auto&) {
    for (const auto& test : cases) {
      const auto document = Parse(test.home);
      TextField title;
      EXPECT_EQ(ReadThemeTitle(Root(document).get(), title), S_OK);
      EXPECT_EQ(Utf8(title.units), test.title) << Utf8(test.home);
    }
  });
}

TEST(ThemeTitle, IsWrittenAfterAFailureToo) {
  OnPhone([](TestHost&, const auto&) {
    const auto document = Parse(u"<home><title lang='de'>Eins</title><title lang='0x0409'>One</title></home>");
    const auto home = Root(document);
    TextField title;
    for (const Operation operation : {Operation::get_attributes, Operation::get_text}) {
      phone::SetFault(operation, 1, operation == Operation::get_text ? 2 : 1);
      EXPECT_TRUE(FAILED(ReadThemeTitle(home.get(), title)));
      EXPECT_EQ(Utf8(title.units), "Eins");
    }
    phone::SetFault(Operation::get_childNodes, 1, 0);
    EXPECT_TRUE(FAILED(ReadThemeTitle(home.get(), title)));
    EXPECT_EQ(Utf8(title.units), "Unknow");
  });
}

constexpr char16_t kPlugins[] =
    u"<home><plugin clsid='{1}' name='one' x='y'><a>b</a></plugin><title>T</title><PLUGIN NAME='two'/>"
    u"<box><plugin name='nested'/></box><?plugin name='no'?><Plugin clsid='{3}'/></home>";

TEST(ThemePlugins, AreReadWholeAndInOrder) {
  OnPhone([](TestHost&, const auto&) {
    ThemeRecord theme;
    theme.document = Parse(kPlugins);
    Ring<PluginRecord> ring;
    for (int pass = 0; pass < 2; ++pass) {
      EXPECT_EQ(ReadThemePlugins(theme, ring.head), S_OK);
      EXPECT_EQ(Fields(ring, &PluginRecord::name), (Texts{"one", "two", "Unknow"}));
      EXPECT_EQ(Fields(ring, &PluginRecord::clsid), (Texts{"{1}", "Unknow", "{3}"}));
    }
    EXPECT_EQ(XmlOf(ring.head->node.get()), "<plugin clsid=\"{1}\" name=\"one\" x=\"y\"><a>b</a></plugin>");
    theme.document = Parse(u"<house><plugin name='none'/></house>");
    EXPECT_EQ(ReadThemePlugins(theme, ring.head), S_OK);
    EXPECT_EQ(Fields(ring, &PluginRecord::name).size(), 3u);
  });
}

TEST(ThemePlugins, KeepWhatWasReadBeforeAFailure) {
  OnPhone([](TestHost&, const auto&) {
    const auto document = Parse(kPlugins);
    const auto home = Root(document);
    Ring<PluginRecord> ring;
    const struct {
      Operation operation;
      std::uint64_t after;
      Texts names;
      bool fails;
    } cases[] = {
        {Operation::cloneNode, 1, {"one"}, true},
        {Operation::Allocation, 2, {"one", "two"}, true},
        {Operation::get_childNodes, 0, {}, true},
        {Operation::get_attributes, 0, {"Unknow", "two", "Unknow"}, false},
        {Operation::get_text, 0, {"Unknow", "two", "Unknow"}, false},
    };
    for (const auto& test : cases) {
      phone::SetFault(test.operation, 1, test.after);
      EXPECT_EQ(FAILED(ReadHomePlugins(home.get(), ring.head)), test.fails);
      EXPECT_EQ(Fields(ring, &PluginRecord::name), test.names) << phone::OperationName(test.operation);
    }
  });
}

TEST(Attributes, AreReadAndNamedWithoutRegardToCase) {
  OnPhone([](TestHost&, const auto&) {
    const auto document = Parse(u"<plugin NAME='old' other='x'/>");
    const auto element = Root(document);
    TextField text;
    EXPECT_EQ(SetNameAttribute(element.get(), TEXT("a<\"&")), S_OK);
    EXPECT_EQ(GetAttributeText(element.get(), TEXT("name"), text), S_OK);
    EXPECT_EQ(Utf8(text.units), "a<\"&");
    const auto nameless = Parse(u"<plugin other='x'/>");
    EXPECT_EQ(SetNameAttribute(Root(nameless).get(), TEXT("new")), S_OK);
    EXPECT_EQ(XmlOf(Root(nameless).get()), "<plugin other=\"x\"/>");
  });
}

}  // namespace
