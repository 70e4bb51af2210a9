/// \file
/// Small PNG files for tests.
#pragma once

#include <png.h>

#include <cstdint>
#include <filesystem>
#include <vector>

/// Writes a picture of these pixels: red, green, blue and, with alpha, opacity, each 0 to 255; rows from the top.
inline bool WritePng(const std::filesystem::path& file, std::uint32_t width, std::uint32_t height, bool alpha,
                     const std::vector<std::uint8_t>& samples) {
  png_image image = {};
  image.version = PNG_IMAGE_VERSION;
  image.width = width;
  image.height = height;
  image.format = alpha ? PNG_FORMAT_RGBA : PNG_FORMAT_RGB;
  std::filesystem::create_directories(file.parent_path());
  return png_image_write_to_file(&image, file.c_str(), 0, samples.data(), 0, nullptr) != 0;
}
