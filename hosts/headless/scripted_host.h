/// \file
/// The host whose hands are a script and whose clock moves when told.
#pragma once

#include <iosfwd>
#include <optional>
#include <string>

#include "hosts/headless/script.h"
#include "hosts/script/performer.h"

namespace headless {

class ScriptedHost : public phone::Host {
 public:
  ScriptedHost(Script& script, std::ostream& replies, std::uint32_t tick);

  /// The program has ended while the phone is still on: takes the last look at it. The reply to the command that ended
  /// it waits until the phone is off, so that whoever reads it can start the program again.
  void EndProgram(int exit_code);
  /// The phone is off: answers what is left of the script. `with_files` carries a command out with the phone's files at
  /// hand, and tells it when they cannot be.
  using WithFiles = std::function<void(const std::function<void(bool at_hand)>& act)>;
  void ServeAfterEnd(const WithFiles& with_files);
  struct Line {
    int number;
    std::string text;
  };
  /// The line that could not be understood; nothing when all could.
  const std::optional<Line>& Refused() const { return refused_; }

  std::uint32_t TickCount() override { return clock_.Now(); }
  bool ClockIsManual() const override { return true; }
  void MoveClockTo(std::uint32_t tick) override { clock_.MoveTo(tick); }
  bool FrameIsDue() override { return frames_.MayPaint(); }
  void WaitForInput(bool waiting_for_frame) override;
  void Wake() override { script_.Wake(); }
  void Present(const phone::ScreenImage&) override {}
  void ShowCursor(phone::Cursor) override {}
  void LeaveForeground() override {}
  void ComeToForeground() override {}
  bool OpenDocument(const std::string& program, const std::string& document) override;
  std::u16string ClipboardText() override { return clipboard_; }
  void SetClipboardText(std::u16string_view text) override { clipboard_ = text; }

 private:
  /// Reads on to the next command; nothing when the script was interrupted or has ended.
  std::optional<script::Command> ReadCommand();
  void Answer(const script::Reply& reply);

  Script& script_;
  std::ostream& replies_;
  script::ManualClock clock_;
  script::Frames frames_;
  script::Performer performer_{clock_, frames_};
  std::optional<script::Reply> held_;
  std::u16string clipboard_;  ///< its own, empty at first
  bool script_ended_ = false;
  std::optional<Line> refused_;
};

}  // namespace headless
