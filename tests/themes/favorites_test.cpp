#include "themes/favorites.h"

#include "theme_test.h"

namespace {

constexpr LPCWSTR kClock = TEXT("\\Plugins\\Clock.plg");

/// A favourite file; `count` as the header tells it. 0: as it should be, with the text's zero.
std::string Favorite(std::u16string text, std::uint32_t count = 0) {
  if (count == 0) {
    text.push_back(u'\0');
    count = static_cast<std::uint32_t>(text.size());
  }
  std::u16string header = u"Clock";
  header.resize(256);
  header.append(u"{1}").resize(512);
  std::string bytes(reinterpret_cast<const char*>(header.data()), 1024);
  bytes.append(reinterpret_cast<const char*>(&count), sizeof count);
  return bytes.append(reinterpret_cast<const char*>(text.data()), text.size() * 2);
}

TEST(Favorites, AreWrittenWholeOrNotAtAll) {
  OnPhone([](TestHost&, const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder / "Plugins");
    PluginRecord plugin;
    plugin.node = Root(Parse(u"<plugin clsid='{1}' NAME='was'><a>\u0416 &lt;</a></plugin>"));
    plugin.clsid.Assign(TEXT("a longer text that was here"));
    plugin.clsid.Assign(TEXT("{1}"));
    ASSERT_EQ(WriteFavorite(kClock, TEXT("Clock"), plugin), S_OK);
    const std::string written = Favorite(u"<plugin clsid=\"{1}\" NAME=\"Clock\"><a>\u0416 &lt;</a></plugin>");
    EXPECT_EQ(ReadFile(folder / "Plugins" / "Clock.plg"), written);
    EXPECT_EQ(XmlOf(plugin.node.get()).find("Clock"), std::string::npos);
    phone::SetFault(Operation::put_text, 1, 0);
    EXPECT_TRUE(FAILED(WriteFavorite(kClock, TEXT("Other"), plugin)));
    plugin.node.Reset();
    EXPECT_EQ(WriteFavorite(kClock, TEXT("Other"), plugin), E_OUTOFMEMORY);
    EXPECT_EQ(ReadFile(folder / "Plugins" / "Clock.plg"), written);
  });
}

TEST(Favorites, AreListedByTheirFileNames) {
  OnPhone([](TestHost&, const std::filesystem::path& folder) {
    for (const char* const name : {"b.PLG", " a.x .plg", "c.plgx", "d.plg/e"}) WriteFile(folder / "Plugins" / name, "");
    Ring<PluginRecord> ring;
    EXPECT_EQ(LoadFavorites(TEXT("\\Plugins"), ring.head), S_OK);
    EXPECT_EQ(Fields(ring, &PluginRecord::name), (Texts{" a.x ", "b"}));
    EXPECT_EQ(Fields(ring, &PluginRecord::clsid), (Texts{"\\Plugins\\ a.x .plg", "\\Plugins\\b.PLG"}));
    phone::SetFault(Operation::FindFirstFileW, 1, 0);
    EXPECT_EQ(LoadFavorites(TEXT("\\Plugins"), ring.head), E_OUTOFMEMORY);
  });
}

TEST(Favorites, AreReadBackOrRefusedWhenDamaged) {
  const std::string good = Favorite(u"<PlugIn a=\"b\"/>");
  const std::u16string long_text = u"<plugin>" + std::u16string(50'000, u'\u0416') + u"</plugin>";
  const std::u16string terminated(u"<plugin/>\0", 10);
  const struct {
    const char* what;
    std::string bytes;
    int name;  // its length; 0 when it is refused
  } cases[] = {
      {"good", good, 5},
      {"more than is read", Favorite(long_text) + "bytes that nobody reads", 5},
      {"endless name", std::string(512, 'n') + good.substr(512), 255},
      {"header only", good.substr(0, 1028), 0},
      {"odd byte missing", good.substr(0, good.size() - 1), 0},
      {"count larger than the data", Favorite(terminated, 11), 0},
      {"hostile count", Favorite(terminated, 0xFFFFFFFF), 0},
      {"text without content", Favorite(u""), 0},
      {"empty", "", 0},
      {"no count", good.substr(0, 1024) + std::string(4, '\0') + good.substr(1028), 0},
      {"no zero at the end", Favorite(terminated, 9), 0},
      {"another element", Favorite(u"<plugim/>"), 0},
      {"no XML", Favorite(u"plugin"), 0},
      {"not well formed", Favorite(u"<plugin>"), 0},
      {"a comment first", Favorite(u"<!--c--><plugin/>"), 0},
      {"half a surrogate pair", Favorite(std::u16string(u"<plugin>") + char16_t{0xD800} + u"</plugin>"), 0},
  };
  OnPhone([&](TestHost&, const std::filesystem::path& folder) {
    for (const auto& test : cases) {
      WriteFile(folder / "Plugins" / "Clock.plg", test.bytes);
      StoredPlugin stored;
      EXPECT_EQ(ReadFavorite(kClock, stored), test.name > 0 ? S_OK : E_FAIL) << test.what;
      ASSERT_EQ(stored.record != nullptr, test.name > 0) << test.what;
      EXPECT_EQ(lstrlenW(stored.name), test.name) << test.what;
    }
    StoredPlugin stored;
    EXPECT_EQ(ReadFavorite(TEXT("\\Plugins\\missing.plg"), stored), E_OUTOFMEMORY);
    WriteFile(folder / "Plugins" / "Clock.plg", Favorite(long_text));
    for (const Operation operation : {Operation::_wfopen, Operation::fread, Operation::loadXML,
                                      Operation::get_firstChild, Operation::cloneNode, Operation::Allocation}) {
      phone::SetFault(operation, 1, 0);
      EXPECT_TRUE(FAILED(ReadFavorite(kClock, stored))) << phone::OperationName(operation);
      phone::SetFault(operation, 0, 0);
    }
    ASSERT_EQ(ReadFavorite(kClock, stored), S_OK);
    EXPECT_EQ(XmlOf(stored.record->node.get()), Utf8(long_text));
    Ring<PluginRecord> ring;
    CScrollList list;
    phone::SetFault(Operation::Allocation, 1, 0);
    EXPECT_EQ(AddPluginToTheme(std::move(stored), list, ring.head), E_OUTOFMEMORY);
    EXPECT_EQ(list.GetCount(), 0);
    EXPECT_EQ(ring.head, nullptr);
  });
}

}  // namespace
