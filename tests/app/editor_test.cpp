// The editor: order, move mode, removing; and saving what it shows.

#include "app/app_test.h"

namespace {

/// The names of the plug-ins in a saved layout, in order.
Lines PluginsIn(const std::string& layout) {
  Lines names;
  const std::string mark = "<plugin";
  for (std::size_t at = layout.find(mark); at != std::string::npos; at = layout.find(mark, at + 1)) {
    const std::size_t begin = layout.find("name=\"", at) + 6;
    names.push_back(layout.substr(begin, layout.find('"', begin) - begin));
  }
  return names;
}

/// Empties the field with the focus and types something else.
Lines Retype(const std::string& text) {
  Lines lines(30, "key back");
  if (!text.empty()) lines.push_back("type " + text);
  return lines;
}

class Editor : public AppTest {
 protected:
  Editor() {
    folder.AddLayout("eight", "Eight", {"p1", "p2", "p3", "p4", "p5", "p6", "p7", "p8", "p9", "p10"});
    folder.UseLayout("eight");
  }

  static Lines SaveAs(const std::string& title, const std::string& file) {
    Lines lines = {"softkey left", "menu Save as"};
    Append(lines, Retype(title));
    lines.push_back("key down");
    Append(lines, Retype(file));
    lines.push_back("softkey left");
    return lines;
  }
};

TEST_F(Editor, MoveModeCarriesThePluginAndTheRowsChangePlaces) {
  PhoneAt phone(folder, "Select Plugins");
  EXPECT_EQ(phone.Rows(), (Lines{"p1", "p2", "p3", "p4", "p5", "p6", "p7", "p8"}));
  phone.Play({"key action"});
  // The two selection bars cross-fade.
  const Json fading = phone.Play({"wait 250 250"});
  std::vector<int> alphas;
  for (const Json& op : fading["ops"])
    if (op["op"] == "AlphaBlend" && op["w"] == 220 && op["h"] == 27) alphas.push_back(op["alpha"]);
  EXPECT_EQ(alphas, (std::vector<int>{128, 127}));
  phone.Play({"wait 600", "key down"});
  // Half-way the carried row and its neighbour share a place.
  const Json half = phone.Play({"wait 250 250"});
  for (const Json& op : half["ops"])
    if (op["op"] == "DrawText" && (op["text"] == "p1" || op["text"] == "p2")) {
      EXPECT_NEAR(op["rect"][1].get<int>(), 50, 1);
    }
  phone.Play({"key down", "wait 600"});
  EXPECT_EQ(phone.Selected(), "p1");
  // On the last visible row carrying goes on, and the list scrolls under it.
  for (int press = 0; press < 6; ++press) phone.Play({"key down", "wait 600"});
  EXPECT_EQ(phone.Rows(), (Lines{"p3", "p4", "p5", "p6", "p7", "p8", "p9", "p1"}));
  EXPECT_EQ(phone.Selected(), "p1");
  phone.Play({"key up", "wait 600", "key action", "wait 600", "key up", "wait 600"});
  EXPECT_EQ(phone.Rows(), (Lines{"p3", "p4", "p5", "p6", "p7", "p8", "p1", "p9"}));
  EXPECT_EQ(phone.Selected(), "p8");
}

TEST_F(Editor, RemovingClosesTheGapAndNeverTouchesTheFile) {
  const std::string before = ReadFile(folder.Home() / "eight.home.xml");
  PhoneAt phone(folder, "Select Plugins");
  const auto remove = [&phone] { phone.Menu("Remove from theme", {"wait 600"}); };
  remove();
  EXPECT_EQ(phone.Rows(), (Lines{"p2", "p3", "p4", "p5", "p6", "p7", "p8", "p9"}));
  EXPECT_EQ(phone.Selected(), "p2");
  for (int press = 0; press < 8; ++press) phone.Play({"key down", "wait 600"});
  EXPECT_EQ(phone.Selected(), "p10");
  // While the view is scrolled the rows above close the gap: no blank row shows.
  remove();
  EXPECT_EQ(phone.Rows(), (Lines{"p2", "p3", "p4", "p5", "p6", "p7", "p8", "p9"}));
  EXPECT_EQ(phone.Selected(), "p9");
  phone.Play({"key action"});
  for (int left = 0; left < 8; ++left) remove();
  EXPECT_EQ(phone.Rows(), Lines{});
  // On an empty list there is nothing to act on; the list still can be saved.
  phone.Play({"command 40004", "key action", "key down", "key up", "softkey right", "wait 600"});
  EXPECT_EQ(phone.Screen(), "Select Theme");
  EXPECT_EQ(ReadFile(folder.Home() / "eight.home.xml"), before);
}

TEST_F(Editor, RemovingOnTheFirstVisibleRowOfAScrolledListSelectsTheRowAbove) {
  PhoneAt phone(folder, "Select Plugins");
  for (int press = 0; press < 9; ++press) phone.Play({"key down"});
  for (int press = 0; press < 7; ++press) phone.Play({"key up", "wait 600"});
  EXPECT_EQ(phone.Rows().front(), "p3");
  EXPECT_EQ(phone.Selected(), "p3");
  phone.Menu("Remove from theme", {"wait 600"});
  EXPECT_EQ(phone.Rows(), (Lines{"p2", "p4", "p5", "p6", "p7", "p8", "p9", "p10"}));
  EXPECT_EQ(phone.Selected(), "p2");
}

TEST_F(Editor, SavesOrderAndRemovalsUnderANewTitleAndName) {
  const std::string source = ReadFile(folder.Home() / "eight.home.xml");
  PhoneAt phone(folder, "Select Plugins");
  phone.Play({"key action", "key down", "key down", "key action"});
  phone.Play({"key down", "command 40004"});
  phone.Play(SaveAs("Été – new", "Zed ünd.home.xml"));
  EXPECT_EQ(phone.Box(), "Do you want to apply saved theme?");
  phone.Play({"answer no", "wait 600"});
  EXPECT_EQ(phone.Screen(), "Select Theme");
  EXPECT_EQ(phone.Rows(), (Lines{"Alpha", "Beta", "Eight", "Gamma", "Été – new"}));
  EXPECT_EQ(phone.Selected(), "Eight") << "the layout in use";
  EXPECT_EQ(ReadFile(folder.Home() / "eight.home.xml"), source);
  const std::string saved = ReadFile(folder.Home() / "Zed ünd.home.xml");
  EXPECT_TRUE(saved.starts_with("<?xml version=\"1.0\" encoding=\"UTF-8\"?>")) << saved;
  EXPECT_NE(saved.find("<title lang=\"0x0409\">Été – new</title>"), std::string::npos) << saved;
  EXPECT_EQ(PluginsIn(saved), (Lines{"p2", "p3", "p1", "p5", "p6", "p7", "p8", "p9", "p10"}));
  EXPECT_EQ(phone.State()["registry_writes"], Json::array());
}

TEST_F(Editor, SavingRefusesShortTextsAndAsksBeforeOverwriting) {
  ScriptedPhone phone(folder);
  phone.Play({"key action"});
  const auto box_after = [&phone](const std::string& title, const std::string& file) {
    phone.Play(SaveAs(title, file));
    const std::string box = phone.Box();
    if (!box.empty()) phone.Play({"key back"});
    EXPECT_EQ(phone.Screen(), "Save Theme");
    const Json edits = phone.State()["edits"];
    EXPECT_EQ(edits[0]["text"], title) << "the texts stay for correction";
    EXPECT_EQ(edits[1]["text"], file);
    phone.Play({"softkey right"});
    return box;
  };
  const std::vector<std::string> files = FilesBelow(folder.path());
  EXPECT_EQ(box_after("", "new.home.xml"), "");
  EXPECT_EQ(box_after("New", ""), "");
  EXPECT_EQ(box_after("N", "new.home.xml"), "Theme name too short");
  EXPECT_EQ(box_after("Ne", "n.hm"), "File name too short");
  EXPECT_EQ(box_after("Ne", "BETA.home.xml"), "File allready exists. Do you want to overwrite?");
  for (const char* const refused : {"a?b.home.xml", "no/way.home.xml", "..\\..\\up.xml", "nowhere\\x.home.xml"})
    EXPECT_EQ(box_after("New", refused), "There was an error saving theme. Please try again") << refused;
  EXPECT_EQ(FilesBelow(folder.path()), files);
}

TEST_F(Editor, ALayoutWithoutPluginsOpensEmptyAndTakesAFavourite) {
  folder.UseLayout("gamma");
  ScriptedPhone phone(folder);
  phone.Play({"key action"});
  EXPECT_EQ(phone.Texts(), Lines{"Select Plugins"});
  phone.Play({"key action", "key down", "command 40004"});
  // Without a selected plug-in the form of the favourites opens empty.
  phone.Menu("Add to favorites");
  Json state = phone.State();
  EXPECT_EQ(state["edits"][0]["text"], "");
  EXPECT_EQ(state["focus"], 0);
  phone.Play({"type xx", "softkey left"});
  EXPECT_EQ(phone.Screen(), "Add to favorites") << "nothing to keep";
  phone.Play({"softkey right"});
  phone.Menu("Add new plugin", {"key action", "wait 600"});
  EXPECT_EQ(phone.Rows(), Lines{"Harbour"});
  EXPECT_EQ(phone.Selected(), "Harbour");
  phone.Play(SaveAs("Gamma", "gamma.home.xml"));
  phone.Play({"answer yes", "answer no"});
  EXPECT_EQ(PluginsIn(ReadFile(folder.Home() / "gamma.home.xml")), Lines{"Harbour"});
}

}  // namespace
