// The desktop program without a display, and the phone folder that both programs make at first use.

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <sstream>

#include "app/app_test.h"

namespace {

pid_t Start(std::vector<std::string> words) {
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", 0, 0);
  pid_t process = -1;
  EXPECT_EQ(posix_spawn(&process, arguments[0], &actions, nullptr, arguments.data(), environ), 0);
  posix_spawn_file_actions_destroy(&actions);
  return process;
}

int ExitStatus(pid_t process) {
  int status = 0;
  waitpid(process, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
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
  const std::vector<std::string> start = {DESKTOP_PROGRAM, "--phone", folder.path().string()};
  const pid_t first = Start(start);
  for (int attempt = 0; attempt < 600 && !HoldsOpen(first, folder.path()); ++attempt) usleep(100'000);
  EXPECT_EQ(ExitStatus(Start(start)), 0);
  EXPECT_EQ(ScriptedPhone(folder).State()["exit"], 0);
  EXPECT_EQ(waitpid(first, nullptr, WNOHANG), 0) << "the first one goes on";
  kill(first, SIGTERM);
  EXPECT_EQ(ExitStatus(first), 0);
}

TEST_F(AppTest, TheDesktopProgramRefusesOptionsItDoesNotKnow) {
  for (const std::vector<std::string>& options :
       {std::vector<std::string>{"--scale", "0"}, {"--scale"}, {"--screen", "wide"}, {"--nothing"}, {"more"}}) {
    std::vector<std::string> words = {DESKTOP_PROGRAM, "--phone", folder.path().string()};
    words.insert(words.end(), options.begin(), options.end());
    EXPECT_EQ(ExitStatus(Start(words)), 64) << options.front();
  }
}

TEST_F(AppTest, ARecordingOfTheDesktopProgramIsPlayedToTheSameFrames) {
  const PhoneFolder home;
  setenv("XDG_STATE_HOME", home.path().c_str(), 1);
  setenv("SDL_VIDEODRIVER", "dummy", 1);
  const std::string script = (home.path() / "script").string();
  const std::vector<std::string> start = {DESKTOP_PROGRAM, "--phone", folder.path().string(), "--screen", "landscape"};
  const auto with = [&start](const std::string& option, const std::string& file) {
    std::vector<std::string> words = start;
    words.insert(words.end(), {option, file});
    return words;
  };
  const pid_t recorded = Start(with("--record", script));
  const auto frames = [&script] {
    const std::string text = ReadFile(script);
    int count = 0;
    for (std::size_t at = 0; (at = text.find("\npaint\nlooks ", at)) != std::string::npos; ++at) ++count;
    return count;
  };
  for (int attempt = 0; attempt < 600 && frames() < 5; ++attempt) usleep(100'000);
  EXPECT_EQ(ExitStatus(Start(start)), 0) << "a second start is recorded, too";
  kill(recorded, SIGTERM);
  ASSERT_EQ(ExitStatus(recorded), 0);

  std::istringstream lines(ReadFile(script));
  ScriptedPhone phone(folder, {"--screen", "landscape"});
  for (std::string line; std::getline(lines, line);)
    if (!line.starts_with('#')) EXPECT_EQ(phone.Do(line)["ok"], true) << line;
  EXPECT_GE(frames(), 5);
  EXPECT_EQ(phone.State()["exit"], 0);
  phone.End();

  EXPECT_EQ(ExitStatus(Start(with("--replay", script))), 0);
  EXPECT_EQ(ExitStatus(Start(with("--record", script))), 1) << "what is there is not overwritten";
  WriteFile(script, "key down\nstate\n");
  EXPECT_EQ(ExitStatus(Start(with("--replay", script))), 64) << "a window gives no replies";
}

TEST(DefaultPhone, IsACopyOfTheSampleMadeOnceAndWhole) {
  const PhoneFolder home;
  setenv("XDG_DATA_HOME", home.path().c_str(), 1);
  // What an interrupted copy left behind is not taken for a phone.
  WriteFile(home.path() / "quillmark" / "phone.unfinished" / "stray", "");
  const std::filesystem::path phone = home.path() / "quillmark" / "phone";
  EXPECT_EQ(ExitStatus(Start({HEADLESS_PROGRAM})), 0);
  EXPECT_EQ(FilesBelow(phone), FilesBelow(TEST_SOURCE_DIR "/phone"));
  EXPECT_FALSE(std::filesystem::exists(home.path() / "quillmark" / "phone.unfinished"));
  // It is the user's own from then on.
  std::filesystem::remove(phone / "registry.reg");
  EXPECT_EQ(ExitStatus(Start({HEADLESS_PROGRAM})), 0);
  EXPECT_FALSE(std::filesystem::exists(phone / "registry.reg"));
}

}  // namespace
