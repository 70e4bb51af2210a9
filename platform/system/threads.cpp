/// \file
/// The program's threads, the clock and the last error.
#include <exception>
#include <list>
#include <thread>
#include <utility>

#include "system/faults.h"
#include "system/handles.h"
#include "system/outside.h"
#include "system/scheduler.h"

namespace phone {

namespace {

/// The calling process, as its own handle to itself.
const HANDLE kCurrentProcess = reinterpret_cast<HANDLE>(static_cast<std::uintptr_t>(0x42));

constexpr DWORD kResumeFailed = 0xFFFFFFFF;

/// Guarded by the scheduler's lock.
struct ThreadObject : KernelObject {
  DWORD suspend_count = 0;
  bool cancelled = false;
  bool ended = false;
};

struct RunningThread {
  std::shared_ptr<ThreadObject> object;
  std::thread thread;
};

/// Guarded by the scheduler's lock; a thread is joined outside of it.
std::list<RunningThread> running_threads;

thread_local DWORD last_error = ERROR_SUCCESS;

void RunThread(std::uint64_t number, const std::shared_ptr<ThreadObject>& object, LPTHREAD_START_ROUTINE start,
               LPVOID parameter) {
  EnterThread(number);
  bool cancelled = false;
  {
    const SchedulerLock lock = LockScheduler();
    cancelled = object->cancelled;
  }
  if (!cancelled) start(parameter);
  LeaveThread([&object] { object->ended = true; });
}

/// Joins what has ended, so that threads do not pile up during a long run.
void JoinEndedThreads() {
  std::list<RunningThread> ended;
  {
    const SchedulerLock lock = LockScheduler();
    for (auto at = running_threads.begin(); at != running_threads.end();) {
      const auto running = at++;
      if (running->object->ended) ended.splice(ended.end(), running_threads, running);
    }
  }
  for (RunningThread& running : ended) running.thread.join();
}

HANDLE StartThread(LPTHREAD_START_ROUTINE start, LPVOID parameter, bool suspended, DWORD* id) {
  JoinEndedThreads();
  const auto object = std::make_shared<ThreadObject>();
  object->suspend_count = suspended ? 1 : 0;
  std::list<RunningThread> started;
  started.push_back({object, std::thread()});
  const HANDLE handle = AddHandle(object);
  const std::uint64_t number = AddThread([object] { return object->suspend_count == 0 || object->cancelled; });
  try {
    started.front().thread = std::thread(RunThread, number, object, start, parameter);
  } catch (...) {
    DropThread(number);
    RemoveHandle(handle);
    throw;
  }
  if (id) *id = static_cast<DWORD>(number);
  const SchedulerLock lock = LockScheduler();
  running_threads.splice(running_threads.end(), started);
  return handle;
}

}  // namespace

bool HandleIsWaitable(HANDLE handle) {
  return ObjectAs<ThreadObject>(handle) != nullptr;
}

bool HandleIsSignalled(HANDLE handle) {
  const auto thread = ObjectAs<ThreadObject>(handle);
  return !thread || thread->ended;
}

void JoinThreads() {
  {
    SchedulerLock lock = LockScheduler();
    for (const RunningThread& running : running_threads)
      if (running.object->suspend_count != 0) running.object->cancelled = true;
    NotifyScheduler();
    WaitUntil(
        lock, [] { return OtherThreads() == 0; }, std::nullopt);
  }
  JoinEndedThreads();
  CloseAllHandles();
}

}  // namespace phone

DWORD GetLastError() {
  return phone::last_error;
}

void SetLastError(DWORD error) {
  phone::last_error = error;
}

DWORD GetTickCount() {
  return phone::CurrentTick();
}

void Sleep(DWORD milliseconds) {
  phone::SleepFor(milliseconds);
}

HANDLE CreateThread(SECURITY_ATTRIBUTES*, SIZE_T, LPTHREAD_START_ROUTINE start, LPVOID parameter, DWORD flags,
                    DWORD* thread_id) {
  if (phone::FaultDue(phone::Operation::CreateThread)) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
  }
  if (!start || (flags & ~CREATE_SUSPENDED) != 0) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return nullptr;
  }
  try {
    return phone::StartThread(start, parameter, (flags & CREATE_SUSPENDED) != 0, thread_id);
  } catch (const std::exception&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
  }
}

DWORD ResumeThread(HANDLE thread) {
  const auto object = phone::ObjectAs<phone::ThreadObject>(thread);
  if (!object) {
    SetLastError(ERROR_INVALID_HANDLE);
    return phone::kResumeFailed;
  }
  const phone::SchedulerLock lock = phone::LockScheduler();
  const DWORD count = object->suspend_count;
  if (count != 0) --object->suspend_count;
  phone::NotifyScheduler();
  return count;
}

HANDLE GetCurrentProcess() {
  return phone::kCurrentProcess;
}

BOOL DuplicateHandle(HANDLE source_process, HANDLE source, HANDLE target_process, HANDLE* target, DWORD, BOOL, DWORD) {
  const auto object = phone::ObjectAs<phone::ThreadObject>(source);
  if (source_process != phone::kCurrentProcess || target_process != phone::kCurrentProcess || !object) {
    SetLastError(ERROR_INVALID_HANDLE);
    return FALSE;
  }
  if (!target) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  try {
    *target = phone::AddHandle(object);
    return TRUE;
  } catch (const std::exception&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return FALSE;
  }
}

BOOL CloseHandle(HANDLE object) {
  if (phone::HandleIsWaitable(object) && phone::RemoveHandle(object)) return TRUE;
  SetLastError(ERROR_INVALID_HANDLE);
  return FALSE;
}
