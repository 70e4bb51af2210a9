#include "themes/favorites.h"

#include <cstring>

#include "theme_test.h"

namespace {

constexpr LPCWSTR kFolder = TEXT("\\Plugins");
constexpr LPCWSTR kClock = TEXT("\\Plugins\\Clock.plg");

/// A field of the header: the text and zeros, as bytes.
std::string Field(std::u16string text) {
  text.resize(256);
  return {reinterpret_cast<const char*>(text.data()), 512};
}

/// A favourite file; `count` as the header tells it.
std::string Favorite(const std::u16string& text, std::uint32_t count) {
  std::string bytes = Field(u"Clock") + Field(u"{1}");
  bytes.append(reinterpret_cast<const char*>(&count), sizeof count);
  return bytes.append(reinterpret_cast<const char*>(text.data()), text.size() * 2);
}

/// The same, as it should be: the text with its zero, and their number.
std::string Favorite(std::u16string text) {
  text.push_back(u'\0');
  return Favorite(text, static_cast<std::uint32_t>(text.size()));
}

PluginRecord Plugin(std::u16string_view xml) {
  PluginRecord record;
  const auto document = Parse(xml);
  EXPECT_EQ(document->get_firstChild(record.node.Receive()), S_OK);
  record.clsid.Assign(TEXT("a longer text that was here"));
  record.clsid.Assign(TEXT("{1}"));
  return record;
}

TEST(Favorites, HaveTheirByteLayout) {
  OnPhone([](TestHost&, const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder / "Plugins");
    PluginRecord plugin = Plugin(u"<plugin clsid='{1}' NAME='was'><a>\u0416 &lt;</a></plugin>");
    ASSERT_EQ(WriteFavorite(kClock, TEXT("Clock"), plugin), S_OK);
    EXPECT_EQ(ReadBytes(folder / "Plugins" / "Clock.plg"),
              Favorite(u"<plugin clsid=\"{1}\" NAME=\"Clock\"><a>\u0416 &lt;</a></plugin>"));
    EXPECT_EQ(XmlOf(plugin.node.get()).find("Clock"), std::string::npos);
    PluginRecord added = Plugin(u"<plugin/>");
    added.clsid.Assign(TEXT(""));
    ASSERT_EQ(WriteFavorite(kClock, TEXT("Clock"), added), S_OK);
    EXPECT_EQ(ReadBytes(folder / "Plugins" / "Clock.plg").substr(512, 512), Field(u""));
  });
}

TEST(Favorites, KeepTheOldFileWhenWritingFails) {
  OnPhone([](TestHost&, const std::filesystem::path& folder) {
    WriteBytes(folder / "Plugins" / "Clock.plg", "what was there");
    PluginRecord plugin = Plugin(u"<plugin name='was'>" + std::u16string(100'000, u'x') + u"</plugin>");
    for (const Operation operation : {Operation::_wfopen, Operation::fwrite, Operation::fclose, Operation::rename}) {
      phone::SetFault(operation, 1, 0);
      EXPECT_EQ(WriteFavorite(kClock, TEXT("Clock"), plugin), E_OUTOFMEMORY) << phone::OperationName(operation);
      phone::SetFault(operation, 0, 0);
    }
    for (const Operation operation : {Operation::cloneNode, Operation::put_text, Operation::get_xml}) {
      phone::SetFault(operation, 1, 0);
      EXPECT_TRUE(FAILED(WriteFavorite(kClock, TEXT("Clock"), plugin))) << phone::OperationName(operation);
    }
    plugin.node.Reset();
    EXPECT_EQ(WriteFavorite(kClock, TEXT("Clock"), plugin), E_OUTOFMEMORY);
    EXPECT_EQ(ReadBytes(folder / "Plugins" / "Clock.plg"), "what was there");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder / "Plugins"), {}), 1);
  });
}

TEST(Favorites, AreListedByTheirFileNames) {
  OnPhone([](TestHost&, const std::filesystem::path& folder) {
    Ring<PluginRecord> ring;
    EXPECT_EQ(LoadFavorites(kFolder, ring.head), S_OK);
    EXPECT_EQ(ring.head, nullptr);
    WriteBytes(folder / "Plugins" / "b.PLG", "");
    WriteBytes(folder / "Plugins" / " a.x .plg", "");
    WriteBytes(folder / "Plugins" / "c.plgx", "");
    std::filesystem::create_directories(folder / "Plugins" / "d.plg");
    EXPECT_EQ(LoadFavorites(kFolder, ring.head), S_OK);
    EXPECT_EQ(Fields(ring, &PluginRecord::name), (Texts{" a.x ", "b"}));
    EXPECT_EQ(Fields(ring, &PluginRecord::clsid), (Texts{"\\Plugins\\ a.x .plg", "\\Plugins\\b.PLG"}));
    phone::SetFault(Operation::FindFirstFileW, 1, 0);
    EXPECT_EQ(LoadFavorites(kFolder, ring.head), E_OUTOFMEMORY);
  });
}

TEST(Favorites, AreReadBack) {
  const std::u16string longText = u"<plugin>" + std::u16string(50'000, u'\u0416') + u"</plugin>";
  OnPhone([&](TestHost&, const std::filesystem::path& folder) {
    for (const std::u16string& text : {std::u16string(u"<PlugIn a=\"b\"/>"), longText}) {
      WriteBytes(folder / "Plugins" / "Clock.plg", Favorite(text) + "bytes that nobody reads");
      StoredPlugin stored;
      ASSERT_EQ(ReadFavorite(kClock, stored), S_OK);
      EXPECT_EQ(Utf8(stored.name.units), "Clock");
      EXPECT_EQ(XmlOf(stored.record->node.get()), Utf8(text));
    }
    std::string endless = Favorite(u"<plugin/>");
    std::memset(endless.data(), 'n', 512);
    WriteBytes(folder / "Plugins" / "Clock.plg", endless);
    StoredPlugin stored;
    ASSERT_EQ(ReadFavorite(kClock, stored), S_OK);
    EXPECT_EQ(lstrlenW(stored.name), 255);
  });
}

TEST(Favorites, AreRefusedWhenDamaged) {
  const std::string good = Favorite(u"<plugin/>");
  const std::pair<const char*, std::string> cases[] = {
      {"empty", ""},
      {"half a header", good.substr(0, 700)},
      {"header only", good.substr(0, 1028)},
      {"text cut off", good.substr(0, good.size() - 2)},
      {"odd byte missing", good.substr(0, good.size() - 1)},
      {"count 0", Favorite(std::u16string(u"<plugin/>\0", 10), 0)},
      {"count larger than the data", Favorite(std::u16string(u"<plugin/>\0", 10), 11)},
      {"hostile count", Favorite(std::u16string(u"<plugin/>\0", 10), 0xFFFFFFFF)},
      {"no zero at the end", Favorite(u"<plugin/>", 9)},
      {"text without content", Favorite(u"")},
      {"not well formed", Favorite(u"<plugin>")},
      {"another element", Favorite(u"<title/>")},
      {"a comment first", Favorite(u"<!--c--><plugin/>")},
      {"half a surrogate pair", Favorite(std::u16string(u"<plugin>") + char16_t{0xD800} + u"</plugin>")},
  };
  OnPhone([&](TestHost&, const std::filesystem::path& folder) {
    for (const auto& [what, bytes] : cases) {
      WriteBytes(folder / "Plugins" / "Clock.plg", bytes);
      StoredPlugin stored;
      EXPECT_EQ(ReadFavorite(kClock, stored), E_FAIL) << what;
      EXPECT_FALSE(stored.record) << what;
    }
    StoredPlugin stored;
    EXPECT_EQ(ReadFavorite(TEXT("\\Plugins\\missing.plg"), stored), E_OUTOFMEMORY);
    WriteBytes(folder / "Plugins" / "Clock.plg", good);
    for (const Operation operation : {Operation::_wfopen, Operation::fread, Operation::loadXML,
                                      Operation::get_firstChild, Operation::cloneNode, Operation::Allocation}) {
      phone::SetFault(operation, 1, 0);
      EXPECT_TRUE(FAILED(ReadFavorite(kClock, stored))) << phone::OperationName(operation);
      phone::SetFault(operation, 0, 0);
    }
  });
}

TEST(Favorites, AreAddedAsTheLastRow) {
  OnPhone([](TestHost&, const std::filesystem::path& folder) {
    WriteBytes(folder / "Plugins" / "Clock.plg", Favorite(u"<plugin/>"));
    Ring<PluginRecord> ring;
    CScrollList list;
    list.SetLayout(8, 11, 10, 220, 27);
    for (int i = 1; i <= 2; ++i) {
      StoredPlugin stored;
      ASSERT_EQ(ReadFavorite(kClock, stored), S_OK);
      ASSERT_EQ(AddPluginToTheme(std::move(stored), list, ring.head), S_OK);
      EXPECT_EQ(list.GetCount(), i);
      EXPECT_EQ(list.GetSelectedData(), ring.head->prev);
      EXPECT_TRUE(ring.head->prev->name.empty() && ring.head->prev->clsid.empty());
    }
    StoredPlugin stored;
    ASSERT_EQ(ReadFavorite(kClock, stored), S_OK);
    phone::SetFault(Operation::Allocation, 1, 0);
    EXPECT_EQ(AddPluginToTheme(std::move(stored), list, ring.head), E_OUTOFMEMORY);
    EXPECT_EQ(list.GetCount(), 2);
    EXPECT_EQ(Fields(ring, &PluginRecord::name).size(), 2u);
    list.Destroy();
  });
}

}  // namespace
