#include "windows/sent_messages.h"

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

DWORD WaitForThese(DWORD count, const HANDLE* handles, DWORD milliseconds, bool for_messages) {
  SchedulerLock lock = LockScheduler();
  DWORD found = WAIT_TIMEOUT;
  const auto ready = [&] {
    for (DWORD i = 0; i < count; ++i) {
      if (!HandleIsSignalled(handles[i])) continue;
      found = WAIT_OBJECT_0 + i;
      return true;
    }
    if (!for_messages || TheDesktop().sent.waiting.empty()) return false;
    found = WAIT_OBJECT_0 + count;
    return true;
  };
  std::optional<std::uint32_t> deadline;
  if (milliseconds != INFINITE) deadline = CurrentHost().TickCount() + milliseconds;
  WaitUntil(lock, ready, deadline);
  return found;
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
    const LRESULT result = SendAnywhere(message->window, message->message, message->wparam, message->lparam);
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
    return WaitForThese(count, handles, milliseconds, OnUiThread() && (wake_mask & QS_SENDMESSAGE) != 0);
  });
}
