// Favourites: keeping, listing, adding and deleting them.

#include "app/app_test.h"

namespace {

TEST_F(AppTest, AFavouriteIsKeptUnderTheTypedName) {
  std::filesystem::remove_all(folder.Plugins());
  PhoneAt phone(folder, "Add to favorites");
  EXPECT_EQ(phone.State()["edits"][0]["text"], "radio");
  phone.Play({"type  2", "softkey left"});
  EXPECT_EQ(phone.Screen(), "Select Plugins");
  EXPECT_EQ(phone.State()["focus"], "main");
  const PhoneFolder other;
  other.AddFavorite("radio 2", u"<plugin clsid=\"{radio}\" name=\"radio 2\"/>", u"{radio}");
  EXPECT_EQ(ReadFile(folder.Plugins() / "radio 2.plg"), ReadFile(other.Plugins() / "radio 2.plg"));
  phone.Menu("Add new plugin", {"wait 600"});
  EXPECT_EQ(phone.Rows(), Lines{"radio 2"});
}

TEST_F(AppTest, AFavouriteNeedsANameAndAsksBeforeOverwriting) {
  PhoneAt phone(folder, "Add to favorites");
  const std::vector<std::string> files = FilesBelow(folder.path());
  const auto box_after = [&phone](const Lines& typing) {
    phone.Play(Lines(20, "key back"));
    phone.Play(typing);
    phone.Play({"softkey left"});
    const std::string box = phone.Box();
    if (!box.empty()) phone.Play({"key back"});
    EXPECT_EQ(phone.Screen(), "Add to favorites");
    return box;
  };
  EXPECT_EQ(box_after({}), "");
  EXPECT_EQ(box_after({"type x"}), "Plugin name too short!");
  EXPECT_EQ(box_after({"type TIDES"}), "File allready exists. Do you want to overwrite?");
  EXPECT_EQ(box_after({"type a*b"}), "") << "a file that cannot be made is not spoken of";
  EXPECT_EQ(FilesBelow(folder.path()), files);
}

TEST_F(AppTest, AFavouriteIsAddedAsTheLastRowAsOftenAsWanted) {
  PhoneAt phone(folder, "Choose Plugin");
  EXPECT_EQ(phone.Rows(), (Lines{"Harbour", "Tides"}));
  phone.Play({"key down", "key action", "wait 600"});
  EXPECT_EQ(phone.Rows(), (Lines{"radio", "steps", "Tides"}));
  EXPECT_EQ(phone.Selected(), "Tides");
  // Move mode survives the visit, and ends nothing.
  phone.Play({"key action", "wait 600"});
  phone.Menu("Add new plugin");
  phone.Menu("Add Plugin", {"wait 600", "key up", "wait 600"});
  EXPECT_EQ(phone.Rows(), (Lines{"radio", "steps", "Harbour", "Tides"})) << "the added one is carried";
  // A plug-in that came from a favourite is kept without a class.
  phone.Menu("Add to favorites", {"type Harbour", "softkey left"});
  phone.Play({phone.Box().empty() ? "paint" : "answer yes"});
  EXPECT_EQ(ReadFile(folder.Plugins() / "Harbour.plg").substr(512, 512), std::string(512, '\0'));
}

TEST_F(AppTest, AFavouriteThatCannotBeReadIsNotAdded) {
  folder.AddFavorite("Tides", u"<another/>");
  PhoneAt phone(folder, "Choose Plugin");
  phone.Play({"key down", "key action", "wait 600"});
  EXPECT_EQ(phone.Screen(), "Choose Plugin") << "the action key stays";
  phone.Menu("Add Plugin", {"wait 600"});
  EXPECT_EQ(phone.Screen(), "Select Plugins") << "the menu item returns in any case";
  EXPECT_EQ(phone.Rows(), (Lines{"radio", "steps"}));
}

TEST_F(AppTest, DeletingFavouritesAsksAndTellsWhenItFails) {
  PhoneAt phone(folder, "Choose Plugin");
  phone.Menu("Delete");
  EXPECT_EQ(phone.Box(), "Are you sure you want to delete this plugin?");
  phone.Play({"fail DeleteFileW", "answer yes"});
  EXPECT_EQ(phone.Box(), "Selected plugin couldn't be deleted!");
  phone.Play({"answer ok"});
  for (int remaining = 0; remaining < 2; ++remaining) {
    phone.Menu("Delete", {"answer yes", "wait 600"});
  }
  EXPECT_TRUE(FilesBelow(folder.Plugins()).empty());
  EXPECT_EQ(phone.Rows(), Lines{});
  phone.Play({"key action", "command 40004", "command 40007"});
  EXPECT_EQ(phone.Screen(), "Choose Plugin");
  phone.Play({"softkey right", "softkey left", "menu Add new plugin"});
  EXPECT_EQ(phone.Texts(), Lines{"Choose Plugin"});
}

}  // namespace
