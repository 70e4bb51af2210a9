#include "hosts/sdl/sdl_host.h"

#include <algorithm>
#include <iostream>

#include "hosts/sdl/input.h"
#include "system/instance.h"

namespace sdl {
namespace {

constexpr char kNotOpened[] = "the page cannot be opened";

/// SDL's own numbers for this host's events.
struct EventTypes {
  Uint32 wake;
  Uint32 readable;  ///< user.code: the descriptor
};

const EventTypes& Types() {
  static const EventTypes types = [] {
    const Uint32 first = SDL_RegisterEvents(2);
    return EventTypes{first, first + 1};
  }();
  return types;
}

void Push(Uint32 type, int code) {
  SDL_Event event = {};
  event.type = type;
  event.user.code = code;
  SDL_PushEvent(&event);
}

}  // namespace

SdlHost::SdlHost(int scale) : window_(scale), watcher_([](int descriptor) { Push(Types().readable, descriptor); }) {}

std::uint32_t SdlHost::TickCount() {
  return SDL_GetTicks() + 1;
}

bool SdlHost::FrameIsDue() {
  const std::uint32_t now = TickCount();
  if (static_cast<std::int32_t>(now - next_frame_) < 0) return false;
  next_frame_ = now + window_.FrameTime();
  return true;
}

void SdlHost::WaitForInput(bool waiting_for_frame) {
  if (!failure_.empty()) {
    phone::Close();
    return;
  }
  if (phone::LetThreadsRun()) return;
  WatchForSecondStart();
  SDL_Event event;
  if (waiting_for_frame) {
    const auto until_due = static_cast<std::int32_t>(next_frame_ - TickCount());
    if (!SDL_WaitEventTimeout(&event, std::max(until_due, 1))) return;
  } else if (!SDL_WaitEvent(&event)) {
    return;
  }
  do {
    Handle(event);
  } while (SDL_PollEvent(&event));
}

void SdlHost::Wake() {
  // One event is enough, however often the phone calls before it is seen.
  if (!woken_.exchange(true)) Push(Types().wake, 0);
}

void SdlHost::Present(const phone::ScreenImage& screen) {
  if (!failure_.empty() || window_.Show(screen)) return;
  failure_ = SDL_GetError();
  Wake();
}

void SdlHost::ShowCursor(phone::Cursor cursor) {
  window_.ShowCursor(cursor);
}

void SdlHost::LeaveForeground() {
  away_ = true;
  window_.Minimise();
}

void SdlHost::ComeToForeground() {
  away_ = false;
  window_.Raise();
}

void SdlHost::WindowGone() {
  window_.Hide();
}

bool SdlHost::OpenDocument(const std::string&, const std::string& document) {
  const std::optional<Viewer> viewer = Viewer::Open(document);
  if (!viewer) {
    Notify(kNotOpened);
    return false;
  }
  viewers_.push_back(*viewer);
  watcher_.Watch(viewer->descriptor());
  return true;
}

void SdlHost::Handle(const SDL_Event& event) {
  if (event.type == Types().wake) woken_ = false;
  if (event.type == Types().readable) HandleReadable(event.user.code);
  switch (event.type) {
    case SDL_QUIT: phone::Close(); break;
    case SDL_KEYDOWN:
    case SDL_KEYUP: HandleKey(event.key); break;
    case SDL_TEXTINPUT: HandleText(event.text.text); break;
    case SDL_WINDOWEVENT: HandleWindow(event.window); break;
    case SDL_RENDER_TARGETS_RESET: window_.Refresh(); break;
    default: break;
  }
}

void SdlHost::HandleKey(const SDL_KeyboardEvent& event) {
  const PhoneKey key = KeyOf(event.keysym.sym);
  if (!key.code || (event.repeat && !key.repeats)) return;
  if (event.type == SDL_KEYUP) {
    phone::ReleaseKey(key.code);
    return;
  }
  if (notice_shown_) Notify({});
  // Where a window cannot be put out of the way, the first key brings the program back.
  if (away_) {
    ComeBack();
  } else {
    phone::PressKey(key.code);
  }
}

void SdlHost::HandleText(const char* text) {
  if (!away_) TypeText(text);
}

void SdlHost::HandleWindow(const SDL_WindowEvent& event) {
  switch (event.event) {
    case SDL_WINDOWEVENT_EXPOSED:
    case SDL_WINDOWEVENT_SIZE_CHANGED: window_.Refresh(); break;
    case SDL_WINDOWEVENT_RESTORED:
      if (away_) ComeBack();
      break;
    default: break;
  }
}

/// The phone looks for requests itself when it is woken up; it only has to be.
void SdlHost::WatchForSecondStart() {
  const int descriptor = phone::RaiseDescriptor();
  if (descriptor == watched_start_) return;
  watched_start_ = descriptor;
  if (descriptor >= 0) watcher_.Watch(descriptor);
}

void SdlHost::HandleReadable(int descriptor) {
  if (descriptor == watched_start_) watched_start_ = -1;
  const auto viewer = std::find_if(viewers_.begin(), viewers_.end(),
                                   [&](const Viewer& candidate) { return candidate.descriptor() == descriptor; });
  if (viewer == viewers_.end()) return;
  const bool shown = viewer->Finish();
  viewers_.erase(viewer);
  if (!shown) Notify(kNotOpened);
}

void SdlHost::ComeBack() {
  away_ = false;
  phone::ComeBack();
}

void SdlHost::Notify(const std::string& notice) {
  notice_shown_ = !notice.empty();
  window_.ShowNotice(notice);
  if (notice_shown_) std::cerr << "quillmark: " << notice << std::endl;
}

}  // namespace sdl
