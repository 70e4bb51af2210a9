#include <atomic>
#include <chrono>
#include <functional>
#include <string>
#include <thread>

#include "system_fixture.h"

namespace {

class Threads : public SystemTest {
 protected:
  /// The work of a thread. Where each has come to is written to `log`, which the baton guards.
  using Work = std::function<void()>;

  HANDLE Start(Work& work, DWORD flags = 0) { return CreateThread(nullptr, 0, Run, &work, flags, nullptr); }

  void Restart(phone::Host& on, bool free_threads) {
    phone::JoinThreads();
    phone::StopScheduler();
    phone::ResetOutside(on);
    phone::StartScheduler(on, free_threads);
  }

  static DWORD WINAPI Run(LPVOID work) {
    (*static_cast<Work*>(work))();
    return 0;
  }

  std::string log;
};

/// A clock that goes by itself.
class RealHost : public TestHost {
 public:
  std::uint32_t TickCount() override {
    using namespace std::chrono;
    return 1 + static_cast<std::uint32_t>(duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
  }
  bool ClockIsManual() const override { return false; }
};

/// A clock that is slow to move: whoever waited for the new time has ended before it is back.
class SlowHost : public TestHost {
 public:
  void MoveClockTo(std::uint32_t to) override {
    tick = to;
    phone::NotifyScheduler();
    while (phone::WorkerRuns()) std::this_thread::yield();
  }
};

TEST_F(Threads, TakeTurnsOldestFirstAndTheClockMovesOnlyWhenNothingElseHelps) {
  Work slow = [&] {
    log += "a";
    Sleep(30);
    log += "A";
  };
  Work quick = [&] {
    log += "b";
    Sleep(10);
    log += "B";
    Sleep(20);
    log += "!";
  };
  for (int i = 0; i < 50; ++i) {
    log.clear();
    host.tick = 0xFFFFFFF0 - i;  // the clock wraps on the way
    const std::uint32_t begin = host.tick;
    Start(slow);
    Start(quick);
    log += "|";
    EXPECT_FALSE(phone::LetThreadsRun());
    EXPECT_EQ(log, "|ab");
    EXPECT_TRUE(phone::WorkerRuns());
    EXPECT_EQ(phone::NextDeadline(), begin + 10);
    EXPECT_EQ(host.tick, begin);
    host.tick = begin + 10;
    phone::LetThreadsRun();
    EXPECT_EQ(log, "|abB");
    Sleep(100);
    EXPECT_EQ(log, "|abBA!");
    EXPECT_EQ(host.tick, begin + 110);
    EXPECT_FALSE(phone::WorkerRuns());
  }
}

TEST_F(Threads, LettingThreadsRunTellsOfWorkLeftForTheUserInterface) {
  bool sent = false, answered = false;
  phone::SetUiWork([&] { return sent; });
  Work sender = [&] {
    phone::SchedulerLock lock = phone::LockScheduler();
    sent = true;
    phone::NotifyScheduler();
    log += phone::WaitUntil(
               lock, [&] { return answered; }, GetTickCount() + 500)
               ? "answer"
               : "timeout";
  };
  Start(sender);
  EXPECT_TRUE(phone::LetThreadsRun());
  EXPECT_EQ(log, "");
  EXPECT_GT(host.wakes, 0);
  sent = false;
  answered = true;
  EXPECT_FALSE(phone::LetThreadsRun());
  EXPECT_EQ(log, "answer");
  answered = false;
  Start(sender);
  Sleep(1000);
  EXPECT_EQ(log, "answertimeout");
}

TEST_F(Threads, HandlesAreCheckedAndASuspendedThreadWaits) {
  Work work = [&] { log += "x"; };
  const HANDLE thread = Start(work, CREATE_SUSPENDED);
  HANDLE second = nullptr;
  ASSERT_TRUE(
      DuplicateHandle(GetCurrentProcess(), thread, GetCurrentProcess(), &second, 0, FALSE, DUPLICATE_SAME_ACCESS));
  phone::LetThreadsRun();
  EXPECT_EQ(log, "");
  EXPECT_EQ(ResumeThread(thread), 1u);
  EXPECT_EQ(ResumeThread(thread), 0u);
  EXPECT_TRUE(CloseHandle(thread));
  phone::SchedulerLock lock = phone::LockScheduler();
  EXPECT_FALSE(phone::HandleIsSignalled(second));
  EXPECT_TRUE(phone::WaitUntil(
      lock, [&] { return phone::HandleIsSignalled(second); }, std::nullopt));
  lock.unlock();
  EXPECT_EQ(log, "x");
  for (const HANDLE bad : {thread, static_cast<HANDLE>(nullptr), INVALID_HANDLE_VALUE, static_cast<HANDLE>(&work)}) {
    SetLastError(0);
    EXPECT_FALSE(CloseHandle(bad));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
    EXPECT_EQ(ResumeThread(bad), 0xFFFFFFFFu);
    EXPECT_FALSE(phone::HandleIsWaitable(bad));
    EXPECT_FALSE(DuplicateHandle(GetCurrentProcess(), bad, GetCurrentProcess(), &second, 0, FALSE, 0));
  }
  phone::SetFault(phone::Operation::CreateThread, 1, 0);
  EXPECT_FALSE(Start(work));
  Start(work, CREATE_SUSPENDED);
  phone::JoinThreads();  // ends without having run
  EXPECT_EQ(log, "x");
}

TEST_F(Threads, FreeThreadsShareAManualClock) {
  Restart(host, true);
  std::atomic<int> done = 0;
  Work work = [&] {
    for (int i = 0; i < 20; ++i) Sleep(7);
    ++done;
  };
  const std::uint32_t begin = host.tick;
  for (int i = 0; i < 4; ++i) Start(work);
  Sleep(500);
  EXPECT_EQ(done, 4);
  EXPECT_GE(host.tick - begin, 500u);
}

TEST_F(Threads, TheLastOfThemEndsWhileTheClockMoves) {
  SlowHost slow;
  Restart(slow, false);
  Work work = [&] { Sleep(10); };
  Start(work);
  phone::LetThreadsRun();
  Sleep(50);
  EXPECT_EQ(slow.tick, 1050u);
  Restart(host, false);
}

TEST_F(Threads, SleepForRealOnARealClock) {
  for (const bool free_threads : {false, true}) {
    RealHost real;
    Restart(real, free_threads);
    std::atomic<std::uint32_t> woke = 0;
    Work work = [&] {
      Sleep(20);
      woke = GetTickCount();
    };
    const std::uint32_t begin = GetTickCount();
    Start(work);
    Sleep(60);
    EXPECT_GE(woke - begin, 20u);
    EXPECT_GE(GetTickCount() - begin, 60u);
    Restart(host, false);
  }
}

}  // namespace
