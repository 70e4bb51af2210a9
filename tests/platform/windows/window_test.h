/// \file
/// A small program on a phone: one main window whose messages a test sees and may answer.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "aygshell.h"
#include "phone.h"
#include "platform/windows/resource_blob.h"
#include "support/temporary_folder.h"
#include "support/test_host.h"
#include "system/faults.h"

class WindowTest : public testing::Test {
 protected:
  using Step = std::function<void()>;

  WindowTest() {
    current = this;
    phone::ResetFaults();
    options.folder = options.program_data = folder.path;
    options.module = u"\\Program Files\\Test\\test.exe";
    options.instance = folder.path.string();
    resources = TestResources();
    options.resources = resources;
    // A test that runs out of steps is over.
    host.when_idle = [] { phone::Close(); };
  }

  /// Runs the program: makes the main window, does `begin`, then runs the message loop while the steps press the keys,
  /// each in a wait of its own. The window is closed at the end.
  int Play(const Step& begin, std::vector<Step> steps) {
    begin_ = begin;
    host.steps.assign(steps.begin(), steps.end());
    return phone::Run(host, options, Program);
  }

  /// Messages that the main window got, without WM_PAINT.
  std::string Messages() const {
    std::string text;
    for (const UINT message : messages) text += (text.empty() ? "" : " ") + Name(message);
    return text;
  }
  static Step Press(UINT key) {
    return [key] { phone::PressKey(key); };
  }
  static Step Tap(UINT key) {
    return [key] {
      phone::PressKey(key);
      phone::ReleaseKey(key);
    };
  }
  static HWND MakeBar(WORD id) {
    SHMENUBARINFO info{};
    info.cbSize = sizeof info;
    info.hwndParent = current->main;
    info.nToolBarId = id;
    return SHCreateMenuBar(&info) ? info.hwndMB : nullptr;
  }
  static HWND MakeField(int top) {
    return CreateWindowExW(0, TEXT("EDIT"), nullptr, WS_CHILD | WS_VISIBLE | WS_TABSTOP | ES_AUTOHSCROLL, 10, top, 220,
                           27, current->main, nullptr, nullptr, nullptr);
  }

  TestHost host;
  TemporaryFolder folder;
  phone::Options options;
  std::vector<std::byte> resources;
  HWND main = nullptr;
  std::vector<UINT> messages;
  std::vector<WORD> commands;
  int painted = 0;
  /// Answers a message in the place of the main window's procedure.
  std::function<std::optional<LRESULT>(UINT message, WPARAM wparam, LPARAM lparam)> answer;

 private:
  static std::string Name(UINT message) {
    static const std::map<UINT, std::string> names = {
        {WM_CREATE, "create"},   {WM_DESTROY, "destroy"}, {WM_SETFOCUS, "focus"}, {WM_KILLFOCUS, "unfocus"},
        {WM_CLOSE, "close"},     {WM_KEYDOWN, "down"},    {WM_KEYUP, "up"},       {WM_CHAR, "char"},
        {WM_COMMAND, "command"}, {WM_HOTKEY, "hotkey"}};
    const auto found = names.find(message);
    return found != names.end() ? found->second : std::to_string(message);
  }

  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_CREATE) current->main = window;
    if (message != WM_PAINT) current->messages.push_back(message);
    if (message == WM_COMMAND) current->commands.push_back(LOWORD(wparam));
    if (current->answer)
      if (const auto result = current->answer(message, wparam, lparam)) return *result;
    if (message == WM_PAINT) {
      PAINTSTRUCT paint;
      BeginPaint(window, &paint);
      EndPaint(window, &paint);
      ++current->painted;
      return 0;
    }
    if (message == WM_DESTROY) PostQuitMessage(0);
    return DefWindowProcW(window, message, wparam, lparam);
  }

  static int WINAPI Program(HINSTANCE instance, HINSTANCE, LPWSTR, int show) {
    WNDCLASSW description{};
    description.lpfnWndProc = Procedure;
    description.lpszClassName = TEXT("TESTER");
    RegisterClassW(&description);
    current->main = CreateWindowExW(0, TEXT("TESTER"), TEXT("Tester"), WS_VISIBLE, CW_USEDEFAULT, CW_USEDEFAULT,
                                    CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr, instance, nullptr);
    if (!current->main) return 1;
    ShowWindow(current->main, show);
    UpdateWindow(current->main);
    if (current->begin_) current->begin_();
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0)) {
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
    return static_cast<int>(message.wParam);
  }

  inline static WindowTest* current = nullptr;
  Step begin_;
};
