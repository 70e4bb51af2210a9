/// \file
/// The real program on a phone of its own, driven from inside its wait for input, one turn of the message wait at a
/// time.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>

#include "app/controller.h"
#include "host.h"

namespace bench {

/// A host whose clock moves only when told, and that has as many frames painted as were asked for.
class BenchHost : public phone::Host {
 public:
  std::uint32_t tick = 1000;  ///< the clock, ms
  int frames_wanted = 0;
  bool resting = false;  ///< the phone has waited for input since this was cleared
  std::function<void()> body;

  std::uint32_t TickCount() override { return tick; }
  bool ClockIsManual() const override { return true; }
  void MoveClockTo(std::uint32_t to) override { tick = to; }
  bool FrameIsDue() override { return frames_wanted > 0 && frames_wanted-- > 0; }
  void WaitForInput(bool waiting_for_frame) override;
  void Wake() override {}
  void Present(const phone::ScreenImage&) override {}
  void ShowCursor(phone::Cursor) override {}
  void LeaveForeground() override {}
  void ComeToForeground() override {}
  bool OpenDocument(const std::string&, const std::string&) override { return false; }
};

/// For a step that has to succeed: one that fails would look quick. Throws.
void Must(HRESULT status);

/// What a measurement does with the program.
class Program {
 public:
  explicit Program(BenchHost& host) : host_(host) {}

  CAppController& controller();
  HWND window();
  /// Makes the theme list anew from the layouts below that application-data folder of the phone.
  void ShowThemes(LPCWSTR application_data);

  /// Turns the message wait until nothing is left to do; nothing is painted.
  void Settle();
  /// Presses and releases a key, until its message is handled.
  void Press(UINT key);
  /// Selects the last row of the view, at rest: from there on every Down scrolls.
  void GoToViewsEnd();
  /// One frame of the whole window, from its becoming invalid until the host is shown the screen.
  void Frame();
  /// Lets that much time pass.
  void Pass(std::uint32_t milliseconds) { host_.tick += milliseconds; }
  std::uint32_t& tick() { return host_.tick; }

 private:
  BenchHost& host_;
};

/// Starts the program on a phone folder, upright, without a trace of what is drawn; ends it after the body.
void WithProgram(const std::filesystem::path& phone, const std::function<void(Program& program)>& body);

}  // namespace bench
