/// \file
/// PNG files in memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "host.h"

namespace phone {

struct PngHeader {
  int width = 0;       ///< px
  int height = 0;      ///< px
  bool alpha = false;  ///< it has an alpha channel or a transparent colour
};

/// Reads what stands before the pixels. False for what is no PNG file, for a picture too large for the phone, and for
/// one larger than a file of this size can hold.
bool ReadPngHeader(std::span<const std::byte> file, PngHeader& header);

/// Decodes a file whose header was read: width * height pixels 0xAARRGGBB, rows from the top, colours premultiplied.
/// Gamma and colour profiles are not applied. False for bad data; the pixels are then undefined.
bool DecodePng(std::span<const std::byte> file, const PngHeader& header, std::uint32_t* pixels);

/// Makes a PNG file of a screen. False when there is no memory or nothing to see.
bool EncodePng(const ScreenImage& screen, std::vector<std::byte>& file);

}  // namespace phone
