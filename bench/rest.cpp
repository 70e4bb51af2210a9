// What a phone at rest does: nothing. Counted, not timed.

#include <sys/resource.h>

#include <chrono>
#include <condition_variable>
#include <fstream>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>

#include "desktop/desktop_phone.h"
#include "desktop/display.h"
#include "hosts/program.h"
#include "phone.h"
#include "support/compare.h"
#include "support/counted_allocations.h"
#include "support/layouts.h"
#include "support/program.h"

namespace {

using namespace bench;

constexpr int kThemes = 20;
constexpr auto kRest = std::chrono::seconds(2);

const Phone& ThePhone() {
  static const Phone* const phone = [] {
    auto* const made = new Phone;
    made->AddThemes("Short", kThemes, 8);
    made->AddThemes("Application Data", kThemes, 8);
    return made;
  }();
  return *phone;
}

void Allocations(benchmark::State& state) {
  WithProgram(ThePhone().path(), [&](Program& program) {
    program.ShowThemes(TEXT("\\Short"));
    program.Pass(1000);
    program.Frame();
    program.Frame();
    int allocations = 0;
    for (auto _ : state) {
      TakeAllocations();
      const double time = Time([&] { program.Frame(); });
      allocations += TakeAllocations();
      state.SetIterationTime(time);
    }
    Report(state, allocations, 0);
  });
}

long ContextSwitches() {
  rusage usage = {};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_nvcsw;
}

/// A host as a window is one: the clock goes by itself, threads run freely, and who waits sleeps until woken.
class RealTimeHost final : public BenchHost {
 public:
  int wakes = 0;       ///< after the phone came to rest
  long switches = 0;   ///< of the whole process meanwhile
  double seconds = 0;  ///< of the rest
  bool FrameIsDue() override { return true; }
  bool ClockIsManual() const override { return false; }
  std::uint32_t TickCount() override {
    return static_cast<std::uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(Since(begin_)).count()) + 1;
  }
  void Wake() override {
    const std::lock_guard lock(mutex_);
    ++wakes;
    woken_.notify_all();
  }
  void WaitForInput(bool waiting_for_frame) override {
    if (waiting_for_frame || phone::LetThreadsRun()) return;
    std::unique_lock lock(mutex_);
    wakes = 0;
    const long before = ContextSwitches();
    const Clock::time_point begin = Clock::now();
    woken_.wait_for(lock, kRest, [this] { return wakes > 0; });
    seconds = std::chrono::duration<double>(Since(begin)).count();
    constexpr long kItsOwnRest = 1;
    switches = ContextSwitches() - before - kItsOwnRest;
    lock.unlock();
    phone::Close();
  }

 private:
  using Clock = std::chrono::steady_clock;
  static Clock::duration Since(Clock::time_point begin) { return Clock::now() - begin; }

  const Clock::time_point begin_ = Clock::now();
  std::mutex mutex_;
  std::condition_variable woken_;
};

void WakeUps(benchmark::State& state) {
  for (auto _ : state) {
    RealTimeHost host;
    hosts::Settings settings;
    settings.phone = ThePhone().path();
    settings.free_threads = true;
    phone::Run(host, hosts::PhoneOptions(settings), hosts::ProgramEntry());
    state.SetIterationTime(host.seconds);
    Report(state, static_cast<double>(host.wakes + host.switches), 0);
  }
}

/// How often the threads of another process have gone to sleep.
long Sleeps(pid_t process) {
  constexpr char kField[] = "voluntary_ctxt_switches:";
  long sleeps = 0;
  for (const auto& thread : std::filesystem::directory_iterator("/proc/" + std::to_string(process) + "/task")) {
    std::ifstream status(thread.path() / "status");
    for (std::string field; status >> field;)
      if (long count = 0; field == kField && status >> count) sleeps += count;
  }
  return sleeps;
}

/// The desktop program in a real window, with all the threads that its libraries have.
void WindowWakeUps(benchmark::State& state) {
  const TemporaryFolder home;
  WriteFile(home.path / "state" / "quillmark" / "window", "");  // not the first start: nothing goes by itself
  PhoneFolder folder;
  for (int theme = 0; theme < kThemes; ++theme) {
    const std::string name = std::to_string(theme);
    folder.AddLayout(name, Title(theme, 8), {"clock"});
  }
  TestDisplay display;
  for (auto _ : state) {
    const DesktopPhone phone(display, folder, home.path);
    constexpr int kMostPauses = 30;
    int pauses = 0;
    const auto slept_in = [&phone](auto pause) {
      const long before = Sleeps(phone.process());
      std::this_thread::sleep_for(pause);
      return Sleeps(phone.process()) - before;
    };
    while (slept_in(std::chrono::seconds(1)) > 0)
      if (++pauses == kMostPauses) throw std::runtime_error("the window does not come to rest");
    state.SetIterationTime(std::chrono::duration<double>(kRest).count());
    Report(state, static_cast<double>(slept_in(kRest)), 0);
  }
}

[[maybe_unused]] const bool registered = [] {
  AddRow("allocations in 100 frames at rest", 100, Allocations);
  AddRow("wake-ups of an idle phone in 2 seconds", 1, WakeUps);
  AddRow("wake-ups of an idle window in 2 seconds", 1, WindowWakeUps);
  return true;
}();

}  // namespace

BENCHMARK_MAIN();
