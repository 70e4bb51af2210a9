/// \file
/// A host for tests: its clock moves only when told, and its input is a row of steps that the test writes down.
#pragma once

#include <atomic>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "host.h"

class TestHost : public phone::Host {
 public:
  std::atomic<std::uint32_t> tick{1000};    ///< the clock, ms
  std::deque<std::function<void()>> steps;  ///< one is taken and run in each wait for input
  std::function<void()> when_idle = [] {};  ///< run in each wait for input once the steps are used up
  bool frames_are_due = true;
  bool opens_documents = true;

  int frames = 0;  ///< how often a screen was presented
  int waits = 0;   ///< how often the phone waited for input
  int left = 0;    ///< how often the program left the foreground
  int came = 0;    ///< how often it was brought to the front
  std::atomic<int> wakes{0};
  std::atomic<int> clock_moves{0};  ///< how often the phone asked for the clock to move on
  phone::Cursor cursor = phone::Cursor::none;
  std::vector<std::pair<std::string, std::string>> opened;  ///< viewer and document

  std::uint32_t TickCount() override { return tick; }
  bool ClockIsManual() const override { return true; }
  void MoveClockTo(std::uint32_t to) override {
    tick = to;
    ++clock_moves;
  }
  bool FrameIsDue() override { return frames_are_due; }
  void WaitForInput(bool) override {
    ++waits;
    if (steps.empty()) return when_idle();
    const auto step = std::move(steps.front());
    steps.pop_front();
    step();
  }
  void Wake() override { ++wakes; }
  void Present(const phone::ScreenImage&) override { ++frames; }
  void ShowCursor(phone::Cursor shown) override { cursor = shown; }
  void LeaveForeground() override { ++left; }
  void ComeToForeground() override { ++came; }
  bool OpenDocument(const std::string& program, const std::string& document) override {
    opened.emplace_back(program, document);
    return opens_documents;
  }
};
