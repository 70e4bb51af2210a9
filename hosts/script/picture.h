/// \file
/// Pictures of the screen in files, and their checksums.
#pragma once

#include <cstdint>
#include <string>

#include "host.h"

namespace script {

/// Writes a PNG file. False when that fails; then no file is left behind.
bool WritePicture(const phone::ScreenImage& screen, const std::string& file);

/// 8 digits.
std::string Hexadecimal(std::uint32_t number);
/// The CRC-32 of the pixels, three bytes each (red, green, blue) and rows from the top, in hexadecimal digits.
std::string PictureChecksum(const phone::ScreenImage& screen);

}  // namespace script
