// Favourites: keeping, listing, adding and deleting them.

#include "app/app_test.h"

namespace {

constexpr std::size_t kHeader = 1028;

std::string Utf16Bytes(std::u16string_view text) {
  return {reinterpret_cast<const char*>(text.data()), text.size() * 2};
}

std::string Field(std::u16string_view text) {
  std::string field = Utf16Bytes(text);
  field.resize(512);
  return field;
}

TEST_F(AppTest, AFavouriteIsKeptUnderTheTypedName) {
  std::filesystem::remove_all(folder.Plugins());
  ScriptedPhone phone(folder);
  phone.Play(WayTo().at("Add to favorites"));
  EXPECT_EQ(phone.State()["edits"][0]["text"], "radio");
  phone.Play({"type  2", "softkey left"});
  EXPECT_EQ(phone.Screen(), "Select Plugins");
  EXPECT_EQ(phone.State()["focus"], "main");
  const std::u16string text = u"<plugin clsid=\"{radio}\" name=\"radio 2\"/>";
  const std::string kept = ReadFile(folder.Plugins() / "radio 2.plg");
  ASSERT_EQ(kept.size(), kHeader + 2 * (text.size() + 1));
  EXPECT_EQ(kept.substr(0, 512), Field(u"radio 2"));
  EXPECT_EQ(kept.substr(512, 512), Field(u"{radio}"));
  EXPECT_EQ(kept.substr(1024, 4), (std::string{static_cast<char>(text.size() + 1), 0, 0, 0}));
  EXPECT_EQ(kept.substr(kHeader), Utf16Bytes(text) + std::string(2, '\0'));
  phone.Menu("Add new plugin");
  phone.Play({"wait 600"});
  EXPECT_EQ(phone.Rows(), Lines{"radio 2"});
}

TEST_F(AppTest, AFavouriteNeedsANameAndAsksBeforeOverwriting) {
  ScriptedPhone phone(folder);
  phone.Play(WayTo().at("Add to favorites"));
  const std::vector<std::string> files = FilesBelow(folder.path());
  const auto box_after = [&phone](const Lines& typing) {
    phone.Play(Lines(20, "key back"));
    phone.Play(typing);
    phone.Play({"softkey left"});
    const Json box = phone.State()["box"];
    if (!box.is_null()) phone.Play({"key back"});
    EXPECT_EQ(phone.Screen(), "Add to favorites");
    return box.is_null() ? std::string() : box["text"].get<std::string>();
  };
  EXPECT_EQ(box_after({}), "");
  EXPECT_EQ(box_after({"type x"}), "Plugin name too short!");
  EXPECT_EQ(box_after({"type TIDES"}), "File allready exists. Do you want to overwrite?");
  EXPECT_EQ(box_after({"type a*b"}), "") << "a file that cannot be made is not spoken of";
  EXPECT_EQ(FilesBelow(folder.path()), files);
}

TEST_F(AppTest, AFavouriteIsAddedAsTheLastRowAsOftenAsWanted) {
  ScriptedPhone phone(folder);
  phone.Play(WayTo().at("Choose Plugin"));
  EXPECT_EQ(phone.Rows(), (Lines{"Harbour", "Tides"}));
  phone.Play({"key down", "key action", "wait 600"});
  EXPECT_EQ(phone.Rows(), (Lines{"radio", "steps", "Tides"}));
  EXPECT_EQ(phone.Selected(), "Tides");
  // Move mode survives the visit, and ends nothing.
  phone.Play({"key action", "wait 600"});
  phone.Menu("Add new plugin");
  phone.Menu("Add Plugin");
  phone.Play({"wait 600", "key up", "wait 600"});
  EXPECT_EQ(phone.Rows(), (Lines{"radio", "steps", "Harbour", "Tides"})) << "the added one is carried";
  // A plug-in that came from a favourite is kept without a class.
  phone.Menu("Add to favorites");
  phone.Play({"type Harbour", "softkey left"});
  phone.Play({phone.State()["box"].is_null() ? "paint" : "answer yes"});
  EXPECT_EQ(ReadFile(folder.Plugins() / "Harbour.plg").substr(512, 512), Field(u""));
}

TEST_F(AppTest, AFavouriteThatCannotBeReadIsNotAdded) {
  const std::string good = ReadFile(folder.Plugins() / "Tides.plg");
  const auto with = [&](std::size_t at, const std::string& bytes) {
    std::string changed = good;
    return changed.replace(at, bytes.size(), bytes);
  };
  const std::pair<const char*, std::string> broken[] = {
      {"empty", ""},
      {"header cut", good.substr(0, 1000)},
      {"text cut", good.substr(0, good.size() - 4)},
      {"no count", with(1024, std::string(4, '\0'))},
      {"huge count", with(1024, "\xff\xff\xff\xff")},
      {"no zero", with(good.size() - 2, "x")},
      {"not XML", with(kHeader, Utf16Bytes(u"plugin"))},
      {"another element", with(kHeader, Utf16Bytes(u"<plugim"))},
      {"not UTF-16", with(kHeader + 2 * 8, std::string("\x00\xd8", 2))},
  };
  ScriptedPhone phone(folder);
  phone.Play({"key action", "wait 600"});
  for (const auto& [name, content] : broken) {
    SCOPED_TRACE(name);
    WriteFile(folder.Plugins() / "Tides.plg", content);
    phone.Menu("Add new plugin");
    phone.Play({"key down", "key action", "wait 600"});
    EXPECT_EQ(phone.Screen(), "Choose Plugin") << "the action key stays";
    phone.Menu("Add Plugin");
    phone.Play({"wait 600"});
    EXPECT_EQ(phone.Screen(), "Select Plugins") << "the menu item returns in any case";
    EXPECT_EQ(phone.Rows(), (Lines{"radio", "steps"}));
  }
}

TEST_F(AppTest, DeletingFavouritesAsksAndTellsWhenItFails) {
  ScriptedPhone phone(folder);
  phone.Play(WayTo().at("Choose Plugin"));
  phone.Menu("Delete");
  EXPECT_EQ(phone.State()["box"]["text"], "Are you sure you want to delete this plugin?");
  phone.Play({"fail DeleteFileW", "answer yes"});
  EXPECT_EQ(phone.State()["box"]["text"], "Selected plugin couldn't be deleted!");
  phone.Play({"answer ok"});
  for (int remaining = 0; remaining < 2; ++remaining) {
    phone.Menu("Delete");
    phone.Play({"answer yes", "wait 600"});
  }
  EXPECT_TRUE(FilesBelow(folder.Plugins()).empty());
  EXPECT_EQ(phone.Rows(), Lines{});
  phone.Play({"key action", "command 40004", "command 40007"});
  EXPECT_EQ(phone.Screen(), "Choose Plugin");
  phone.Play({"softkey right", "softkey left", "menu Add new plugin"});
  EXPECT_EQ(phone.Texts(), Lines{"Choose Plugin"});
}

}  // namespace
