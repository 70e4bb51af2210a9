/// \file
/// Applying a theme: the registry names the phone's layout, and every window is told of the change. A worker thread
/// does it; the user-interface thread goes on meanwhile.
///
/// The two threads share the path, which is written only while no worker runs, and the worker's handle, which the
/// worker clears as its last act. There are no locks.
#pragma once

#include <windows.h>

#include <atomic>

#include "base/text_field.h"

/// Reads the path of the layout in use; a failing status when the phone names none.
[[nodiscard]] HRESULT ReadScheme(TextField& path) noexcept;

/// Makes the layout file the phone's home screen. For the layout in use, another value stands in the registry for a
/// while first, so that the phone reads the file again; that takes 4 seconds. Ends with the status of the registry call
/// that failed. For the worker thread: it sends messages to every window, and sleeps.
[[nodiscard]] HRESULT ApplyScheme(LPCWSTR path) noexcept;

/// The worker's last act: no cursor, the handle closed and cleared.
void EndApply(std::atomic<HANDLE>& worker) noexcept;

/// Starts a worker thread. Its handle stands in `worker` before its first instruction; `waitHandle` is a second one,
/// for WaitForWorker. When a handle cannot be had, `worker` stays clear, and the thread, if there is one, finds it so
/// and must end at once. False when no worker was started.
bool StartWorker(LPTHREAD_START_ROUTINE start, LPVOID parameter, std::atomic<HANDLE>& worker,
                 HANDLE& waitHandle) noexcept;

/// Waits until the worker thread has ended, if there was one, and closes its handle. What other threads send to this
/// one is executed meanwhile, the worker's own broadcasts among it.
void WaitForWorker(HANDLE& waitHandle) noexcept;
