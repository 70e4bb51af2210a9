#include "hosts/sdl/sdl_host.h"

#include <algorithm>
#include <iostream>

#include "graphics/text_engine.h"
#include "hosts/sdl/clipboard.h"
#include "hosts/sdl/display_loss.h"
#include "hosts/sdl/input.h"
#include "hosts/sdl/outcome_words.h"
#include "system/faults.h"
#include "system/instance.h"

namespace sdl {
namespace {

constexpr char kNoFont[] =
    "This machine has no font that can be used: no text is shown. Install one (fonts-dejavu-core).";
constexpr char kNoText[] = "The clipboard has no text that can be pasted.";
constexpr char kNotCopied[] = "The desktop does not take the text.";
constexpr char kNotDuringReplay[] = "Files are taken when the replay has ended (Esc ends it).";
constexpr char kReplayEnded[] = "The replay has ended; the keys are yours.";
constexpr std::int32_t kLongestLag = 100;  ///< ms

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
  if (DisplayIsLost()) return;
  SDL_Event event = {};
  event.type = type;
  event.user.code = code;
  SDL_PushEvent(&event);
}

}  // namespace

SdlHost::SdlHost(const WindowState& wanted, StateFile& state)
    : window_(wanted),
      controls_(window_, state),
      watcher_([](int descriptor) { Push(Types().readable, descriptor); }) {}

void SdlHost::Play(std::unique_ptr<Replay> replay) {
  replay_ = std::move(replay);
  replay_->Start(timeline_.clock(), timeline_.frames());
}

void SdlHost::WaitForInput(bool waiting_for_frame) {
  if (!std::exchange(begun_, true)) timeline_.Begin();
  TellOutcomes();
  if (failure_.empty()) {
    if (phone::LetThreadsRun()) return;
    timeline_.Settle();
    WatchForSecondStart();
    FollowFocus();
    replay_ ? PlayOn() : TakeTurn(waiting_for_frame);
    controls_.Expire();
    NoticeLoss();
  } else {
    phone::Close();
  }
  timeline_.WriteInput();
  if (const std::string failure = timeline_.TakeFailure(); !failure.empty()) controls_.Notify(failure);
}

/// The program looks into the registry on this thread to mark the layout in use, and expects that there may be none;
/// on another one it applies a layout.
void SdlHost::Report(const phone::Outcome& outcome) {
  const bool expected =
      outcome.operation == phone::Operation::RegistryGetString && std::this_thread::get_id() == ui_thread_;
  std::string words = expected ? std::string() : WordsFor(outcome);
  if (words.empty()) return;
  {
    const std::lock_guard lock(outcomes_mutex_);
    outcomes_.push_back(std::move(words));
  }
  Wake();
}

/// The window's title tells it, which the desktop draws, and the display's own box where it has one.
void SdlHost::TellMissingFont() {
  controls_.Notify(kNoFont);
  SDL_ShowSimpleMessageBox(SDL_MESSAGEBOX_WARNING, "Quillmark", kNoFont, window_.handle());
}

void SdlHost::TellOutcomes() {
  std::vector<std::string> words;
  {
    const std::lock_guard lock(outcomes_mutex_);
    words.swap(outcomes_);
  }
  for (const std::string& each : words) controls_.Notify(each);
}

/// One thing happens in a turn, so that a script can do one after the other as well.
void SdlHost::TakeTurn(bool waiting_for_frame) {
  if (controls_.GoOn()) return;
  const std::optional<SDL_Event> event = NextEvent(timeline_.Patience(waiting_for_frame));
  if (!timeline_.CatchUp()) {
    // Who sleeps until before the event comes first.
    early_event_ = event;
    phone::LetThreadsRun();
  } else if (event) {
    Handle(*event);
  } else if (waiting_for_frame && timeline_.FrameIsDue()) {
    timeline_.Paint(window_.FrameTime());
  }
}

void SdlHost::PlayOn() {
  const std::int32_t ahead = timeline_.Ahead();
  // What took too long is not made up for: the script goes on at its own pace.
  if (ahead < -kLongestLag) timeline_.Begin();
  if (const std::optional<SDL_Event> event = NextEvent(static_cast<std::uint32_t>(std::max(ahead, 0)))) {
    Handle(*event);
  } else if (timeline_.Ahead() <= 0) {
    const bool goes_on = replay_->TakeStep();
    if (const std::string problem = replay_->TakeProblem(); !problem.empty()) controls_.Notify(problem);
    if (!goes_on) EndReplay();
    phone::LetThreadsRun();
  }
}

void SdlHost::EndReplay() {
  replay_.reset();
  timeline_.Begin();
  away_ = !phone::Look().foreground;
  controls_.Notify(kReplayEnded);
}

std::optional<SDL_Event> SdlHost::NextEvent(std::uint32_t patience) {
  if (early_event_) return std::exchange(early_event_, std::nullopt);
  SDL_Event event;
  if (WaitForEvent(event, static_cast<int>(std::min(patience, controls_.TimeLeft())))) return event;
  return std::nullopt;
}

/// The program is closed in good order: what its worker writes is written to the end.
void SdlHost::NoticeLoss() {
  if (!DisplayIsLost() || !failure_.empty()) return;
  failure_ = kDisplayLost;
  window_.Abandon();
  controls_.Remember();
  phone::Close();
}

void SdlHost::Wake() {
  // One event is enough, however often the phone calls before it is seen.
  if (!woken_.exchange(true)) Push(Types().wake, 0);
}

void SdlHost::Present(const phone::ScreenImage& screen) {
  if (!failure_.empty() || controls_.HidesScreen()) return;
  const bool first = !window_.IsOpen();
  if (!window_.Show(screen)) {
    failure_ = std::string("no window: ") + SDL_GetError();
    Wake();
  } else if (first) {
    SurviveDisplayLoss(window_.handle());
    controls_.Opened();
    if (!phone::HasUsableFont()) TellMissingFont();
  }
  NoticeLoss();
}

void SdlHost::ShowCursor(phone::Cursor cursor) {
  window_.ShowCursor(cursor);
}

void SdlHost::LeaveForeground() {
  // A script goes on.
  if (replay_) return;
  away_ = true;
  window_.Minimise();
}

void SdlHost::ComeToForeground() {
  away_ = false;
  window_.Raise();
  timeline_.Write("focus main");
}

void SdlHost::WindowGone() {
  if (window_.IsOpen()) controls_.Remember();
  window_.Hide();
}

bool SdlHost::OpenDocument(const std::string&, const std::string& document) {
  // What a recording opened is not opened again.
  if (replay_) return true;
  const std::optional<Viewer> viewer = Viewer::Open(document);
  if (!viewer) return false;
  viewers_.push_back(*viewer);
  watcher_.Watch(viewer->descriptor());
  return true;
}

void SdlHost::Handle(const SDL_Event& event) {
  if (event.type == Types().wake) woken_ = false;
  if (event.type == Types().readable) HandleReadable(event.user.code);
  if (replay_ && event.type == SDL_DROPFILE) {
    SDL_free(event.drop.file);
    return controls_.Notify(kNotDuringReplay);
  }
  if (controls_.Take(event)) return;
  switch (event.type) {
    case SDL_QUIT: phone::Close(); break;
    case SDL_WINDOWEVENT: HandleWindow(event.window); break;
    default: HandlePerson(event); break;
  }
}

void SdlHost::HandlePerson(const SDL_Event& event) {
  if (replay_) {
    if (event.type == SDL_KEYDOWN && event.key.keysym.sym == SDLK_ESCAPE) EndReplay();
    return;
  }
  if (event.type == SDL_KEYUP) return keyboard_.Release(event.key);
  if (away_) {
    // Where a window cannot be put out of the way, the first key brings the program back.
    if (event.type == SDL_KEYDOWN || event.type == SDL_MOUSEBUTTONDOWN) ComeBack();
    return;
  }
  switch (event.type) {
    case SDL_KEYDOWN: keyboard_.Press(event.key); break;
    case SDL_TEXTINPUT: keyboard_.Type(event.text); break;
    case SDL_TEXTEDITING: keyboard_.Compose(event.edit); break;
    case SDL_MOUSEBUTTONDOWN:
      if (event.button.button == SDL_BUTTON_LEFT) mouse_.Press(window_.ToScreen(event.button.x, event.button.y));
      break;
    case SDL_MOUSEBUTTONUP:
      if (event.button.button == SDL_BUTTON_LEFT) mouse_.Release();
      break;
    case SDL_MOUSEMOTION:
      if (mouse_.Dragging()) mouse_.Move(window_.ToScreen(event.motion.x, event.motion.y));
      break;
    case SDL_MOUSEWHEEL: mouse_.Turn(event.wheel); break;
    default: break;
  }
}

/// Text is typed where a field has the focus.
void SdlHost::FollowFocus() {
  const phone::State state = phone::Look();
  keyboard_.SetTyping(state.focused_edit.has_value() && !replay_);
  SDL_Rect caret = {0, 0, 0, 0};
  if (keyboard_.Typing()) {
    caret = window_.PixelsOf(state.edits[static_cast<std::size_t>(*state.focused_edit)].caret_rect);
    keyboard_.PlaceCaret(window_.UnitsOf(caret));
  }
  controls_.ShowComposition(keyboard_.composition(), caret);
}

std::u16string SdlHost::ClipboardText() {
  if (replay_) return replay_->clipboard();
  std::u16string text = sdl::ClipboardText();
  if (text.empty()) controls_.Notify(kNoText);
  return text;
}

void SdlHost::SetClipboardText(std::u16string_view text) {
  if (replay_) {
    replay_->clipboard() = text;
  } else if (!sdl::SetClipboardText(text)) {
    controls_.Notify(kNotCopied);
  }
}

void SdlHost::HandleWindow(const SDL_WindowEvent& event) {
  if (event.event == SDL_WINDOWEVENT_RESTORED && away_) ComeBack();
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
  const std::string document = viewer->document();
  const bool shown = viewer->Finish();
  viewers_.erase(viewer);
  if (!shown) controls_.Notify("The page " + document + " cannot be opened (xdg-open).");
}

void SdlHost::ComeBack() {
  away_ = false;
  phone::ComeBack();
}

}  // namespace sdl
