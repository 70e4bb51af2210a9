#include "app_test.h"

namespace {

/// Whether the frame of a reply, if there was one, was shown.
bool ReachesTheWindow(const Json& reply) {
  const Json ops = reply.value("ops", Json::array());
  return !ops.empty() && ops.back()["target"] == "window";
}

TEST_F(AppTest, AFrameWithoutTheAboutPictureIsHeldBack) {
  ScriptedPhone phone(folder);
  const Json held = phone.Play({"fail CreateImageFromFile", "softkey left", "menu About"});
  EXPECT_FALSE(ReachesTheWindow(held));
  const Json next = phone.Play({"repaint"});
  EXPECT_TRUE(ReachesTheWindow(next));
  EXPECT_EQ(TextsIn(next), Lines{"Version: 1.01 Build: 1053"});
  EXPECT_EQ(next["ops"].size(), 3u) << "background, version, window: the picture is not tried again";
}

TEST_F(AppTest, AFormWithoutItsFieldsSavesNothingAndCanBeLeft) {
  for (const int fields : {0, 1}) {
    ScriptedPhone phone(folder);
    phone.Play({"key action", "fail CreateWindowExW 1 " + std::to_string(fields), "softkey left", "menu Save as"});
    Json state = phone.Play({"softkey left", "state"});
    EXPECT_EQ(state["edits"].size(), static_cast<std::size_t>(fields));
    EXPECT_EQ(state["box"], nullptr);
    EXPECT_EQ(phone.Screen(), "Save Theme");
    state = phone.Play({"softkey right", "state"});
    EXPECT_EQ(state["edits"].size(), 0u);
    EXPECT_EQ(phone.Screen(), "Select Plugins");
  }
  EXPECT_EQ(FilesBelow(folder.Home()).size(), 3u);
}

TEST_F(AppTest, AnOpenMessageBoxKeepsTheProgramFromActingOnInput) {
  PhoneAt phone(folder, "Choose Plugin");
  phone.Menu("Delete", {"hotkey 27 down", "hotkey 27 up", "answer yes"});
  EXPECT_EQ(phone.Screen(), "Choose Plugin");
  EXPECT_EQ(FilesBelow(folder.Plugins()).size(), 1u);
}

}  // namespace
