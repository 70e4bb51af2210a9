/// \file
/// The question that comes before the phone is switched on.
#pragma once

#include <filesystem>

#include "hosts/sdl/window_state.h"

namespace sdl {

/// Asks, in a window of its own, whether a folder that has no phone's files is to become a phone. False also when the
/// window is closed or cannot be opened.
bool MayUseForeignFolder(const std::filesystem::path& folder, const WindowState& wanted);

}  // namespace sdl
