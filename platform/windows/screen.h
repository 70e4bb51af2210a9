/// \file
/// The screen as a person sees it: title strip, client area, soft keys, and what is open over them.
#pragma once

#include "graphics/surface.h"
#include "windows.h"

namespace phone {

struct Window;

inline constexpr int kLeastClientExtent = 1;       ///< px
inline constexpr int kLargestClientExtent = 4096;  ///< px

/// What was composed last, and which of its parts are not up to date.
struct ScreenState {
  ScreenState(int client_width, int client_height);

  Surface whole;
  Surface client;
  bool title_stale = true;
  bool keys_stale = true;
  bool client_stale = true;
  bool presented = false;  ///< the host has been shown the latest
};

void MarkTitleStale();
void MarkKeysStale();
void MarkClientStale();
void MarkAllStale();
/// An edit field looks different.
void MarkFieldStale(Window& field);

/// The labels that a person reads on the soft keys: of the message box, the menu, or the visible bar.
struct KeyLabels {
  std::u16string_view left;
  std::u16string_view right;
};
KeyLabels VisibleKeyLabels();
/// The title of the main window; empty without one.
std::u16string_view VisibleTitle();

/// Brings the composed screen up to date.
void ComposeScreen();
/// Has the host show the screen if it looks different.
void PresentScreen();

}  // namespace phone
