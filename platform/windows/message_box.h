/// \file
/// Message boxes: drawn over the client area, answered with the soft keys, the action key or Back.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "graphics/surface.h"
#include "windows.h"

namespace phone {

struct BoxButton {
  int answer;
  std::u16string label;
};

struct MessageBox {
  HWND owner = nullptr;
  std::u16string text;
  std::u16string caption;
  UINT style = 0;
  std::vector<BoxButton> buttons;  ///< one or two; the first is the left soft key and the action key, the last is Back
  std::optional<int> answer;
  std::optional<Surface> picture;
};

/// A key pressed while a message box is open.
void PressInBox(UINT key);
/// Answers the box on top, if it has that button.
void AnswerTopBox(int answer);
/// Answers No (or OK) to the boxes that the window, or something in or of it, owns, and to those on top of them. False
/// when there are none.
bool AnswerBoxesOf(HWND window);
/// Cancels the menu, answers all boxes No (or OK) and has the main window closed when their callers have returned.
void CloseAll();

/// Draws the box over the client area.
void DrawMessageBox(MessageBox& box, Surface& client);

}  // namespace phone
