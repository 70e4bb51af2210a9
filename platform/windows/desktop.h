/// \file
/// Everything the window manager knows during one run of the phone.
#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "phone.h"
#include "windows/input.h"
#include "windows/menu.h"
#include "windows/message_box.h"
#include "windows/resources.h"
#include "windows/screen.h"
#include "windows/sent_messages.h"
#include "windows/window.h"
#include "windows/window_class.h"

namespace phone {

struct Desktop {
  explicit Desktop(const Options& options);

  std::thread::id ui_thread = std::this_thread::get_id();
  int client_width;   ///< px
  int client_height;  ///< px
  std::vector<Resource> resources;

  std::vector<WindowClass> classes;
  WindowTable windows;
  HWND focus = nullptr;
  HWND held_focus = nullptr;  ///< who gets the focus again when the menu or the last message box closes
  bool foreground = true;

  std::deque<MSG> posted;
  std::optional<int> quit;   ///< the exit code of a WM_QUIT that waits
  std::vector<HWND> doomed;  ///< windows to destroy once the message boxes over them are answered
  bool closing = false;      ///< the main window is to be closed once all message boxes are answered
  InputQueue input;
  SentMessages sent;

  std::optional<Menu> menu;
  std::vector<MessageBox*> boxes;  ///< the open ones, the last on top

  ScreenState screen;
  Cursor shown_cursor = Cursor::none;
  int raised = 0;
  int back_navigations = 0;
  int back_forwarded = 0;
  std::uint64_t frames = 0;
};

/// The desktop of the run, or of the last one. Only after SwitchOnDesktop.
Desktop& TheDesktop();
void SwitchOnDesktop(const Options& options);
/// False before the first run.
bool DesktopExists();
/// Whether the caller is the thread that the windows belong to.
bool OnUiThread();

/// Runs the body of an entry point; what the libraries throw becomes its failure.
template <class Result, class Body>
Result Guarded(Result failure, Body&& body) {
  try {
    return body();
  } catch (...) {
    return failure;
  }
}

}  // namespace phone
