#include "windows/resources.h"

#include <random>

#include "platform/windows/window_test.h"
#include "windows/text_wrap.h"

namespace {

using namespace phone;

TEST(Resources, AreFoundByTypeNameAndLanguage) {
  ResourceBlob file;
  const auto content = [](unsigned word) { return ResourceBlob().Word(word); };
  file.Entry(4, 7, content(1), 1031)
      .Entry(4, 7, content(2), 1033)
      .Entry(4, 8, content(3), 1031)
      .BarEntry(7, content(4));
  const std::vector<Resource> resources = ReadResources(file.bytes);
  ASSERT_EQ(resources.size(), 4u);
  const auto first = [](const Resource* resource) { return resource ? std::to_integer<int>(resource->content[0]) : 0; };
  EXPECT_EQ(first(FindResource(resources, WORD{4}, 7)), 2);
  EXPECT_EQ(first(FindResource(resources, WORD{4}, 8)), 3);
  EXPECT_EQ(first(FindResource(resources, u"shmenubar", 7)), 4);
  EXPECT_EQ(FindResource(resources, WORD{5}, 7), nullptr);
}

TEST(Resources, HoldStringsMenusAndBars) {
  const std::vector<std::byte> file = TestResources();
  const std::vector<Resource> resources = ReadResources(file);
  EXPECT_EQ(FindString(resources, 17), u"Über 😀");
  EXPECT_EQ(FindString(resources, 4), std::nullopt);
  EXPECT_EQ(FindString(resources, 0x10001), std::nullopt);

  const auto menu = ReadMenu(FindResource(resources, kMenuType, 20)->content);
  ASSERT_TRUE(menu);
  ASSERT_EQ(menu->size(), 2u);
  EXPECT_FALSE((*menu)[0].items.at(2).enabled);
  EXPECT_EQ((*menu)[1].command, kRightCommand);
  const auto bar = ReadMenuBar(FindResource(resources, kMenuBarType, kListBar)->content);
  ASSERT_TRUE(bar);
  EXPECT_TRUE(bar->buttons.at(0).drop_down);
  EXPECT_EQ(bar->buttons.at(1).popup, std::nullopt);
}

void ReadEverything(Bytes file) {
  const std::vector<Resource> resources = ReadResources(file);
  for (const Resource& resource : resources) {
    static_cast<void>(ReadMenu(resource.content));
    static_cast<void>(ReadMenuBar(resource.content));
  }
  for (const UINT id : {0u, 1u, 15u, 17u, 31u}) static_cast<void>(FindString(resources, id));
}

/// Files cut anywhere and with any byte changed: nothing is read outside, which the sanitizers watch.
TEST(Resources, AreNotTrusted) {
  const std::vector<std::byte> whole = TestResources();
  for (std::size_t size = 0; size < whole.size(); ++size) {
    const std::vector<std::byte> cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
    ReadEverything(cut);
    EXPECT_LT(ReadResources(cut).size(), ReadResources(whole).size());
  }
  std::mt19937 random(1);
  for (int round = 0; round < 2000; ++round) {
    std::vector<std::byte> lying = whole;
    for (int change = 0; change < 3; ++change) lying[random() % lying.size()] = static_cast<std::byte>(random());
    ReadEverything(lying);
  }
  ResourceBlob nest;
  nest.Word(0).Word(0);
  for (int depth = 0; depth < 100000; ++depth) nest.Word(0x90).Text(u"");
  EXPECT_EQ(ReadMenu(nest.bytes), std::nullopt) << "a menu of any depth";
}

using ResourceCalls = WindowTest;

TEST_F(ResourceCalls, CopyWhatFits) {
  const auto begin = [] {
    WCHAR text[10];
    EXPECT_EQ(LoadStringW(nullptr, 1, text, 4), 3);
    EXPECT_EQ(std::u16string(text), u"Opt");
    EXPECT_EQ(LoadStringW(nullptr, 17, text, 7), 5) << "not inside a surrogate pair";
    EXPECT_EQ(LoadStringW(nullptr, 99, text, 10), 0);
    EXPECT_EQ(text[0], 0);
    EXPECT_EQ(LoadStringW(nullptr, 1, text, 0), 0);
  };
  Play(begin, {});
}

TEST(TextWrap, BreaksAtBlanksAndInsideOnlyWhatIsTooWide) {
  const struct {
    std::u16string_view text;
    int width;
    std::vector<std::u16string_view> lines;
  } cases[] = {{u"are you sure", 8, {u"are you", u"sure"}},
               {u"are you sure", 7, {u"are you", u"sure"}},
               {u"unbreakable", 4, {u"unbr", u"eaka", u"ble"}},
               {u"a\r\n\nb", 4, {u"a", u"", u"b"}},
               {u"😀😀", 1, {u"😀", u"😀"}},
               {u"", 4, {u""}}};
  for (const auto& each : cases)
    EXPECT_EQ(WrapText(each.text, each.width, [](auto text) { return static_cast<int>(text.size()); }), each.lines);
}

}  // namespace
