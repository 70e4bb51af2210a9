#include "themes/writer.h"

#include "theme_test.h"

namespace {

constexpr LPCWSTR kTarget = TEXT("\\Application Data\\Home\\new.home.xml");

constexpr char kLayout[] =
    "<?xml version=\"1.0\" encoding=\"utf-8\"?><!--before--><?look here?><Home version=\"1\">"
    "<plugin name=\"a\"/><title lang=\"0x0409\">Old <b>one</b></title><!--inside-->"
    "<Plugin name=\"b\"><x>1 &lt; 2</x></Plugin><Title lang=\"0x0407\">Alt</Title><box><plugin name=\"deep\"/>"
    "<title>kept</title></box><plugin name=\"c\"/></Home><!--after-->";

/// An open theme: its file, read back, and the list of its plug-ins.
class OpenTheme {
 public:
  explicit OpenTheme(const std::filesystem::path& folder) : home_(HomeFolder(folder)) {
    WriteFile(home_ / "old.home.xml", kLayout);
    EXPECT_EQ(LoadXmlFile(TEXT("\\Application Data\\Home\\old.home.xml"), theme_.document), S_OK);
    EXPECT_EQ(ReadThemePlugins(theme_, plugins_.head), S_OK);
  }

  /// Saves with the plug-ins of these numbers, in this order.
  HRESULT Save(LPCWSTR title, const std::vector<int>& order) {
    CScrollList list;
    for (const int number : order) {
      PluginRecord* record = plugins_.head;
      for (int i = 0; i < number; ++i) record = record->next;
      EXPECT_EQ(list.AddItem(record->name, 0, record), S_OK);
    }
    return WriteThemeFile(theme_.document.get(), title, kTarget, &list);
  }

  std::string Saved() const { return ReadFile(home_ / "new.home.xml"); }
  std::string Source() const { return XmlOf(theme_.document.get()); }
  ThemeRecord& theme() { return theme_; }
  PluginRecord* plugins() { return plugins_.head; }

 private:
  std::filesystem::path home_;
  ThemeRecord theme_;
  Ring<PluginRecord> plugins_;
};

TEST(Writer, KeepsEverythingButTitlesAndPlugins) {
  OnPhone([](TestHost&, const std::filesystem::path& folder) {
    OpenTheme theme(folder);
    const std::string before = theme.Source();
    ASSERT_EQ(theme.Save(TEXT("R & D"), {2, 0}), S_OK);
    std::string saved = theme.Saved();
    std::erase_if(saved, [](char c) { return c == '\n' || c == '\r'; });
    EXPECT_EQ(saved,
              "<?xml version=\"1.0\" encoding=\"utf-8\"?><!--before--><?look here?><Home version=\"1\">"
              "<title lang=\"0x0409\">R &amp; D</title><!--inside--><Title lang=\"0x0407\">R &amp; D</Title>"
              "<box><plugin name=\"deep\"/><title>kept</title></box><plugin name=\"c\"/><plugin name=\"a\"/></Home>"
              "<!--after-->");
    EXPECT_EQ(theme.Source(), before);
    ASSERT_EQ(WriteThemeFile(theme.theme().document.get(), TEXT("None"), kTarget, nullptr), S_OK);
    EXPECT_EQ(theme.Saved().find("name=\"a\""), std::string::npos);
  });
}

TEST(Writer, FailsWithoutTouchingTheTarget) {
  OnPhone([](TestHost&, const std::filesystem::path& folder) {
    OpenTheme theme(folder);
    WriteFile(HomeFolder(folder) / "new.home.xml", "what was there");
    const std::pair<Operation, std::uint64_t> faults[] = {
        {Operation::get_childNodes, 0}, {Operation::get_length, 0}, {Operation::get_item, 0},
        {Operation::get_nodeName, 0},   {Operation::cloneNode, 6},
    };
    for (const auto& [operation, after] : faults) {
      phone::SetFault(operation, 1, after);
      EXPECT_TRUE(FAILED(theme.Save(TEXT("New"), {0, 1}))) << phone::OperationName(operation);
      phone::SetFault(operation, 0, 0);
    }
    theme.plugins()->node.Reset();
    EXPECT_EQ(theme.Save(TEXT("New"), {1, 0}), E_OUTOFMEMORY);
    EXPECT_EQ(WriteThemeFile(nullptr, TEXT("New"), kTarget, nullptr), E_OUTOFMEMORY);
    EXPECT_EQ(theme.Saved(), "what was there");
    EXPECT_TRUE(FAILED(WriteThemeFile(theme.theme().document.get(), TEXT("New"), TEXT("\\missing\\x"), nullptr)));
  });
}

}  // namespace
