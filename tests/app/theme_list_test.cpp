// The list of layouts: what is listed, how the list moves, deleting.

#include "app/app_test.h"

namespace {

/// Layouts "Layout 01", "Layout 02", ... as many as wanted.
void AddMany(const PhoneFolder& folder, int count) {
  for (int number = 1; number <= count; ++number) {
    const std::string two_digits = (number < 10 ? "0" : "") + std::to_string(number);
    folder.AddLayout("layout" + two_digits, "Layout " + two_digits, {"clock"});
  }
}

Lines Titles(int from, int to) {
  Lines titles;
  for (int number = from; number <= to; ++number)
    titles.push_back("Layout " + std::string(number < 10 ? "0" : "") + std::to_string(number));
  return titles;
}

/// The scroll thumb: 5 pixels wide, at the right of the rows. Nothing when it is hidden.
Json Thumb(ScriptedPhone& phone) {
  const Json frame = phone.Play({"repaint"});
  for (const Json& op : frame["ops"])
    if (op.contains("w") && op["w"] == 5) return {op["x"], op["y"], op["h"]};
  return nullptr;
}

/// The tops of the rows with these texts, in the frame that a command painted.
std::vector<int> TopsOf(const Json& reply, const Lines& texts) {
  std::vector<int> tops;
  for (const std::string& text : texts)
    for (const Json& op : reply["ops"])
      if (op["op"] == "DrawText" && op["text"] == text) tops.push_back(op["rect"][1]);
  return tops;
}

TEST_F(AppTest, LayoutsAreListedByTitleWithTheOneInUseSelected) {
  WriteFile(folder.Home() / "broken.home.xml", "<home><title>Broken</title>");
  WriteFile(folder.Home() / "other.home.xml", "<menu><title>Other</title></menu>");
  WriteFile(folder.Home() / "plain.xml", "<home><title>Plain</title></home>");
  WriteFile(folder.Home() / "UPPER.HOME.XML", "<Home/>");
  PhoneAt phone(folder, "Select Theme");
  EXPECT_EQ(phone.Rows(), (Lines{"Alpha", "Beta", "Gamma", "Unknow"}));
  EXPECT_EQ(phone.Selected(), "Beta");
  EXPECT_EQ(Thumb(phone), nullptr);
  EXPECT_EQ(phone.State()["title"], "Quillmark");
}

TEST(ThemeList, TheSelectionFollowsWhatTheRegistryNames) {
  const std::pair<std::string, std::string> schemes[] = {
      {LayoutPath("layout03"), "Layout 03"},
      {"\\APPLICATION data\\home\\LAYOUT03.home.XML", "Layout 03"},
      {"\\Elsewhere\\layout03.home.xml", "Layout 01"},
      {LayoutPath("layout01"), "Layout 01"},
  };
  PhoneFolder folder;
  AddMany(folder, 4);
  for (const auto& [scheme, selected] : schemes) {
    {
      ScriptedPhone phone(folder);
      phone.Play({"registry set ControlPanel\\Home Scheme \"" + scheme + "\""});
    }
    PhoneAt phone(folder, "Select Theme");
    EXPECT_EQ(phone.Selected(), selected) << scheme;
  }
  std::filesystem::remove(folder.path() / "registry.reg");
  ScriptedPhone phone(folder);
  EXPECT_EQ(phone.Selected(), "Layout 01");
}

TEST(ThemeList, ScrollsARowAtATimeAndFinishesASlideForTheNextKey) {
  PhoneFolder folder;
  AddMany(folder, 20);
  ScriptedPhone phone(folder, {"--tick", "4294967000"});
  phone.Play({"wait 600"});
  EXPECT_EQ(Thumb(phone), Json({233, 37, 86}));
  for (int press = 0; press < 7; ++press) phone.Play({"key down"});
  EXPECT_EQ(phone.Rows(), Titles(1, 8));
  phone.Play({"wait 600"});

  // From the last visible row every row travels up by one slot in half a second.
  phone.Play({"key down"});
  const Json half = phone.Play({"wait 250 250"});
  EXPECT_EQ(half["frames"], 1);
  EXPECT_EQ(TopsOf(half, {"Layout 01", "Layout 02", "Layout 09"}), (std::vector<int>{23, 50, 239}));
  // A second key completes the first slide at once.
  const Json second = phone.Play({"key down"});
  EXPECT_EQ(TopsOf(second, {"Layout 02", "Layout 03", "Layout 09"}), (std::vector<int>{37, 64, 226}));
  phone.Play({"key down", "wait 600"});
  EXPECT_EQ(phone.Rows(), Titles(4, 11));
  EXPECT_EQ(phone.Selected(), "Layout 11");
  EXPECT_EQ(Thumb(phone), Json({233, 69, 86}));

  // At rest nothing is painted, and past an end nothing happens.
  EXPECT_EQ(phone.Play({"wait 2000"})["painted"], false);
  for (int press = 0; press < 10; ++press) phone.Play({"key up", "wait 600"});
  EXPECT_EQ(phone.Rows(), Titles(1, 8));
  EXPECT_EQ(phone.Play({"key up"})["painted"], false);
}

TEST(ThemeList, TheLayoutInUseIsInViewHoweverFarDown) {
  PhoneFolder folder;
  AddMany(folder, 20);
  folder.UseLayout("layout17");
  PhoneAt phone(folder, "Select Theme");
  EXPECT_EQ(phone.Selected(), "Layout 17");
  EXPECT_EQ(phone.Rows(), Titles(10, 17));
}

TEST(ThemeList, LandscapeShowsFiveWideRows) {
  PhoneFolder folder;
  AddMany(folder, 9);
  ScriptedPhone phone(folder, {"--screen", "landscape"});
  const Json frame = phone.Play({"wait 600", "repaint"});
  EXPECT_EQ(TopsOf(frame, {"Layout 01", "Layout 05"}), (std::vector<int>{37, 145}));
  EXPECT_EQ(Thumb(phone), Json({313, 37, 75}));
  // The shape at the start holds, whatever the client area becomes.
  phone.Play({"resize 240 278"});
  EXPECT_EQ(Thumb(phone), Json({313, 37, 75}));
}

TEST_F(AppTest, DeletingAsksAndTellsWhenItFails) {
  ScriptedPhone phone(folder);
  phone.Menu("Delete");
  const Json box = phone.State()["box"];
  EXPECT_EQ(box, Json({{"text", "Are you sure you want to delete this theme?"},
                       {"caption", "Alert"},
                       {"style", 36},
                       {"buttons", {"Yes", "No"}}}));
  phone.Play({"answer no"});
  phone.Menu("Delete", {"fail DeleteFileW", "answer yes"});
  EXPECT_EQ(phone.State()["box"]["text"], "Selected theme couldn't be deleted!");
  EXPECT_EQ(phone.State()["box"]["style"], 48);
  phone.Play({"answer ok", "wait 600"});
  EXPECT_EQ(phone.Rows(), (Lines{"Alpha", "Beta", "Gamma"}));

  phone.Menu("Delete", {"answer yes", "wait 600"});
  EXPECT_FALSE(std::filesystem::exists(folder.Home() / "beta.home.xml"));
  EXPECT_EQ(phone.Rows(), (Lines{"Alpha", "Gamma"}));
  EXPECT_EQ(phone.Selected(), "Alpha");

  // When the last one is gone there is nothing left to act on.
  for (int remaining = 0; remaining < 2; ++remaining) {
    phone.Menu("Delete", {"answer yes", "wait 600"});
  }
  EXPECT_EQ(phone.Rows(), Lines{});
  phone.Play({"command 40004", "command 40007", "command 40008", "key action"});
  EXPECT_EQ(phone.Screen(), "Select Theme");
  EXPECT_EQ(phone.State()["box"], nullptr);
  EXPECT_EQ(phone.State()["calls"]["CreateThread"], 0);
}

TEST(ThemeList, APhoneWithoutLayoutsShowsAnEmptyScreen) {
  PhoneFolder folder;
  std::filesystem::remove_all(folder.path() / "Application Data");
  ScriptedPhone phone(folder);
  EXPECT_EQ(phone.Texts(), Lines{"Select Theme"});
  phone.Play({"key action", "key up", "key down", "command 40004", "command 40007", "command 40008"});
  EXPECT_EQ(phone.Screen(), "Select Theme");
  EXPECT_EQ(phone.End(), 0);
}

}  // namespace
