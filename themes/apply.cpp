#include "themes/apply.h"

#include <regext.h>

#include <utility>

#include "base/status.h"

namespace {

constexpr LPCWSTR HOME_KEY = TEXT("ControlPanel\\Home");
constexpr LPCWSTR SCHEME_VALUE = TEXT("Scheme");
constexpr LPCWSTR TEMPORARY_SCHEME = TEXT("temp.home.xml");
constexpr WPARAM HOME_SETTING = 0xF2;  // what has changed, in the broadcast
constexpr DWORD SETTLE_TIME = 2000;    // ms that the home screen takes to follow a change
constexpr DWORD RESUME_FAILED = 0xFFFFFFFF;

HRESULT WriteScheme(LPCWSTR path) noexcept {
  return RegistrySetString(HKEY_CURRENT_USER, HOME_KEY, SCHEME_VALUE, path);
}

void BroadcastChange() noexcept {
  SendMessageW(HWND_BROADCAST, WM_WININICHANGE, HOME_SETTING, 0);
}

/// Puts another layout's name in the place of the one in use, and lets the phone follow.
HRESULT LeaveScheme() noexcept {
  RETURN_IF_FAILED(WriteScheme(TEMPORARY_SCHEME));
  BroadcastChange();
  Sleep(SETTLE_TIME);
  return S_OK;
}

}  // namespace

HRESULT ReadScheme(TextField& path) noexcept {
  constexpr UINT room = sizeof path.units / sizeof path.units[0];
  return RegistryGetString(HKEY_CURRENT_USER, HOME_KEY, SCHEME_VALUE, path.units, room);
}

HRESULT ApplyScheme(LPCWSTR path) noexcept {
  SetCursor(LoadCursorW(nullptr, IDC_WAIT));
  TextField current;
  RETURN_IF_FAILED(ReadScheme(current));
  const bool inUse = lstrcmpiW(current, path) == 0;
  if (inUse) RETURN_IF_FAILED(LeaveScheme());
  RETURN_IF_FAILED(WriteScheme(path));
  BroadcastChange();
  if (inUse) Sleep(SETTLE_TIME);
  return S_OK;
}

void EndApply(std::atomic<HANDLE>& worker) noexcept {
  const HANDLE handle = worker.load();
  if (!handle) return;
  SetCursor(nullptr);
  CloseHandle(handle);
  worker.store(nullptr);
}

bool StartWorker(LPTHREAD_START_ROUTINE start, LPVOID parameter, std::atomic<HANDLE>& worker,
                 HANDLE& waitHandle) noexcept {
  HANDLE thread = CreateThread(nullptr, 0, start, parameter, CREATE_SUSPENDED, nullptr);
  if (!thread) return false;
  const HANDLE process = GetCurrentProcess();
  if (!DuplicateHandle(process, thread, process, &waitHandle, 0, FALSE, DUPLICATE_SAME_ACCESS)) {
    // Nobody could wait for this worker at the end: it has to end now, with nothing done.
    waitHandle = nullptr;
    if (ResumeThread(thread) == RESUME_FAILED) CloseHandle(std::exchange(thread, nullptr));
    WaitForWorker(thread);
    return false;
  }
  worker.store(thread);
  if (ResumeThread(thread) != RESUME_FAILED) return true;
  worker.store(nullptr);
  CloseHandle(thread);
  CloseHandle(std::exchange(waitHandle, nullptr));
  return false;
}

void WaitForWorker(HANDLE& waitHandle) noexcept {
  if (!waitHandle) return;
  while (MsgWaitForMultipleObjectsEx(1, &waitHandle, INFINITE, QS_SENDMESSAGE, 0) == WAIT_OBJECT_0 + 1) {
    MSG message;
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
  }
  CloseHandle(std::exchange(waitHandle, nullptr));
}
