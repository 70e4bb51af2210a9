#include "themes/writer.h"

#include "theme_test.h"

namespace {

constexpr LPCWSTR kTarget = TEXT("\\Application Data\\Home\\new.home.xml");

/// An open theme: its file, read back, and the list of its plug-ins.
class OpenTheme {
 public:
  OpenTheme(const std::filesystem::path& folder, std::string_view layout) : home_(HomeFolder(folder)) {
    WriteBytes(home_ / "old.home.xml", layout);
    EXPECT_EQ(LoadXmlFile(TEXT("\\Application Data\\Home\\old.home.xml"), theme_.document), S_OK);
    EXPECT_EQ(ReadThemePlugins(theme_, plugins_.head), S_OK);
  }

  /// Saves with the plug-ins of these numbers, in this order.
  HRESULT Save(std::u16string_view title, const std::vector<int>& order) {
    CScrollList list;
    for (const int number : order) {
      PluginRecord* record = plugins_.head;
      for (int i = 0; i < number; ++i) record = record->next;
      EXPECT_EQ(list.AddItem(record->name, 0, record), S_OK);
    }
    return WriteThemeFile(theme_.document.get(), std::u16string(title).c_str(), kTarget, &list);
  }

  std::string Saved() const { return ReadBytes(home_ / "new.home.xml"); }
  std::string Source() const { return XmlOf(theme_.document.get()); }
  ThemeRecord& theme() { return theme_; }
  PluginRecord* plugins() { return plugins_.head; }

 private:
  std::filesystem::path home_;
  ThemeRecord theme_;
  Ring<PluginRecord> plugins_;
};

constexpr char kLayout[] =
    "<?xml version=\"1.0\" encoding=\"utf-8\"?><!--before--><?look here?><Home version=\"1\">"
    "<plugin name=\"a\"/><title lang=\"0x0409\">Old <b>one</b></title><!--inside-->"
    "<Plugin name=\"b\"><x>1 &lt; 2</x></Plugin><Title lang=\"0x0407\">Alt</Title><box><plugin name=\"deep\"/>"
    "<title>kept</title></box><plugin name=\"c\"/></Home><!--after-->";

TEST(Writer, KeepsEverythingButTitlesAndPlugins) {
  OnPhone([](TestHost&, const std::filesystem::path& folder) {
    OpenTheme theme(folder, kLayout);
    const std::string before = theme.Source();
    ASSERT_EQ(theme.Save(u"R & D", {2, 0}), S_OK);
    std::string saved = theme.Saved();
    std::erase_if(saved, [](char c) { return c == '\n' || c == '\r'; });
    EXPECT_EQ(saved,
              "<?xml version=\"1.0\" encoding=\"utf-8\"?><!--before--><?look here?><Home version=\"1\">"
              "<title lang=\"0x0409\">R &amp; D</title><!--inside--><Title lang=\"0x0407\">R &amp; D</Title>"
              "<box><plugin name=\"deep\"/><title>kept</title></box><plugin name=\"c\"/><plugin name=\"a\"/></Home>"
              "<!--after-->");
    EXPECT_EQ(theme.Source(), before);
    ASSERT_EQ(theme.Save(u"Empty", {}), S_OK);
    EXPECT_EQ(theme.Saved().find("name=\"a\""), std::string::npos);
    ASSERT_EQ(WriteThemeFile(theme.theme().document.get(), TEXT("None"), kTarget, nullptr), S_OK);
    EXPECT_EQ(theme.Saved().find("name=\"a\""), std::string::npos);
  });
}

TEST(Writer, WritesInTheDeclaredEncoding) {
  const struct {
    std::string layout;
    std::u16string title;
    std::string written;
  } cases[] = {
      {"<?xml version=\"1.0\" encoding=\"iso-8859-1\"?><home><title>x</title></home>", u"\u00e9\u0416", "\xe9&#"},
      {"<home><title>x</title></home>", u"\u00e9", "<title>\xc3\xa9</title>"},
  };
  OnPhone([&](TestHost&, const std::filesystem::path& folder) {
    for (const auto& test : cases) {
      OpenTheme theme(folder, test.layout);
      ASSERT_EQ(theme.Save(test.title, {}), S_OK);
      EXPECT_NE(theme.Saved().find(test.written), std::string::npos) << theme.Saved();
      EXPECT_EQ(theme.Saved().starts_with("<?xml"), test.layout.starts_with("<?xml"));
      ThemeRecord back;
      ASSERT_EQ(LoadXmlFile(kTarget, back.document), S_OK);
      EXPECT_NE(XmlOf(back.document.get()).find(Utf8(test.title)), std::string::npos);
    }
  });
}

TEST(Writer, FailsWithoutTouchingTheTarget) {
  OnPhone([](TestHost&, const std::filesystem::path& folder) {
    OpenTheme theme(folder, kLayout);
    WriteBytes(HomeFolder(folder) / "new.home.xml", "what was there");
    for (const Operation operation :
         {Operation::CoCreateInstance, Operation::get_childNodes, Operation::get_length, Operation::get_item,
          Operation::get_nodeName, Operation::cloneNode, Operation::appendChild, Operation::put_text, Operation::save,
          Operation::rename}) {
      // The first call and a later one, where there is one.
      for (const std::uint64_t after : {0, operation == Operation::cloneNode ? 6 : 0}) {
        phone::SetFault(operation, 1, after);
        EXPECT_TRUE(FAILED(theme.Save(u"New", {0, 1}))) << phone::OperationName(operation);
        phone::SetFault(operation, 0, 0);
      }
    }
    theme.plugins()->node.Reset();
    EXPECT_EQ(theme.Save(u"New", {1, 0}), E_OUTOFMEMORY);
    EXPECT_EQ(WriteThemeFile(nullptr, TEXT("New"), kTarget, nullptr), E_OUTOFMEMORY);
    EXPECT_EQ(theme.Saved(), "what was there");
    EXPECT_TRUE(FAILED(WriteThemeFile(theme.theme().document.get(), TEXT("New"), TEXT("\\missing\\x"), nullptr)));
  });
}

}  // namespace
