/// \file
/// Who of the program's threads runs, and waiting of every kind: sleeping, waiting for an object, waiting for the answer
/// to a message.
///
/// One lock and one condition serve the whole phone: there are at most a handful of threads, and they rarely meet.
/// Unless threads are free, one of them holds the baton and runs; it gives the baton away only while it waits here, so
/// that the same input gives the same run.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>

namespace phone {

class Host;

using SchedulerLock = std::unique_lock<std::mutex>;

/// Begins and ends a run of the phone, on the user-interface thread.
void StartScheduler(Host& host, bool free_threads);
void StopScheduler();

/// The lock that guards what threads share through WaitUntil.
SchedulerLock LockScheduler();
/// Tells waiting threads to look again, and wakes the host. Call it after changing what a predicate reads.
void NotifyScheduler();

/// Gives the baton away until `ready` (called under the lock) holds or the tick `deadline` has come; true when ready.
/// When every thread waits and only time can help, a manual clock is moved to the earliest deadline.
bool WaitUntil(SchedulerLock& lock, const std::function<bool()>& ready, std::optional<std::uint32_t> deadline);

/// A thread of the program takes the baton before its first instruction and gives it away after its last. `ready` as
/// for WaitUntil: a suspended thread starts when it is resumed.
void EnterThread(const std::function<bool()>& ready);
void LeaveThread();

/// Rests until the tick deadline.
void SleepFor(std::uint32_t milliseconds);

}  // namespace phone
