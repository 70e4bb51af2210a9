#include "windows/sent_messages.h"

#include <algorithm>
#include <span>

#include "system/handles.h"
#include "system/outside.h"
#include "system/scheduler.h"
#include "windows/cursor.h"
#include "windows/desktop.h"

namespace phone {

struct SentMessage {
  HWND window;
  UINT message;
  WPARAM wparam;
  LPARAM lparam;
  LRESULT result = 0;
  bool handled = false;
};

namespace {

LRESULT Broadcast(UINT message, WPARAM wparam, LPARAM lparam) {
  for (const HWND window : TheDesktop().windows.TopLevel()) Send(window, message, wparam, lparam);
  return TRUE;
}

LRESULT SendAnywhere(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (window == HWND_BROADCAST) return Broadcast(message, wparam, lparam);
  return Send(window, message, wparam, lparam);
}

LRESULT SendFromOtherThread(SentMessage& message) {
  SentMessages& sent = TheDesktop().sent;
  SchedulerLock lock = LockScheduler();
  if (!sent.accepting) return 0;
  sent.waiting.push_back(&message);
  lock.unlock();
  NotifyScheduler();
  lock.lock();
  WaitUntil(
      lock, [&message] { return message.handled; }, std::nullopt);
  return message.result;
}

/// What a wait ends with now; WAIT_TIMEOUT while there is nothing. Under the scheduler's lock.
DWORD FindSignalled(std::span<const HANDLE> handles, bool for_messages) {
  const auto found = std::ranges::find_if(handles, HandleIsSignalled);
  if (found != handles.end()) return WAIT_OBJECT_0 + static_cast<DWORD>(found - handles.begin());
  if (for_messages && !TheDesktop().sent.waiting.empty()) return WAIT_OBJECT_0 + static_cast<DWORD>(handles.size());
  return WAIT_TIMEOUT;
}

DWORD WaitForThese(std::span<const HANDLE> handles, DWORD milliseconds, bool for_messages) {
  if (!std::ranges::all_of(handles, HandleIsWaitable)) return WAIT_FAILED;
  std::optional<std::uint32_t> deadline;
  if (milliseconds != INFINITE) deadline = CurrentHost().TickCount() + milliseconds;
  SchedulerLock lock = LockScheduler();
  WaitUntil(
      lock, [&] { return FindSignalled(handles, for_messages) != WAIT_TIMEOUT; }, deadline);
  return FindSignalled(handles, for_messages);
}

}  // namespace

LRESULT Send(HWND handle, UINT message, WPARAM wparam, LPARAM lparam) {
  const Window* window = TheDesktop().windows.Find(handle);
  return window != nullptr ? window->procedure(window->handle, message, wparam, lparam) : 0;
}

void HandleSentMessages() {
  SentMessages& sent = TheDesktop().sent;
  SchedulerLock lock = LockScheduler();
  while (!sent.waiting.empty()) {
    SentMessage* message = sent.waiting.front();
    sent.waiting.pop_front();
    lock.unlock();
    // Whoever has sent it waits for an answer, whatever is thrown.
    const LRESULT result = Guarded<LRESULT>(
        0, [&] { return SendAnywhere(message->window, message->message, message->wparam, message->lparam); });
    lock.lock();
    message->result = result;
    message->handled = true;
    lock.unlock();
    NotifyScheduler();
    lock.lock();
  }
}

void RefuseSentMessages() {
  SentMessages& sent = TheDesktop().sent;
  {
    const SchedulerLock lock = LockScheduler();
    sent.accepting = false;
    for (SentMessage* message : sent.waiting) message->handled = true;
    sent.waiting.clear();
  }
  NotifyScheduler();
}

bool UiWorkWaits() {
  return !TheDesktop().sent.waiting.empty() || CursorChangeWaits();
}

}  // namespace phone

using namespace phone;

LRESULT SendMessageW(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (!DesktopExists()) return 0;
  return Guarded<LRESULT>(0, [&]() -> LRESULT {
    if (window == HWND_BROADCAST) RecordBroadcast({CurrentHost().TickCount(), message, wparam, lparam});
    if (OnUiThread()) return SendAnywhere(window, message, wparam, lparam);
    SentMessage sent{window, message, wparam, lparam};
    return SendFromOtherThread(sent);
  });
}

DWORD MsgWaitForMultipleObjectsEx(DWORD count, const HANDLE* handles, DWORD milliseconds, DWORD wake_mask, DWORD) {
  if (!DesktopExists() || (count > 0 && handles == nullptr)) return WAIT_FAILED;
  return Guarded<DWORD>(WAIT_FAILED, [&] {
    return WaitForThese({handles, count}, milliseconds, OnUiThread() && (wake_mask & QS_SENDMESSAGE) != 0);
  });
}
