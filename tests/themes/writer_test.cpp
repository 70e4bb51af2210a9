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
struct OpenTheme {
  explicit OpenTheme(const std::filesystem::path& folder) : home(HomeFolder(folder)) {
    WriteFile(home / "old.home.xml", kLayout);
    EXPECT_EQ(LoadXmlFile(TEXT("\\Application Data\\Home\\old.home.xml"), theme.document), S_OK);
    EXPECT_EQ(ReadThemePlugins(theme, plugins.head), S_OK);
  }

  /// Saves with the plug-ins of these numbers, in this order.
  HRESULT Save(LPCWSTR title, const std::vector<int>& order) {
    CScrollList list;
    for (const int number : order) {
      PluginRecord* record = plugins.head;
      for (int i = 0; i < number; ++i) record = record->next;
      EXPECT_EQ(list.AddItem(record->name, 0, record), S_OK);
    }
    return WriteThemeFile(theme.document.get(), title, kTarget, &list);
  }

  std::string Saved() const { return ReadFile(home / "new.home.xml"); }

  std::filesystem::path home;
  ThemeRecord theme;
  Ring<PluginRecord> plugins;
};

TEST(Writer, KeepsEverythingButTitlesAndPlugins) {
  OnPhone([](TestHost&, const std::filesystem::path& folder) {
    OpenTheme open(folder);
    const std::string before = XmlOf(open.theme.document.get());
    ASSERT_EQ(open.Save(TEXT("R & D"), {2, 0}), S_OK);
    std::string saved = open.Saved();
    std::erase_if(saved, [](char c) { return c == '\n' || c == '\r'; });
    EXPECT_EQ(saved,
              "<?xml version=\"1.0\" encoding=\"utf-8\"?><!--before--><?look here?><Home version=\"1\">"
              "<title lang=\"0x0409\">R &amp; D</title><!--inside--><Title lang=\"0x0407\">R &amp; D</Title>"
              "<box><plugin name=\"deep\"/><title>kept</title></box><plugin name=\"c\"/><plugin name=\"a\"/></Home>"
              "<!--after-->");
    EXPECT_EQ(XmlOf(open.theme.document.get()), before);
    ASSERT_EQ(WriteThemeFile(open.theme.document.get(), TEXT("None"), kTarget, nullptr), S_OK);
    EXPECT_EQ(open.Saved().find("name=\"a\""), std::string::npos);
  });
}

TEST(Writer, FailsWithoutTouchingTheTarget) {
  OnPhone([](TestHost&, const std::filesystem::path& folder) {
    OpenTheme open(folder);
    WriteFile(HomeFolder(folder) / "new.home.xml", "what was there");
    const std::pair<Operation, std::uint64_t> faults[] = {
        {Operation::get_childNodes, 0}, {Operation::get_length, 0}, {Operation::get_item, 0},
        {Operation::get_nodeName, 0},   {Operation::cloneNode, 6},
    };
    for (const auto& [operation, after] : faults) {
      phone::SetFault(operation, 1, after);
      EXPECT_TRUE(FAILED(open.Save(TEXT("New"), {0, 1}))) << phone::OperationName(operation);
      phone::SetFault(operation, 0, 0);
    }
    open.plugins.head->node.Reset();
    EXPECT_EQ(open.Save(TEXT("New"), {1, 0}), E_OUTOFMEMORY);
    EXPECT_EQ(WriteThemeFile(nullptr, TEXT("New"), kTarget, nullptr), E_OUTOFMEMORY);
    EXPECT_EQ(open.Saved(), "what was there");
    EXPECT_TRUE(FAILED(WriteThemeFile(open.theme.document.get(), TEXT("New"), TEXT("\\missing\\x"), nullptr)));
  });
}

}  // namespace
