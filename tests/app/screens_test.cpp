// Which screen each key and command leads to, and what the screens are made of.

#include "app/app_test.h"

namespace {

TEST_F(AppTest, KeysAndCommandsLeadFromScreenToScreen) {
  const struct {
    const char* from;
    Lines input;
    const char* to;
  } transitions[] = {
      {"Select Theme", {"key action"}, "Select Plugins"},
      {"Select Theme", {"softkey left", "menu Edit"}, "Select Plugins"},
      {"Select Theme", {"command 40010"}, "About"},
      {"Select Theme", {"key back"}, "Select Theme"},
      {"Select Plugins", {"softkey right"}, "Select Theme"},
      {"Select Plugins", {"key back"}, "Select Theme"},
      {"Select Plugins", {"keydown back"}, "Select Plugins"},
      // Held for too long, a key still belongs to the menu that it has closed, or to the screen that it was pressed on.
      {"Select Plugins", {"softkey left", "keydown back", "keydown back", "keyup back"}, "Select Plugins"},
      {"Save Theme", {"keydown back", "softkey right", "keydown back", "keyup back"}, "Select Plugins"},
      {"Select Plugins", {"key action"}, "Select Plugins"},
      {"Select Plugins", {"command 40003"}, "Choose Plugin"},
      {"Select Plugins", {"command 40005"}, "Add to favorites"},
      {"Select Plugins", {"command 40007"}, "Save Theme"},
      {"Save Theme", {"softkey right"}, "Select Plugins"},
      {"Save Theme", {"key back"}, "Save Theme"},
      {"Save Theme", {"type !", "softkey left", "answer yes", "answer no"}, "Select Theme"},
      {"Save Theme", {"softkey left", "answer no"}, "Save Theme"},
      {"Choose Plugin", {"key action"}, "Select Plugins"},
      {"Choose Plugin", {"softkey left", "menu Add Plugin"}, "Select Plugins"},
      {"Choose Plugin", {"softkey right"}, "Select Plugins"},
      {"Choose Plugin", {"key back"}, "Select Plugins"},
      {"Choose Plugin", {"keydown back"}, "Choose Plugin"},
      {"Add to favorites", {"softkey left"}, "Select Plugins"},
      {"Add to favorites", {"softkey right"}, "Select Plugins"},
      {"Add to favorites", {"key back"}, "Add to favorites"},
      {"About", {"softkey right"}, "Select Theme"},
      {"About", {"softkey left"}, "About"},
      {"About", {"key back"}, "About"},
      {"About", {"key action"}, "About"},
  };
  for (const auto& transition : transitions) {
    SCOPED_TRACE(std::string(transition.from) + ", " + transition.input.back());
    PhoneAt phone(folder, transition.from);
    EXPECT_EQ(phone.Screen(), transition.from);
    phone.Play(transition.input);
    EXPECT_EQ(phone.Screen(), transition.to);
    EXPECT_EQ(phone.State()["bars_visible"], 1);
    EXPECT_EQ(phone.End(), 0);
  }
}

/// What the program has not been asked to do it does not do.
TEST_F(AppTest, KeysAndCommandsOfOtherScreensChangeNothing) {
  const Lines keys = {"key left", "key right", "key #65", "hotkey 112 up", "hotkey 27 down", "command 0"};
  Lines all_keys = keys;
  Append(all_keys, {"key up", "key down"});
  const struct {
    const char* screen;
    Lines keys;
    std::vector<int> commands;
  } cases[] = {
      {"Select Theme", keys, {40001, 40003, 40005, 40006, 40011}},
      {"Select Plugins", keys, {40001, 40006, 40008, 40010, 40011}},
      {"Choose Plugin", keys, {40001, 40003, 40005, 40006, 40008, 40010, 40011}},
      {"Save Theme", {"key action"}, {40003, 40004, 40005, 40007, 40008, 40009, 40010}},
      {"Add to favorites", {"key up", "key down"}, {40003, 40004, 40005, 40007, 40008, 40009, 40010}},
      {"About", all_keys, {40001, 40003, 40004, 40005, 40006, 40007, 40008, 40009, 40010, 40011}},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.screen);
    PhoneAt phone(folder, each.screen);
    const auto look = [&phone] {
      Json seen = phone.Play({"repaint"});
      Json state = phone.State();
      for (const char* const field : {"calls", "tick", "painted", "frames", "ops"}) state.erase(field);
      seen["state"] = state;
      return seen;
    };
    const Json before = look();
    const std::vector<std::string> files = FilesBelow(folder.path());
    phone.Play(each.keys);
    for (const int command : each.commands) phone.Play({"command " + std::to_string(command)});
    EXPECT_EQ(look(), before);
    EXPECT_EQ(FilesBelow(folder.path()), files);
  }
}

TEST_F(AppTest, EachScreenHasItsSoftKeysMenuAndFields) {
  const Json editor_menu = {"Add new plugin", "Remove from theme", "Add to favorites", "Save as", "Help"};
  const struct {
    const char* screen;
    const char* left;
    const char* right;
    Json menu;
    std::size_t edits;
  } bars[] = {
      {"Select Theme", "Options", "Exit", {"Edit", "Apply", "Delete", "About", "Help"}, 0},
      {"Select Plugins", "Options", "Cancel", editor_menu, 0},
      {"Choose Plugin", "Options", "Cancel", {"Add Plugin", "Delete", "Help"}, 0},
      {"Save Theme", "Save", "Cancel", nullptr, 2},
      {"Add to favorites", "Save", "Cancel", nullptr, 1},
      {"About", " ", "Back", nullptr, 0},
  };
  for (const auto& bar : bars) {
    SCOPED_TRACE(bar.screen);
    PhoneAt phone(folder, bar.screen);
    const Json state = phone.State();
    EXPECT_EQ(state["bar"], Json({{"left", bar.left}, {"right", bar.right}}));
    EXPECT_EQ(state["edits"].size(), bar.edits);
    EXPECT_EQ(state["windows"], 1 + 5 + bar.edits);
    if (bar.menu.is_null()) continue;
    EXPECT_EQ(phone.Play({"softkey left", "state"})["menu"], bar.menu);
  }
}

TEST_F(AppTest, BackOnTheFirstScreenAndOnAboutLeavesTheForegroundOnRelease) {
  for (const char* const screen : {"Select Theme", "About"}) {
    PhoneAt phone(folder, screen);
    EXPECT_EQ(phone.Play({"keydown back", "state"})["back_navigations"], 0);
    Json state = phone.Play({"keyup back", "state"});
    EXPECT_EQ(state["back_navigations"], 1);
    EXPECT_EQ(state["foreground"], false);
    phone.Play({"key action", "key down"});
    EXPECT_EQ(phone.Screen(), screen) << "keys do nothing in the background";
    state = phone.Play({"focus main", "state"});
    EXPECT_EQ(state["foreground"], true);
    EXPECT_EQ(state["focus"], "main");
  }
}

TEST_F(AppTest, HelpAndTheProductPageOpenInTheBrowser) {
  for (const char* const screen : {"Select Theme", "Select Plugins", "Choose Plugin"}) {
    PhoneAt phone(folder, screen);
    phone.Menu("Help");
    const Json launched = phone.State()["launched"];
    ASSERT_EQ(launched.size(), 1u) << screen;
    EXPECT_EQ(launched[0]["file"], "\\Windows\\iexplore.exe");
    EXPECT_EQ(launched[0]["parameters"], "\\Program Files\\Quillmark\\help_en.html") << screen;
  }
  PhoneAt phone(folder, "About");
  phone.Play({"fail ShellExecuteEx", "key action", "key action"});
  const Json launched = phone.State()["launched"];
  ASSERT_EQ(launched.size(), 1u) << "a failed call is no launch";
  EXPECT_EQ(launched[0]["parameters"], "\\Program Files\\Quillmark\\product_en.html");
}

TEST_F(AppTest, AboutShowsAPictureThatFitsTheScreenAndTheVersion) {
  const std::pair<const char*, Json> shapes[] = {{"portrait", {240, 278}}, {"landscape", {320, 198}}};
  for (const auto& [shape, size] : shapes) {
    PhoneAt phone(folder, "About", {"--screen", shape});
    const Json ops = phone.Play({"repaint"})["ops"];
    EXPECT_EQ(TextsIn({{"ops", ops}}), Lines{"Version: 1.01 Build: 1053"});
    const Json& picture = ops.at(1);
    EXPECT_EQ(Json({picture["x"], picture["y"], picture["w"], picture["h"]}), Json({0, 0, size[0], size[1]}));
  }
}

TEST_F(AppTest, FieldsPassTheFocusOnAndDeleteWithBack) {
  PhoneAt phone(folder, "Save Theme");
  Json state = phone.State();
  EXPECT_EQ(state["focus"], 0);
  EXPECT_EQ(state["edits"][0]["text"], "Beta");
  EXPECT_EQ(state["edits"][1]["text"], "beta.home.xml");
  EXPECT_EQ(state["edits"][0]["rect"], Json({10, 60, 220, 27}));
  EXPECT_EQ(state["edits"][1]["rect"], Json({10, 140, 220, 27}));
  const std::pair<const char*, int> moves[] = {{"key down", 1}, {"key down", 0}, {"key up", 1}, {"key up", 0}};
  for (const auto& [key, focus] : moves) EXPECT_EQ(phone.Play({key, "state"})["focus"], focus) << key;
  state = phone.Play({"key back", "key back", "type lt é", "state"});
  EXPECT_EQ(state["edits"][0]["text"], "Belt é");
  EXPECT_EQ(state["back_forwarded"], 4) << "on press and on release";
  // Coming back to the program gives the first field the focus again.
  EXPECT_EQ(phone.Play({"key down", "focus main", "state"})["focus"], 0);
  // The form of the favourites has one field, and keeps the focus in it.
  phone.Play({"softkey right", "softkey left", "menu Add to favorites"});
  state = phone.Play({"key down", "key up", "state"});
  EXPECT_EQ(state["focus"], 0);
  EXPECT_EQ(state["edits"].size(), 1u);
  EXPECT_EQ(state["edits"][0]["text"], "radio");
}

/// On the form that saves: the fields "Beta" and "beta.home.xml", and an empty clipboard.
TEST_F(AppTest, FieldsAreWorkedWithADesktopsKeysAndPointer) {
  struct Case {
    Lines commands;
    int focus;
    std::string text;  ///< of the field with the focus
    Json selection;
  };
  const Case cases[] = {
      {{"key ctrl+left", "key shift+right", "key shift+right"}, 0, "Beta", {0, 2}},
      {{"key shift+home", "key ctrl+c", "key end", "key ctrl+v", "key shift+insert"}, 0, "BetaBetaBeta", {12, 12}},
      {{"key shift+left", "key ctrl+x", "key home", "key ctrl+v"}, 0, "aBet", {1, 1}},
      {{"key shift+left", "key shift+delete", "key down", "key ctrl+a", "key ctrl+v"}, 1, "a", {1, 1}},
      {{"key down", "key ctrl+back", "key home", "key ctrl+delete"}, 1, ".home.", {0, 0}},
      {{"key ctrl+a", "key back", "type x"}, 0, "x", {1, 1}},
      {{R"(clipboard set "one\r\ntwo\n")", "key ctrl+a", "key ctrl+v"}, 0, "one two", {7, 7}},
      {{"clipboard set אב", "key ctrl+a", "key ctrl+v", "key left", "key home", "key left"}, 0, "אב", {1, 1}},
      {{"key ctrl+c", "key ctrl+v"}, 0, "Beta", {4, 4}},
      {{"click 17 180"}, 1, "beta.home.xml", {0, 0}},
      {{"click 17 180", "drag 230 999", "click 200 90", "click 12 90 shift"}, 0, "Beta", {0, 4}},
      {{"resize 30 278", "key home", "key shift+end"}, 0, "Beta", {0, 4}},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(&each - cases);
    PhoneAt phone(folder, "Save Theme");
    phone.Play(each.commands);
    const Json state = phone.State();
    EXPECT_EQ(state["focus"], each.focus);
    EXPECT_EQ(state["edits"][each.focus]["text"], each.text);
    EXPECT_EQ(state["edits"][each.focus]["selection"], each.selection);
  }
}

TEST_F(AppTest, AClickIsDoneWithTheKeys) {
  ScriptedPhone phone(folder);
  EXPECT_EQ(phone.Do("click 100 100")["ok"], false) << "the phone has no touch screen";
  phone.Play({"key action", "click 60 310"});
  EXPECT_EQ(phone.Play({"click 200 100", "state"})["menu"], nullptr) << "beside the menu";
  // Five items of which three fit, between the arrows.
  phone.Play({"resize 240 98", "softkey left"});
  EXPECT_EQ(phone.State()["bar"]["left"], "Select");
  phone.Play({"click 20 112", "click 20 112", "click 20 60", "resize 240 278"});
  EXPECT_EQ(phone.Screen(), "Save Theme");
  phone.Play({"click 200 310", "click 200 310"});
  EXPECT_EQ(phone.Screen(), "Select Theme");
  phone.Menu("Delete");
  ASSERT_NE(phone.State()["box"], nullptr);
  EXPECT_EQ(phone.Do("click 120 160")["ok"], false) << "the box's buttons are the soft keys";
  EXPECT_EQ(phone.Play({"click 200 310", "state"})["box"], nullptr);
}

}  // namespace
