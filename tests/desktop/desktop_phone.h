/// \file
/// The desktop program in a real window, worked from outside as a person would.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "desktop/display.h"
#include "support/phone_folder.h"

class DesktopPhone {
 public:
  /// Starts the program on a display and waits for its window. `home` is the person's own folder: what the program
  /// remembers and the pictures it writes are in it.
  DesktopPhone(TestDisplay& display, const PhoneFolder& folder, const std::filesystem::path& home,
               const std::vector<std::string>& options = {});
  ~DesktopPhone();
  DesktopPhone(const DesktopPhone&) = delete;
  DesktopPhone& operator=(const DesktopPhone&) = delete;

  pid_t process() const { return process_; }
  unsigned long window() const { return window_; }
  /// Waits until the window shows the picture, each of its pixels as a square, in the middle of what is dark. False
  /// when it does not come to that.
  bool ComesToShow(const Picture& screen, int scale);
  /// Presses the left button at a place of the phone's screen.
  void ClickScreen(const Picture& screen, int scale, int x, int y);

  /// Asks it to end, unless it has ended by itself, and gives its exit status; 128 and more for a signal.
  int End(bool ask = true);
  /// What it said on standard error until it ended.
  std::string Complaints() const;

 private:
  TestDisplay& display_;
  std::filesystem::path complaints_;
  pid_t process_ = -1;
  unsigned long window_ = 0;
};

/// The picture in a PNG file.
Picture ReadPicture(const std::filesystem::path& file);
