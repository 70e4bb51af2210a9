// The contract of the scripted phone itself: options, scripts, replies, time, faults.

#include <sstream>

#include "app/app_test.h"

namespace {

TEST_F(AppTest, OptionsThatAreNotUnderstoodEndWithAUsageError) {
  const std::vector<std::string> wrong[] = {
      {"--tick", "0"},
      {"--tick", "4294967296"},
      {"--screen", "square"},
      {"--screen", "0x10"},
      {"--fail", "Nothing"},
      {"--fail", "new:x"},
      {"--fail", "new:1:2:3"},
      {"--nothing"},
      {"more"},
      {"--phone"},
  };
  for (const std::vector<std::string>& options : wrong) {
    ScriptedPhone phone(folder, options);
    EXPECT_EQ(phone.End(), 64) << options.front() << " " << options.back();
  }
}

TEST_F(AppTest, ALineThatIsNotUnderstoodEndsTheProgramAndTheScript) {
  std::istringstream lines(
      "nothing\nkey\nkey nothing\nkey #0\nkey #x\nkeydown up up\ntype\ntype \xff\nsoftkey up\nmenu\nanswer maybe\n"
      "command x\nhotkey 27\nfocus edit\nresize 0 10\nwait\nwait -1\nwait 10 0\nshot\nregistry get Key\n"
      "registry get \"Key Value\nregistry put a b c\nfail Nothing\ntrace\nquit now\n");
  for (std::string line; std::getline(lines, line);) {
    ScriptedPhone phone(folder);
    phone.Play({"softkey left"});
    phone.Send(line);
    EXPECT_EQ(phone.End(), 64) << line;
  }
}

TEST_F(AppTest, WhatDoesNotFitWhatIsOpenIsAnErrorAndChangesNothing) {
  PhoneAt phone(folder, "Select Theme");
  const auto refuses = [&phone](const std::string& command) {
    const Json before = phone.State();
    const Json reply = phone.Do(command);
    EXPECT_EQ(reply["ok"], false) << command;
    EXPECT_TRUE(reply["error"].is_string()) << command;
    EXPECT_EQ(phone.State(), before) << command;
  };
  for (const char* const command : {"menu Edit", "answer yes", "answer ok", "shot /nowhere/at/all.png",
                                    "registry delete ControlPanel\\Home Nothing"})
    refuses(command);
  phone.Play({"softkey left"});
  for (const char* const command : {"menu Nothing", "command 40008", "answer yes"}) refuses(command);
  phone.Play({"menu Delete"});
  for (const char* const command : {"menu Edit", "command 40008", "answer ok"}) refuses(command);
}

TEST_F(AppTest, AfterTheEndOnlyStateAndRegistryAreAnswered) {
  ScriptedPhone phone(folder);
  phone.Send("# a comment has no reply");
  phone.Send("");
  phone.Play({"registry set \"Soft ware\\Key\" \"A \"\"name\"\"\" \"Ünd so\"", "quit"});
  EXPECT_EQ(phone.Do("key up"),
            Json({{"ok", false}, {"error", "the program has ended"}, {"painted", false}, {"frames", 0}}));
  EXPECT_EQ(phone.Do("quit")["ok"], false);
  EXPECT_EQ(phone.Do("registry get \"Soft ware\\Key\" \"A \"\"name\"\"\"")["text"], "Ünd so");
  phone.Play({"registry set ControlPanel\\Home Scheme later", "registry delete \"Soft ware\\Key\" \"A \"\"name\"\"\""});
  EXPECT_EQ(phone.Do("registry get \"Soft ware\\Key\" \"A \"\"name\"\"\"")["text"], nullptr);
  EXPECT_EQ(phone.State()["exit"], 0);
  EXPECT_EQ(phone.State()["windows"], 0);
  EXPECT_EQ(phone.End(), 0);
  EXPECT_NE(ReadFile(folder.path() / "registry.reg").find("\"Scheme\"=\"later\""), std::string::npos);
}

TEST_F(AppTest, TheSameScriptGivesTheSameReplies) {
  const Lines script = {"state",      "key down", "wait 100", "softkey left", "menu Apply", "wait 2500 100",
                        "key action", "wait 300", "repaint",  "quit",         "state"};
  const auto run = [&] {
    folder.UseLayout("alpha");
    ScriptedPhone phone(folder);
    std::string replies;
    for (const std::string& line : script) replies += phone.Do(line).dump() + "\n";
    return replies;
  };
  const std::string first = run();
  EXPECT_EQ(run(), first);
  EXPECT_EQ(run(), first);
}

TEST_F(AppTest, AFrameIsPaintedAtMostOnceACommandAndTracedWhenWanted) {
  PhoneAt phone(folder, "Select Theme");
  Json reply = phone.Do("key down");
  EXPECT_EQ(reply["frames"], 1);
  reply = phone.Do("paint");
  EXPECT_EQ(reply["frames"], 1) << "an animation wants another frame";
  EXPECT_EQ(phone.Do("wait 160")["frames"], 10);
  EXPECT_EQ(phone.Do("wait 1000 1000")["frames"], 1);
  phone.Play({"wait 1000"});
  reply = phone.Do("paint");
  EXPECT_EQ(reply, Json({{"ok", true}, {"painted", false}, {"frames", 0}}));
  phone.Play({"trace off"});
  reply = phone.Do("repaint");
  EXPECT_EQ(reply, Json({{"ok", true}, {"painted", true}, {"frames", 1}}));
  phone.Play({"trace on"});
  EXPECT_EQ(phone.Do("repaint")["ops"].back()["target"], "window");
}

TEST_F(AppTest, PicturesShowTheScreenAndTheClientArea) {
  ScriptedPhone phone(folder, {"--screen", "100x80"});
  const std::filesystem::path screen = folder.path() / "screen shot.png";
  const std::filesystem::path client = folder.path() / "client.png";
  phone.Play({"shot " + screen.string(), "client " + client.string()});
  const auto size = [](const std::filesystem::path& file) { return ReadFile(file).substr(16, 8); };
  EXPECT_EQ(size(screen), std::string({0, 0, 0, 100, 0, 0, 0, 80 + 20 + 22}));
  EXPECT_EQ(size(client), std::string({0, 0, 0, 100, 0, 0, 0, 80}));
  EXPECT_EQ(phone.Play({"resize 240 278", "state"})["client"], Json({240, 278}));
}

TEST_F(AppTest, KeysAndTypingReachTheFieldWithTheFocus) {
  PhoneAt phone(folder, "Add to favorites");
  phone.Play({"key home", "key x", "key space", "key Ü", "key right", "key delete", "type  ⌘𝒳", "key end", "key !"});
  const Json edit = phone.State()["edits"][0];
  EXPECT_EQ(edit["text"], "x Ür ⌘𝒳dio!");
  EXPECT_EQ(edit["caret"], 12);
}

}  // namespace
