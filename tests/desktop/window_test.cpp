// The desktop window as a person meets it: a real window, real keys and clicks, and the pictures that the scripted
// phone makes of the same script.

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>
#include <sstream>

#include "app/app_test.h"
#include "desktop/desktop_phone.h"
#include "desktop/display.h"

namespace {

namespace fs = std::filesystem;

/// A second phone with the same files as AppTest's, for the scripted phone.
class Twin : public AppTest {
 public:
  void TestBody() override {}
  const PhoneFolder& phone() const { return folder; }
};

class DesktopTest : public AppTest {
 protected:
  DesktopTest() {
    // Not the first start: the key map does not introduce itself.
    WriteFile(StateFile(), "");
  }

  fs::path StateFile() const { return home.path() / "state" / "quillmark" / "window"; }

  void Start(const Lines& options = {"--scale", "1"}) {
    window = std::make_unique<DesktopPhone>(display, folder, home.path(), options);
    scripted = std::make_unique<ScriptedPhone>(twin.phone());
  }

  /// The scripted phone's screen when all has come to rest.
  Picture Screen() {
    const fs::path file = home.path() / "screen.png";
    scripted->Play({"wait 3000 100", "shot " + file.string()});
    return ReadPicture(file);
  }

  std::vector<fs::path> Pictures() const {
    std::vector<fs::path> pictures;
    for (const std::string& file : FilesBelow(home.path()))
      if (file.starts_with("Pictures/") && file.ends_with(".png")) pictures.push_back(home.path() / file);
    return pictures;
  }

  bool ShowTheSame(int scale = 1) { return window->ComesToShow(Screen(), scale); }

  PhoneFolder home;
  Twin twin;
  TestDisplay display;
  std::unique_ptr<DesktopPhone> window;
  std::unique_ptr<ScriptedPhone> scripted;
};

/// One thing a person does, and what it is in a script.
struct Act {
  enum Kind { key, type, click } kind;
  std::string what;
  Lines script;
  int x = 0;
  int y = 0;
};

TEST_F(DesktopTest, KeysAndClicksEditAndSaveALayoutAsTheScriptDoes) {
  Start();
  ASSERT_TRUE(ShowTheSame()) << "at the start";
  const Act acts[] = {
      {Act::key, "Up", {"key up"}},
      {Act::click, "the left soft key", {"click 20 310"}, 20, 310},
      {Act::click, "the menu's first item", {"click 30 190"}, 30, 190},
      {Act::key, "Down", {"key down"}},
      {Act::key, "Return", {"key action"}},
      {Act::key, "Up", {"key up"}},
      {Act::key, "Return", {"key action"}},
      {Act::key, "F1", {"softkey left"}},
      {Act::type, "4Nine", {"key 4", "type Nine"}},
      {Act::key, "Control_L+a", {"key ctrl+a"}},
      {Act::type, "My desk", {"type My desk"}},
      {Act::key, "Shift_L+Home", {"key shift+home"}},
      {Act::key, "Control_L+c", {"key ctrl+c"}},
      {Act::key, "Down", {"key down"}},
      {Act::key, "Control_L+a", {"key ctrl+a"}},
      {Act::key, "Control_L+v", {"key ctrl+v"}},
      {Act::type, ".home.xml", {"type .home.xml"}},
      {Act::click, "the first field", {"click 40 92"}, 40, 92},
      {Act::key, "BackSpace", {"key back"}},
      {Act::key, "F1", {"softkey left"}},
      {Act::key, "Return", {"key action"}},
  };
  for (const Act& act : acts) {
    if (act.kind == Act::key) display.Key(act.what);
    if (act.kind == Act::type) display.Type(act.what);
    if (act.kind == Act::click) window->ClickScreen(Screen(), 1, act.x, act.y);
    scripted->Play(act.script);
    ASSERT_TRUE(ShowTheSame()) << act.what;
  }
  EXPECT_EQ(scripted->Screen(), "Select Theme");
  EXPECT_EQ(window->End(), 0);
  EXPECT_EQ(FilesBelow(folder.path()), FilesBelow(twin.phone().path()));
  const fs::path saved = "My desk.home.xml";
  EXPECT_EQ(ReadFile(folder.Home() / saved), ReadFile(twin.phone().Home() / saved));
  EXPECT_EQ(window->Complaints(), "");
}

TEST_F(DesktopTest, ScalesAreWholeAndRememberedWithThePlace) {
  Start({});
  const Picture screen = Screen();
  EXPECT_TRUE(ShowTheSame(3)) << "what fits at the start: three times 320 pixels in 1024";
  for (const auto& [key, scale] : {std::pair("Control_L+1", 1),
                                   {"Control_L+plus", 2},
                                   {"Control_L+minus", 1},
                                   {"Control_L+0", 3},
                                   {"Control_L+2", 2}}) {
    display.Key(key);
    EXPECT_TRUE(window->ComesToShow(screen, scale)) << key;
  }
  display.Resize(window->window(), screen.width + 50, screen.height + 99);
  EXPECT_TRUE(window->ComesToShow(screen, 1)) << "centred, or snapped";
  display.Key("Control_L+2");
  EXPECT_TRUE(window->ComesToShow(screen, 2));
  const auto place = display.Place(window->window());
  EXPECT_EQ(window->End(), 0);
  Start({});
  EXPECT_TRUE(ShowTheSame(2));
  EXPECT_EQ(display.Place(window->window()), place);
}

TEST_F(DesktopTest, TheKeyMapIsTheHostsAndNotInPictures) {
  fs::remove(StateFile());
  Start();
  const Picture screen = Screen();
  EXPECT_NE(display.Look(window->window()), screen) << "the first start shows the keys";
  EXPECT_TRUE(window->ComesToShow(screen, 1)) << "and takes them away again";
  display.Key("F10");
  for (int attempt = 0; attempt < 100 && display.Look(window->window()) == screen; ++attempt) usleep(100'000);
  EXPECT_NE(display.Look(window->window()), screen);
  display.Key("Escape");
  EXPECT_TRUE(window->ComesToShow(screen, 1)) << "the key that closes it does nothing else";
  // The second picture is taken while the notice of the first one is shown.
  for (const std::size_t count : {1, 2}) {
    display.Key("F12");
    std::vector<fs::path> pictures;
    for (int attempt = 0; attempt < 100 && pictures.size() < count; ++attempt, usleep(100'000)) pictures = Pictures();
    ASSERT_EQ(pictures.size(), count);
    for (const fs::path& picture : pictures) EXPECT_EQ(ReadPicture(picture), screen);
  }
}

TEST_F(DesktopTest, WhatIsRecordedReplaysToTheSameScreen) {
  const fs::path recording = home.path() / "recording.qm";
  Start({"--scale", "1", "--record", recording.string()});
  for (const char* const key : {"Up", "Down", "Return", "Return", "Down", "Return"}) {
    display.Key(key);
    usleep(120'000);
  }
  scripted->Play({"key up", "wait 1000", "key down", "wait 1000", "key action", "wait 1000", "key action", "wait 1000",
                  "key down", "wait 1000", "key action"});
  ASSERT_TRUE(ShowTheSame());
  EXPECT_EQ(window->End(), 0);
  const Picture screen = Screen();
  ScriptedPhone replayed(folder);
  std::istringstream lines(ReadFile(recording));
  int frames = 0;
  const fs::path shot = home.path() / "replayed.png";
  for (std::string line; std::getline(lines, line);) {
    if (line.empty() || line.starts_with("#")) continue;
    if (line == "quit") break;
    const Json reply = replayed.Do(line);
    EXPECT_EQ(reply["ok"], true) << line << reply.dump();
    frames += reply["frames"].get<int>();
  }
  EXPECT_GT(frames, 6) << "one for each key is none of a motion";
  replayed.Play({"shot " + shot.string()});
  EXPECT_EQ(ReadPicture(shot), screen);
}

/// Puts something of a kind on the clipboard, and waits until it is there.
void Copy(const std::string& content, const std::string& kind) {
  const std::string clipboard = "xclip -selection clipboard -target ";
  const std::string wait = "until " + clipboard + "TARGETS -out | grep -q " + kind + "; do sleep 0.1; done";
  ASSERT_EQ(std::system(("printf '" + content + "' | " + clipboard + kind + " && " + wait).c_str()), 0);
}

TEST_F(DesktopTest, ATextFromTheDesktopsClipboardBecomesOneLine) {
  Start();
  scripted->Play(WayTo().at("Add to favorites"));
  for (const char* const key : {"Return", "F1", "3", "Control_L+a"}) display.Key(key);
  Copy("two\\nlines", "UTF8_STRING");
  display.Key("Control_L+v");
  scripted->Play({"key ctrl+a", "type two lines"});
  EXPECT_TRUE(ShowTheSame());
  // What is no text is not pasted.
  Copy("picture", "image/png");
  display.Key("Control_L+v");
  display.Type("!");
  scripted->Play({"key !"});
  EXPECT_TRUE(ShowTheSame());
}

TEST_F(DesktopTest, ADisplayThatGoesAwayEndsTheProgramWithAWord) {
  Start();
  ASSERT_TRUE(ShowTheSame());
  display.Kill();
  EXPECT_EQ(window->End(false), EXIT_FAILURE);
  EXPECT_NE(window->Complaints().find("display"), std::string::npos) << window->Complaints();
  EXPECT_EQ(FilesBelow(folder.path()), FilesBelow(twin.phone().path()));
}

}  // namespace
