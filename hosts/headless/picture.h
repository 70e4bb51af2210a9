/// \file
/// Pictures of the screen in files.
#pragma once

#include <string>

#include "host.h"

namespace headless {

/// Writes a PNG file. False when that fails; then no file is left behind.
bool WritePicture(const phone::ScreenImage& screen, const std::string& file);

}  // namespace headless
