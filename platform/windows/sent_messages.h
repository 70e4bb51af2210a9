/// \file
/// Messages that are sent: handled by the window procedure on the user-interface thread while the sender waits.
#pragma once

#include <deque>

#include "windows.h"

namespace phone {

struct SentMessage;

/// What threads have sent and nobody has handled yet. Guarded by the scheduler's lock.
struct SentMessages {
  std::deque<SentMessage*> waiting;
  bool accepting = true;
};

/// Calls the window's procedure directly; 0 for a window that does not exist. User-interface thread.
LRESULT Send(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
/// Handles what other threads have sent so far.
void HandleSentMessages();
/// Answers every waiting sender, and every later one, with 0.
void RefuseSentMessages();
/// Whether a sender or a cursor change waits for this thread. Under the scheduler's lock.
bool UiWorkWaits();

}  // namespace phone
