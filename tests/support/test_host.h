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
  int left = 0;    ///< how often the program left the foreground
  std::atomic<int> wakes{0};
  std::vector<std::pair<std::string, std::string>> opened;  ///< viewer and document

  std::uint32_t TickCount() override { return tick; }
  bool ClockIsManual() const override { return true; }
  void MoveClockTo(std::uint32_t to) override { tick = to; }
  bool FrameIsDue() override { return frames_are_due; }
  void WaitForInput(bool) override {
    if (steps.empty()) return when_idle();
    const auto step = std::move(steps.front());
    steps.pop_front();
    step();
  }
  void Wake() override { ++wakes; }
  void Present(const phone::ScreenImage&) override { ++frames; }
  void ShowCursor(phone::Cursor) override {}
  void LeaveForeground() override { ++left; }
  void ComeToForeground() override {}
  bool OpenDocument(const std::string& program, const std::string& document) override {
    opened.emplace_back(program, document);
    return opens_documents;
  }
};
