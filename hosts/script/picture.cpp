#include "hosts/script/picture.h"

#include <png.h>
#include <zlib.h>

#include <cstdio>
#include <vector>

namespace script {
namespace {

std::vector<std::uint8_t> RedGreenBlue(const phone::ScreenImage& screen) {
  std::vector<std::uint8_t> bytes;
  bytes.reserve(static_cast<std::size_t>(screen.width) * static_cast<std::size_t>(screen.height) * 3);
  for (int y = 0; y < screen.height; ++y) {
    const std::uint32_t* const row = screen.pixels + static_cast<std::ptrdiff_t>(y) * screen.stride;
    for (int x = 0; x < screen.width; ++x) {
      for (const int shift : {16, 8, 0}) bytes.push_back(static_cast<std::uint8_t>(row[x] >> shift));
    }
  }
  return bytes;
}

}  // namespace

bool WritePicture(const phone::ScreenImage& screen, const std::string& file) {
  if (screen.width <= 0 || screen.height <= 0) return false;
  const std::vector<std::uint8_t> bytes = RedGreenBlue(screen);
  png_image image = {};
  image.version = PNG_IMAGE_VERSION;
  image.width = static_cast<png_uint_32>(screen.width);
  image.height = static_cast<png_uint_32>(screen.height);
  image.format = PNG_FORMAT_RGB;
  return png_image_write_to_file(&image, file.c_str(), 0, bytes.data(), 0, nullptr) != 0;
}

std::string Hexadecimal(std::uint32_t number) {
  char digits[9];
  std::snprintf(digits, sizeof digits, "%08x", number);
  return digits;
}

std::string PictureChecksum(const phone::ScreenImage& screen) {
  const std::vector<std::uint8_t> bytes = RedGreenBlue(screen);
  return Hexadecimal(static_cast<std::uint32_t>(crc32_z(crc32_z(0, nullptr, 0), bytes.data(), bytes.size())));
}

}  // namespace script
