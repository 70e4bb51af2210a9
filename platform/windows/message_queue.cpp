#include "windows/message_queue.h"

#include <algorithm>

#include "system/outside.h"
#include "windows/cursor.h"
#include "windows/desktop.h"
#include "windows/focus.h"
#include "windows/lifetime.h"
#include "windows/painting.h"

namespace phone {

namespace {

/// Which messages a caller wants. WM_QUIT is wanted by everyone.
struct Filter {
  HWND window = nullptr;  ///< null: of every window
  UINT first = 0;         ///< 0 and 0: every message
  UINT last = 0;

  bool Wants(const MSG& message) const {
    if (window != nullptr && !TheDesktop().windows.BelongsTo(message.hwnd, window)) return false;
    return (first == 0 && last == 0) || (message.message >= first && message.message <= last);
  }
};

/// Whether a message that was found leaves the queue.
enum class Removal { keep, take };

/// Who retrieves messages, which decides on what may happen meanwhile.
enum class Caller {
  loop,  ///< the program's message loop: everything
  peek,  ///< a look at the queue: windows are not closed
  box,   ///< a message box: WM_QUIT stays for the program's loop too
};

MSG MakeMessage(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  return {window, message, wparam, lparam, CurrentHost().TickCount(), {}};
}

/// What other threads, and other starts of the program, ask of this thread.
void HandleOutside() {
  HandleSentMessages();
  ShowWantedCursor();
  HandleRaiseRequests();
}

bool TakePosted(MSG& message, const Filter& filter, Removal removal) {
  auto& posted = TheDesktop().posted;
  const auto found = std::ranges::find_if(posted, [&filter](const MSG& each) { return filter.Wants(each); });
  if (found == posted.end()) return false;
  message = *found;
  if (removal == Removal::take) posted.erase(found);
  return true;
}

bool TakeQuit(MSG& message, Removal removal) {
  std::optional<int>& quit = TheDesktop().quit;
  if (!quit) return false;
  message = MakeMessage(nullptr, WM_QUIT, static_cast<WPARAM>(*quit), 0);
  if (removal == Removal::take) quit.reset();
  return true;
}

/// WM_PAINT is not queued: it is made when nothing else is left and the host wants a frame.
bool TakePaint(MSG& message, const Filter& filter) {
  const Window* window = FirstInvalid();
  if (window == nullptr) return false;
  const MSG paint = MakeMessage(window->handle, WM_PAINT, 0, 0);
  if (!filter.Wants(paint)) return false;
  PresentScreen();
  if (!CurrentHost().FrameIsDue()) return false;
  message = paint;
  return true;
}

enum class Taken {
  message,   ///< a message was taken
  progress,  ///< something else was done; look again
  nothing,   ///< there is nothing to do
};

Taken Take(MSG& message, const Filter& filter, Removal removal, Caller caller) {
  HandleOutside();
  if (TakePosted(message, filter, removal)) return Taken::message;
  if (caller != Caller::box && TakeQuit(message, removal)) return Taken::message;
  if (caller == Caller::loop && FinishEndings()) return Taken::progress;
  if (HandleNextInput()) return Taken::progress;
  return TakePaint(message, filter) ? Taken::message : Taken::nothing;
}

/// Shows what has changed and waits for input.
void Rest() {
  PresentScreen();
  CurrentHost().WaitForInput(FirstInvalid() != nullptr);
}

}  // namespace

void PostToWindow(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  TheDesktop().posted.push_back(MakeMessage(window, message, wparam, lparam));
}

void TurnInBox() {
  MSG message{};
  switch (Take(message, {}, Removal::take, Caller::box)) {
    case Taken::message: DispatchMessageW(&message); break;
    case Taken::progress: break;
    case Taken::nothing: Rest(); break;
  }
}

}  // namespace phone

using namespace phone;

BOOL GetMessageW(MSG* message, HWND window, UINT first, UINT last) {
  constexpr BOOL kError = -1;
  if (!OnUiThread() || message == nullptr) return kError;
  if (window != nullptr && TheDesktop().windows.Find(window) == nullptr) return kError;
  return Guarded<BOOL>(kError, [&] {
    const Filter filter{window, first, last};
    while (true) {
      const Taken taken = Take(*message, filter, Removal::take, Caller::loop);
      if (taken == Taken::message) return message->message == WM_QUIT ? FALSE : TRUE;
      if (taken == Taken::nothing) Rest();
    }
  });
}

BOOL PeekMessageW(MSG* message, HWND window, UINT first, UINT last, UINT flags) {
  if (!OnUiThread() || message == nullptr) return FALSE;
  return Guarded<BOOL>(FALSE, [&] {
    const Removal removal = flags == PM_NOREMOVE ? Removal::keep : Removal::take;
    Taken taken = Taken::progress;
    while (taken == Taken::progress) taken = Take(*message, {window, first, last}, removal, Caller::peek);
    return taken == Taken::message ? TRUE : FALSE;
  });
}

BOOL TranslateMessage(const MSG*) {
  // Characters reach the queue as such; no key is left to be turned into one.
  return FALSE;
}

LRESULT DispatchMessageW(const MSG* message) {
  if (!OnUiThread() || message == nullptr) return 0;
  return Guarded<LRESULT>(0, [message] {
    if (message->message == WM_PAINT) return SendPaint(message->hwnd);
    return Send(message->hwnd, message->message, message->wParam, message->lParam);
  });
}

void PostQuitMessage(int exit_code) {
  if (OnUiThread()) TheDesktop().quit = exit_code;
}
