#include "support/program.h"

#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <utility>

#include "app/main_window.h"
#include "graphics/trace.h"
#include "hosts/program.h"
#include "themes/catalog.h"
#include "windows/message_queue.h"

namespace bench {

namespace {

/// What fails in a measurement must not be taken for the phone's own failure.
void RunBody(const std::function<void()>& body) {
  try {
    body();
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    std::abort();
  }
}

}  // namespace

void Must(HRESULT status) {
  if (FAILED(status)) throw std::runtime_error("a step that has to succeed has failed");
}

void BenchHost::WaitForInput(bool) {
  resting = true;
  if (!body) return;
  RunBody(std::exchange(body, nullptr));
  phone::Close();
}

CAppController& Program::controller() {
  return *g_controller;
}

HWND Program::window() {
  return controller().mainWindow;
}

void Program::ShowThemes(LPCWSTR application_data) {
  controller().themeList.reset();
  Must(LoadThemeCatalog(application_data, controller().themeRecords));
  Must(controller().BuildThemeList(window()));
}

void Program::Settle() {
  for (host_.resting = false; !host_.resting;) phone::TurnInBox();
}

void Program::Press(UINT key) {
  phone::PressKey(key);
  phone::ReleaseKey(key);
  Settle();
}

void Program::GoToViewsEnd() {
  constexpr int kMoreThanRows = 10;
  for (int i = 0; i < kMoreThanRows; ++i) Press(VK_DOWN);
  Pass(1000);
  Frame();
}

void Program::Frame() {
  phone::InvalidateAll();
  host_.frames_wanted = 1;
  Settle();
}

void WithProgram(const std::filesystem::path& phone, const std::function<void(Program& program)>& body) {
  BenchHost host;
  host.frames_wanted = 1;
  Program program(host);
  host.body = [&] {
    phone::EnableTrace(false);
    body(program);
  };
  hosts::Settings settings;
  settings.phone = phone;
  phone::Run(host, hosts::PhoneOptions(settings), hosts::ProgramEntry());
}

}  // namespace bench
