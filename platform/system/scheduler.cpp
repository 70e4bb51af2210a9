#include "system/scheduler.h"

#include <algorithm>
#include <chrono>
#include <list>

#include "phone.h"
#include "system/outside.h"

namespace phone {

namespace {

/// The longest single rest, so that ticks can be compared across the wrap of the clock.
constexpr std::uint32_t kLongestRest = 0x40000000;

struct Thread {
  std::uint64_t number = 0;
  bool waiting = true;
  bool yielding = false;  ///< the user-interface thread lets all others run first
  std::function<bool()> ready;
  std::optional<std::uint32_t> deadline;
};

/// Guarded by `mutex`, but for the flags that stand while a run lasts.
struct Scheduler {
  std::mutex mutex;
  std::condition_variable changed;
  Host* host = nullptr;
  bool free_threads = false;
  bool moving_clock = false;
  std::uint64_t next_number = 0;
  std::list<Thread> threads;  ///< oldest first; the user-interface thread is the first
  Thread* holder = nullptr;   ///< who has the baton; nobody while all wait, and with free threads
  std::function<bool()> ui_work;
};

Scheduler scheduler;
thread_local Thread* self = nullptr;

/// Milliseconds from now to the tick, negative when it has passed; across the wrap of the clock.
std::int32_t TimeTo(std::uint32_t tick, std::uint32_t now) {
  return static_cast<std::int32_t>(tick - now);
}

bool IsDue(const Thread& thread, std::uint32_t now) {
  return thread.deadline && TimeTo(*thread.deadline, now) <= 0;
}

bool CanRun(const Thread& thread, std::uint32_t now) {
  return thread.waiting && !thread.yielding && (thread.ready() || IsDue(thread, now));
}

const Thread* EarliestSleeper(std::uint32_t now) {
  const Thread* earliest = nullptr;
  for (const Thread& thread : scheduler.threads) {
    if (!thread.waiting || !thread.deadline) continue;
    if (!earliest || TimeTo(*thread.deadline, now) < TimeTo(*earliest->deadline, now)) earliest = &thread;
  }
  return earliest;
}

/// Moves a manual clock to the earliest deadline when every thread waits and none can run. With a baton, "every" is
/// given by nobody holding it. True when it was moved; others may have run, waited and ended in the meantime.
bool MoveClock(SchedulerLock& lock) {
  if (scheduler.moving_clock || !scheduler.host->ClockIsManual()) return false;
  const std::uint32_t now = scheduler.host->TickCount();
  for (const Thread& thread : scheduler.threads)
    if (!thread.waiting || thread.yielding || CanRun(thread, now)) return false;
  const Thread* const earliest = EarliestSleeper(now);
  if (!earliest) return false;
  const std::uint32_t tick = *earliest->deadline;
  scheduler.moving_clock = true;
  lock.unlock();
  scheduler.host->MoveClockTo(tick);
  lock.lock();
  scheduler.moving_clock = false;
  scheduler.changed.notify_all();
  return true;
}

/// Hands the free baton to the oldest thread that can run, and to a yielding one after all others.
void PassBaton() {
  if (scheduler.free_threads || scheduler.holder) return;
  const std::uint32_t now = scheduler.host->TickCount();
  auto next = std::find_if(scheduler.threads.begin(), scheduler.threads.end(),
                           [now](const Thread& thread) { return CanRun(thread, now); });
  if (next == scheduler.threads.end())
    next = std::find_if(scheduler.threads.begin(), scheduler.threads.end(),
                        [](const Thread& thread) { return thread.waiting && thread.yielding; });
  if (next == scheduler.threads.end()) return;
  scheduler.holder = &*next;
  scheduler.changed.notify_all();
}

bool HasTurn(const Thread& thread) {
  if (!scheduler.free_threads) return scheduler.holder == &thread;
  return thread.yielding || CanRun(thread, scheduler.host->TickCount());
}

/// Rests until something changes, at most until a deadline where time goes by itself: with free threads the thread's
/// own; while nobody has the baton the earliest of all, since any waiting thread may have to pass it.
void Rest(SchedulerLock& lock, const Thread& thread) {
  if (scheduler.holder || scheduler.host->ClockIsManual()) return scheduler.changed.wait(lock);
  const std::uint32_t now = scheduler.host->TickCount();
  const Thread* const sleeper = scheduler.free_threads ? &thread : EarliestSleeper(now);
  if (!sleeper || !sleeper->deadline) return scheduler.changed.wait(lock);
  scheduler.changed.wait_for(lock, std::chrono::milliseconds(std::max(0, TimeTo(*sleeper->deadline, now))));
}

/// Waits until it is this thread's turn. The thread's conditions are set.
void AwaitTurn(SchedulerLock& lock, Thread& thread) {
  thread.waiting = true;
  if (scheduler.holder == &thread) scheduler.holder = nullptr;
  PassBaton();
  while (!HasTurn(thread)) {
    const bool moved = !scheduler.holder && MoveClock(lock);
    PassBaton();
    // After a move all is looked at again: who ended meanwhile has told before this thread could rest.
    if (!moved && !HasTurn(thread)) Rest(lock, thread);
  }
  thread.waiting = false;
}

}  // namespace

void StartScheduler(Host& host, bool free_threads) {
  const SchedulerLock lock(scheduler.mutex);
  scheduler.host = &host;
  scheduler.free_threads = free_threads;
  scheduler.next_number = 0;
  scheduler.threads.clear();
  self = &scheduler.threads.emplace_back();
  self->number = scheduler.next_number++;
  self->waiting = false;
  scheduler.holder = free_threads ? nullptr : self;
  scheduler.ui_work = nullptr;
}

void StopScheduler() {
  const SchedulerLock lock(scheduler.mutex);
  scheduler.threads.clear();
  scheduler.holder = nullptr;
  scheduler.ui_work = nullptr;
  scheduler.host = nullptr;
  self = nullptr;
}

bool IsUiThread() noexcept {
  return self && self->number == 0;
}

SchedulerLock LockScheduler() {
  return SchedulerLock(scheduler.mutex);
}

void NotifyScheduler() {
  scheduler.changed.notify_all();
  // The user-interface thread does not wait in the host when it is the one that calls.
  if (!IsUiThread() && scheduler.host) scheduler.host->Wake();
}

bool WaitUntil(SchedulerLock& lock, const std::function<bool()>& ready, std::optional<std::uint32_t> deadline) {
  if (!self) return ready();
  self->ready = ready;
  self->deadline = deadline;
  AwaitTurn(lock, *self);
  self->ready = nullptr;
  self->deadline.reset();
  return ready();
}

std::uint64_t AddThread(std::function<bool()> ready) {
  const SchedulerLock lock(scheduler.mutex);
  Thread& thread = scheduler.threads.emplace_back();
  thread.number = scheduler.next_number++;
  thread.ready = std::move(ready);
  return thread.number;
}

void DropThread(std::uint64_t number) {
  const SchedulerLock lock(scheduler.mutex);
  scheduler.threads.remove_if([number](const Thread& thread) { return thread.number == number; });
}

void EnterThread(std::uint64_t number) {
  SchedulerLock lock(scheduler.mutex);
  const auto thread = std::find_if(scheduler.threads.begin(), scheduler.threads.end(),
                                   [number](const Thread& candidate) { return candidate.number == number; });
  self = &*thread;
  AwaitTurn(lock, *self);
  self->ready = nullptr;
}

void LeaveThread(const std::function<void()>& at_end) {
  const SchedulerLock lock(scheduler.mutex);
  at_end();
  if (scheduler.holder == self) scheduler.holder = nullptr;
  scheduler.threads.remove_if([](const Thread& thread) { return &thread == self; });
  self = nullptr;
  PassBaton();
  // Where nobody could take the baton, a waiting thread sees to it that the clock moves on.
  scheduler.changed.notify_all();
  scheduler.host->Wake();
}

std::size_t OtherThreads() {
  return scheduler.threads.empty() ? 0 : scheduler.threads.size() - 1;
}

void SleepFor(std::uint32_t milliseconds) {
  SchedulerLock lock(scheduler.mutex);
  if (!self) return;
  for (std::uint32_t left = milliseconds;;) {
    const std::uint32_t rest = std::min(left, kLongestRest);
    WaitUntil(
        lock, [] { return false; }, scheduler.host->TickCount() + rest);
    left -= rest;
    if (left == 0) return;
  }
}

void SetUiWork(std::function<bool()> pending) {
  const SchedulerLock lock(scheduler.mutex);
  scheduler.ui_work = std::move(pending);
}

bool LetThreadsRun() {
  SchedulerLock lock(scheduler.mutex);
  if (!self) return false;
  // With free threads too, sleepers look at a clock that the host has moved.
  scheduler.changed.notify_all();
  if (!scheduler.free_threads) {
    self->yielding = true;
    AwaitTurn(lock, *self);
    self->yielding = false;
  }
  return scheduler.ui_work && scheduler.ui_work();
}

std::optional<std::uint32_t> NextDeadline() {
  const SchedulerLock lock(scheduler.mutex);
  if (!scheduler.host) return std::nullopt;
  const Thread* const earliest = EarliestSleeper(scheduler.host->TickCount());
  return earliest ? earliest->deadline : std::nullopt;
}

bool WorkerRuns() {
  const SchedulerLock lock(scheduler.mutex);
  return OtherThreads() != 0;
}

}  // namespace phone
