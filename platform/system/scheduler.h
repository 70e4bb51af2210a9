/// \file
/// Who of the program's threads runs, and waiting of every kind: sleeping, waiting for an object, waiting for the
/// answer to a message.
///
/// One lock and one condition serve the whole phone: there are at most a handful of threads, and they rarely meet.
/// Unless threads are free, one of them holds the baton and runs; it gives the baton away only while it waits here, so
/// that the same input gives the same run. Among several threads that could run, the oldest does.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>

namespace phone {

class Host;

using SchedulerLock = std::unique_lock<std::mutex>;

/// Begins and ends a run of the phone, on the user-interface thread. Every other thread has ended before
/// StopScheduler, which JoinThreads of handles.h sees to.
void StartScheduler(Host& host, bool free_threads);
void StopScheduler();

/// True on the thread that has called StartScheduler.
bool IsUiThread() noexcept;

/// The lock that guards what threads share through WaitUntil.
SchedulerLock LockScheduler();
/// Tells waiting threads to look again, and wakes the host. Call it after changing what a predicate reads.
void NotifyScheduler();

/// Gives the baton away until `ready` holds or the tick `deadline` has come; true when ready. `ready` is called under
/// the lock, by any thread, and has no effects. When every thread waits and only time can help, a manual clock is moved
/// to the earliest deadline (without the lock). A thread that the scheduler does not know does not wait.
bool WaitUntil(SchedulerLock& lock, const std::function<bool()>& ready, std::optional<std::uint32_t> deadline);

/// Announces a thread of the program, so that its turn does not depend on when this machine starts it. It runs once
/// `ready` (as for WaitUntil) holds. Gives its number, unique in this run.
std::uint64_t AddThread(std::function<bool()> ready);
/// Takes an announced thread back that could not be started.
void DropThread(std::uint64_t number);
/// The announced thread takes the baton before its first instruction and gives it away after its last; `at_end` is
/// called with the lock held, before others run.
void EnterThread(std::uint64_t number);
void LeaveThread(const std::function<void()>& at_end);

/// How many threads there are besides the user-interface thread, announced ones included. Call it with the lock held.
std::size_t OtherThreads();

/// Rests until the tick deadline.
void SleepFor(std::uint32_t milliseconds);

/// Tells LetThreadsRun what counts as work for the user-interface thread: `pending` is called with the lock held.
void SetUiWork(std::function<bool()> pending);

}  // namespace phone
