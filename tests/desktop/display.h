/// \file
/// A display of a test's own, with a keyboard and a pointer that the test moves.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

struct Picture {
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> pixels;  ///< 0x00RRGGBB, rows from the top

  bool operator==(const Picture&) const = default;
};

struct _XDisplay;

class TestDisplay {
 public:
  /// Starts a display server of 1280x1024 pixels.
  TestDisplay();
  /// Ends it, if that is still to be done.
  ~TestDisplay();
  TestDisplay(const TestDisplay&) = delete;
  TestDisplay& operator=(const TestDisplay&) = delete;

  /// What DISPLAY is to say.
  const std::string& name() const { return name_; }
  /// Ends the server this very moment, as when a person's session ends.
  void Kill();

  /// The window that is shown under that class; waits for it. Throws when there is none within a minute.
  unsigned long WaitForWindow(const std::string& window_class);
  /// What the window shows, without the pointer; nothing while it is not shown.
  std::optional<Picture> Look(unsigned long window);
  /// Gives the window the keyboard.
  void Focus(unsigned long window);
  void Resize(unsigned long window, int width, int height);
  /// The place of the window on the display.
  std::pair<int, int> Place(unsigned long window);

  /// Presses and releases a key by its keysym's name, after the names of what is held meanwhile: "Control_L+c".
  void Key(const std::string& keys);
  /// Types characters of the keyboard one by one.
  void Type(const std::string& text);
  /// Presses and releases a button of the pointer (1: left, 4 and 5: the wheel) at a place in the window.
  void Click(unsigned long window, int x, int y, unsigned button = 1);

 private:
  void Press(unsigned long keysym, bool down);

  pid_t server_ = -1;
  std::string name_;
  _XDisplay* connection_ = nullptr;
};
