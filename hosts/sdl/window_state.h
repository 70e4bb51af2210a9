/// \file
/// What is remembered of the window from one start to the next.
#pragma once

#include <SDL.h>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "hosts/sdl/geometry.h"

namespace sdl {

struct WindowState {
  std::optional<SDL_Point> position;  ///< of the window's content on the desktop; nothing: in the middle
  int scale = 0;                      ///< 0: what fits
  Orientation screen = Orientation::portrait;
};

bool operator==(const WindowState& a, const WindowState& b);

/// Nothing for a text that is not understood as a whole.
std::optional<WindowState> ParseWindowState(std::string_view text);
std::string FormatWindowState(const WindowState& state);

/// The file that keeps the state.
class StateFile {
 public:
  /// Reads the file. An empty path: nothing is kept.
  explicit StateFile(std::filesystem::path path);

  /// True when there was no such file yet, whatever was in it.
  bool First() const { return first_; }
  /// What was remembered; the default when there is nothing, or nothing that is understood.
  const WindowState& State() const { return state_; }

  /// Writes the state, whole or not at all, if it differs from what the file holds. Gives what went wrong, but only
  /// the first time: afterwards nothing is written any more. Empty when all is well.
  std::string Save(const WindowState& state);

 private:
  std::filesystem::path path_;
  WindowState state_;
  bool first_ = true;
  bool stands_ = false;  ///< the file holds state_
  bool failed_ = false;
};

}  // namespace sdl
