/// \file
/// The host that shows the phone in a desktop window and lets the keyboard be its keys.
#pragma once

#include <SDL.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "hosts/sdl/controls.h"
#include "hosts/sdl/document.h"
#include "hosts/sdl/keyboard.h"
#include "hosts/sdl/mouse.h"
#include "hosts/sdl/replay.h"
#include "hosts/sdl/timeline.h"
#include "hosts/sdl/watcher.h"
#include "hosts/sdl/window.h"
#include "phone.h"

namespace sdl {

class SdlHost : public phone::Host {
 public:
  /// SDL's video is up already. The window opens as `wanted`, and `state` remembers it.
  SdlHost(const WindowState& wanted, StateFile& state);

  /// Has everything written that happens to the phone.
  void Record(std::unique_ptr<script::Recorder> recorder) { timeline_.Record(std::move(recorder)); }
  /// Lets a script play the phone first.
  void Play(std::unique_ptr<Replay> replay);

  /// Says something to the person, as soon as there is a window.
  void Notify(const std::string& text) { controls_.Notify(text); }
  /// Why there is no window, or no longer one; empty when there is one.
  const std::string& Failure() const { return failure_; }

  std::uint32_t TickCount() override { return timeline_.clock().Now(); }
  bool ClockIsManual() const override { return true; }
  void MoveClockTo(std::uint32_t tick) override { timeline_.clock().MoveTo(tick); }
  bool FrameIsDue() override { return timeline_.frames().MayPaint(); }
  void WaitForInput(bool waiting_for_frame) override;
  void Wake() override;
  void Present(const phone::ScreenImage& screen) override;
  void ShowCursor(phone::Cursor cursor) override;
  void LeaveForeground() override;
  void ComeToForeground() override;
  std::u16string ClipboardText() override;
  void SetClipboardText(std::u16string_view text) override;
  void WindowGone() override;
  void Report(const phone::Outcome& outcome) override;
  bool OpenDocument(const std::string& program, const std::string& document) override;

 private:
  void TellOutcomes();
  void TellMissingFont();
  void TakeTurn(bool waiting_for_frame);
  void PlayOn();
  void EndReplay();
  std::optional<SDL_Event> NextEvent(std::uint32_t patience);
  void Handle(const SDL_Event& event);
  void HandlePerson(const SDL_Event& event);
  void FollowFocus();
  void HandleWindow(const SDL_WindowEvent& event);
  void NoticeLoss();
  void WatchForSecondStart();
  void HandleReadable(int descriptor);
  void ComeBack();

  Window window_;
  Controls controls_;
  Watcher watcher_;
  std::vector<Viewer> viewers_;
  std::atomic<bool> woken_ = false;
  Keyboard keyboard_;
  Mouse mouse_;
  Timeline timeline_;
  bool begun_ = false;                    ///< the real time counts
  std::optional<SDL_Event> early_event_;  ///< waits for its turn
  std::unique_ptr<Replay> replay_;        ///< null once the phone is the person's
  bool away_ = false;                     ///< the program has left the foreground
  int watched_start_ = -1;                ///< the descriptor that tells of a second start, while it is watched
  std::string failure_;
  const std::thread::id ui_thread_ = std::this_thread::get_id();
  std::mutex outcomes_mutex_;
  std::vector<std::string> outcomes_;  ///< in words, not told yet
};

}  // namespace sdl
