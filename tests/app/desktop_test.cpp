// The desktop program without a display, and the phone folder that both programs make at first use.

#include <signal.h>

#include <cstdlib>
#include <sstream>

#include "app/app_test.h"
#include "support/process.h"

namespace {

/// The words that start the desktop program.
Lines Desktop(const PhoneFolder& folder, const Lines& options = {}) {
  Lines words = {DESKTOP_PROGRAM, "--phone", folder.path().string()};
  Append(words, options);
  return words;
}

pid_t Start(const std::vector<std::string>& words) {
  return StartProgram(words, [](auto* actions) { Silence(actions, STDIN_FILENO); });
}

int ExitStatus(const std::vector<std::string>& words) {
  return AwaitEnd(Start(words));
}

/// A phone that is switched on has its folder open.
bool HoldsOpen(pid_t process, const std::filesystem::path& folder) {
  std::error_code error;
  for (const auto& descriptor : std::filesystem::directory_iterator("/proc/" + std::to_string(process) + "/fd", error))
    if (std::filesystem::read_symlink(descriptor, error) == folder) return true;
  return false;
}

TEST_F(AppTest, TheDesktopProgramEndsWhenToldToAndIsFoundByASecondStart) {
  const PhoneFolder home;
  setenv("XDG_STATE_HOME", home.path().c_str(), 1);
  setenv("SDL_VIDEODRIVER", "dummy", 1);
  const pid_t first = Start(Desktop(folder));
  for (int attempt = 0; attempt < 600 && !HoldsOpen(first, folder.path()); ++attempt) usleep(100'000);
  EXPECT_EQ(ExitStatus(Desktop(folder)), 0);
  EXPECT_EQ(ScriptedPhone(folder).State()["exit"], 0);
  EXPECT_EQ(waitpid(first, nullptr, WNOHANG), 0) << "the first one goes on";
  kill(first, SIGTERM);
  EXPECT_EQ(AwaitEnd(first), 0);
}

TEST_F(AppTest, TheDesktopProgramRefusesOptionsItDoesNotKnowAndFilesItCannotUse) {
  for (const Lines& options : {Lines{"--scale", "0"}, {"--scale"}, {"--screen", "wide"}, {"--nothing"}, {"more"}})
    EXPECT_EQ(ExitStatus(Desktop(folder, options)), 64) << options.front();
  setenv("SDL_VIDEODRIVER", "dummy", 1);
  for (const char* const option : {"--phone", "--replay", "--record"})
    EXPECT_EQ(ExitStatus(Desktop(folder, {option, "/dev/null/none"})), 1) << option;
}

TEST_F(AppTest, ARecordingOfTheDesktopProgramIsPlayedToTheSameFrames) {
  const PhoneFolder home;
  setenv("XDG_STATE_HOME", home.path().c_str(), 1);
  setenv("SDL_VIDEODRIVER", "dummy", 1);
  const std::string script = (home.path() / "script").string();
  const pid_t recorded = Start(Desktop(folder, {"--screen", "landscape", "--record", script}));
  const auto frames = [&script] {
    const std::string text = ReadFile(script);
    int count = 0;
    for (std::size_t at = 0; (at = text.find("\npaint\nlooks ", at)) != std::string::npos; ++at) ++count;
    return count;
  };
  for (int attempt = 0; attempt < 600 && frames() < 5; ++attempt) usleep(100'000);
  EXPECT_EQ(ExitStatus(Desktop(folder)), 0) << "a second start is recorded, too";
  kill(recorded, SIGTERM);
  ASSERT_EQ(AwaitEnd(recorded), 0);

  std::istringstream lines(ReadFile(script));
  ScriptedPhone phone(folder, {"--screen", "landscape"});
  for (std::string line; std::getline(lines, line);)
    if (!line.starts_with('#')) EXPECT_EQ(phone.Do(line)["ok"], true) << line;
  EXPECT_GE(frames(), 5);
  EXPECT_EQ(phone.State()["exit"], 0);
  phone.End();

  EXPECT_EQ(ExitStatus(Desktop(folder, {"--screen", "landscape", "--replay", script})), 0);
  EXPECT_EQ(ExitStatus(Desktop(folder, {"--record", script})), 1) << "what is there is not overwritten";
  WriteFile(script, "key down\nstate\n");
  EXPECT_EQ(ExitStatus(Desktop(folder, {"--screen", "landscape", "--replay", script})), 64)
      << "a window gives no replies";
}

TEST(DefaultPhone, IsACopyOfTheSampleMadeOnceAndWhole) {
  const PhoneFolder home;
  setenv("XDG_DATA_HOME", home.path().c_str(), 1);
  // What an interrupted copy left behind is not taken for a phone.
  WriteFile(home.path() / "quillmark" / "phone.unfinished" / "stray", "");
  const std::filesystem::path phone = home.path() / "quillmark" / "phone";
  EXPECT_EQ(ExitStatus({HEADLESS_PROGRAM}), 0);
  EXPECT_EQ(FilesBelow(phone), FilesBelow(TEST_SOURCE_DIR "/phone"));
  EXPECT_FALSE(std::filesystem::exists(home.path() / "quillmark" / "phone.unfinished"));
  // It is the user's own from then on.
  std::filesystem::remove(phone / "registry.reg");
  EXPECT_EQ(ExitStatus({HEADLESS_PROGRAM}), 0);
  EXPECT_FALSE(std::filesystem::exists(phone / "registry.reg"));
}

}  // namespace
