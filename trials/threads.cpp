/// \file
/// The whole program with its threads let free, on a clock that runs fast, under hands that press anything at any
/// moment: applying, leaving, second starts of other processes, keys, paints and the end come in whatever order they
/// happen to. Meant for the thread sanitizer; a round that stands still ends the trial with a message.
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <iostream>
#include <mutex>
#include <random>
#include <stdexcept>
#include <thread>

#include "hosts/program.h"
#include "rounds.h"
#include "screens/resource.h"
#include "support/phone_folder.h"
#include "support/process.h"

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr int kSpeed = 100;  // the phone's clock against the machine's
constexpr auto kPatience = 120s;
constexpr auto kBetweenStarts = 20ms;
constexpr int kMostActions = 250;

constexpr UINT kKeys[] = {VK_UP, VK_DOWN, VK_DOWN, VK_RETURN, VK_LEFT, VK_RIGHT, VK_ESCAPE, VK_F1, VK_F2, VK_HOME, '2'};
constexpr int kCommands[] = {IDM_CONFIRM,       IDM_CONFIRM,        IDM_CONFIRM,         IDM_EDIT,
                             IDM_LEFT_SOFT_KEY, IDM_RIGHT_SOFT_KEY, IDM_DELETE,          IDM_HELP,
                             IDM_ABOUT,         IDM_ADD_NEW_PLUGIN, IDM_ADD_TO_FAVORITES};
constexpr int kAnswers[] = {IDYES, IDNO, IDOK};

/// A screen and hands that do something at random whenever the phone has nothing to do.
class RestlessHost : public phone::Host {
 public:
  RestlessHost(std::uint32_t seed, std::atomic<std::uint64_t>& pulse)
      : random_(seed), pulse_(pulse), actions_left_(Draw(5, kMostActions)) {}

  std::uint32_t TickCount() override {
    const auto passed = std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - begin_).count();
    return 1 + static_cast<std::uint32_t>(passed * kSpeed / 1000);
  }
  bool ClockIsManual() const override { return false; }
  void MoveClockTo(std::uint32_t) override {}
  bool FrameIsDue() override { return Draw(0, 3) == 0; }

  void WaitForInput(bool) override {
    ++pulse_;
    if (actions_left_ <= 0) return phone::Close();
    if (Draw(0, 2) == 0) return AwaitWake();
    --actions_left_;
    Act();
  }
  void Wake() override {
    const std::lock_guard lock(mutex_);
    woken_ = true;
    wake_.notify_all();
  }

  void Present(const phone::ScreenImage& screen) override { seen_ ^= screen.pixels[screen.stride]; }
  void ShowCursor(phone::Cursor) override {}
  void LeaveForeground() override {}
  void ComeToForeground() override {}
  bool OpenDocument(const std::string&, const std::string&) override { return Draw(0, 1) == 0; }

 private:
  int Draw(int least, int most) { return std::uniform_int_distribution(least, most)(random_); }
  template <typename Value, std::size_t count>
  Value DrawFrom(const Value (&values)[count]) {
    return values[Draw(0, static_cast<int>(count) - 1)];
  }

  void AwaitWake() {
    std::unique_lock lock(mutex_);
    wake_.wait_for(lock, 2ms, [this] { return woken_; });
    woken_ = false;
  }

  void Act() {
    switch (Draw(0, 11)) {
      case 0: phone::SendCommand(DrawFrom(kCommands)); return;
      case 1: phone::SendCommand(IDM_CONFIRM); return;
      case 2: phone::ChooseMenuItem(static_cast<std::size_t>(Draw(0, 5))); return;
      case 3: phone::AnswerBox(DrawFrom(kAnswers)); return;
      case 4: phone::TypeCharacter(static_cast<WCHAR>(Draw(0x20, 0x2FF))); return;
      case 5: phone::SendHotKey(VK_ESCAPE, Draw(0, 1) == 0); return;
      case 6: phone::ComeBack(); return;
      case 7: phone::ResizeClient(Draw(1, 320), Draw(1, 320)); return;
      case 8: phone::InvalidateAll(); return;
      case 9: phone::RegistryGet(u"ControlPanel\\Home", u"Scheme"); return;
      case 10: seen_ += static_cast<std::uint32_t>(phone::Look().windows); return;
      default: {
        const UINT key = DrawFrom(kKeys);
        phone::PressKey(key);
        if (Draw(0, 4) != 0) phone::ReleaseKey(key);
      }
    }
  }

  std::mt19937 random_;
  std::atomic<std::uint64_t>& pulse_;
  const Clock::time_point begin_ = Clock::now();
  int actions_left_;
  std::uint32_t seen_ = 0;
  std::mutex mutex_;
  std::condition_variable wake_;
  bool woken_ = false;
};

/// Ends the process, saying so, when nothing moves any more.
class Watchdog {
 public:
  explicit Watchdog(std::atomic<std::uint64_t>& pulse) : thread_([this, &pulse] { Watch(pulse); }) {}
  Watchdog(const Watchdog&) = delete;
  Watchdog& operator=(const Watchdog&) = delete;
  ~Watchdog() {
    {
      const std::lock_guard lock(mutex_);
      done_ = true;
    }
    wake_.notify_all();
    thread_.join();
  }

 private:
  void Watch(std::atomic<std::uint64_t>& pulse) {
    std::unique_lock lock(mutex_);
    for (std::uint64_t last = pulse;; last = pulse) {
      if (wake_.wait_for(lock, kPatience, [this] { return done_; })) return;
      if (pulse != last) continue;
      std::cout << "nothing has moved for two minutes: a deadlock" << std::endl;
      std::abort();
    }
  }

  std::mutex mutex_;
  std::condition_variable wake_;
  bool done_ = false;
  std::thread thread_;
};

/// Starts the program again and again on a phone folder, in processes of their own.
class SecondStarts {
 public:
  explicit SecondStarts(const PhoneFolder& folder) : thread_([this, path = folder.path().string()] { Start(path); }) {}
  SecondStarts(const SecondStarts&) = delete;
  SecondStarts& operator=(const SecondStarts&) = delete;
  ~SecondStarts() { Stop(); }

  /// Waits for the last one to end. How many there were, and how many ended with an error.
  std::pair<int, int> Stop() {
    done_ = true;
    if (thread_.joinable()) thread_.join();
    return {starts_, failures_};
  }

 private:
  void Start(const std::string& path) {
    while (!done_) {
      ++starts_;
      if (!EndsWell(path)) ++failures_;
      std::this_thread::sleep_for(kBetweenStarts);
    }
  }

  static bool EndsWell(const std::string& path) {
    try {
      return AwaitEnd(StartProgram({HEADLESS_PROGRAM, "--phone", path}, [](auto* actions) {
               Silence(actions, STDIN_FILENO);
               Silence(actions, STDOUT_FILENO);
             })) == 0;
    } catch (const std::exception&) {
      return false;
    }
  }

  std::atomic<bool> done_ = false;
  int starts_ = 0;
  int failures_ = 0;
  std::thread thread_;
};

/// The layout in use, as the file names it.
std::string SchemeIn(const PhoneFolder& folder) {
  const std::string registry = ReadFile(folder.path() / "registry.reg");
  const std::string mark = "\"Scheme\"=\"";
  const std::size_t begin = registry.find(mark);
  if (begin == std::string::npos || registry.find(mark, begin + 1) != std::string::npos)
    throw std::runtime_error("the registry is not what it was:\n" + registry);
  return registry.substr(begin + mark.size(), registry.find("\"\n", begin) - begin - mark.size());
}

void Check(bool good, const std::string& otherwise) {
  if (!good) throw std::runtime_error(otherwise);
}

struct Tally {
  int starts = 0;
  int applied = 0;  ///< writes of the registry
};

void PlayRound(std::uint32_t seed, std::atomic<std::uint64_t>& pulse, Tally& tally) {
  const PhoneFolder folder;
  for (const char* const name : {"alpha", "beta", "gamma", "delta"}) folder.AddLayout(name, name, {"clock", "moon"});
  folder.UseLayout("beta");
  folder.AddFavorite("Tides", u"<plugin clsid=\"{T}\" name=\"Tides\"/>");
  hosts::Settings settings;
  settings.phone = folder.path();
  settings.free_threads = true;
  RestlessHost host(seed, pulse);
  SecondStarts starts(folder);
  const int exit_code = phone::Run(host, hosts::PhoneOptions(settings), hosts::ProgramEntry());
  const auto [count, failures] = starts.Stop();
  tally.starts += count;
  tally.applied += static_cast<int>(phone::Look().registry_writes.size());
  Check(exit_code == 0, "the program ended with " + std::to_string(exit_code));
  Check(failures == 0, "a second start ended with an error");
  const std::string scheme = SchemeIn(folder);
  Check(scheme.starts_with("\\\\Application Data\\\\Home\\\\"), "an unfinished apply: " + scheme);
  for (const std::string& file : FilesBelow(folder.path()))
    Check(file.find(".~writing-") == std::string::npos, "a stray file: " + file);
}

}  // namespace

int main(int count, char** arguments) {
  const Rounds rounds = ParseRounds(count, arguments, 100);
  std::atomic<std::uint64_t> pulse = 0;
  const Watchdog watchdog(pulse);
  Tally tally;
  if (!Play(rounds, [&](std::uint32_t seed) { PlayRound(seed, pulse, tally); })) return 1;
  std::cout << rounds.count << " rounds from seed " << rounds.seed << " on, " << pulse << " waits for input, "
            << tally.applied << " writes of the registry, " << tally.starts << " second starts\n";
  return tally.applied > 0 && tally.starts > 0 ? 0 : 1;
}
