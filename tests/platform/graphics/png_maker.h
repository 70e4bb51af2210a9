/// \file
/// PNG files of every kind for tests, written by libpng.
#pragma once

#include <png.h>

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <vector>

struct PngKind {
  int color_type = PNG_COLOR_TYPE_RGB_ALPHA;
  int depth = 8;
  int interlace = PNG_INTERLACE_NONE;
  bool transparent_color = false;  ///< a tRNS chunk: the value of the first pixel
};

inline int ChannelsOf(int color_type) {
  switch (color_type) {
    case PNG_COLOR_TYPE_RGB: return 3;
    case PNG_COLOR_TYPE_RGB_ALPHA: return 4;
    case PNG_COLOR_TYPE_GRAY_ALPHA: return 2;
    default: return 1;
  }
}

/// The sample at a place, 0 to 2^depth - 1. A palette's colours are (index, 255 - index, 7 * index).
inline std::uint32_t SampleAt(int x, int y, int channel, int depth) {
  const auto mixed = static_cast<std::uint32_t>((x * 37 + y * 59 + channel * 101) * 257 + x);
  return mixed & ((1u << depth) - 1);
}

inline std::vector<std::byte> MakePng(int width, int height, const PngKind& kind) {
  std::vector<std::byte> file;
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  png_set_write_fn(
      png, &file,
      [](png_structp writer, png_bytep bytes, std::size_t size) {
        auto* out = static_cast<std::vector<std::byte>*>(png_get_io_ptr(writer));
        const auto* begin = reinterpret_cast<const std::byte*>(bytes);
        out->insert(out->end(), begin, begin + size);
      },
      [](png_structp) {});
  png_set_IHDR(png, info, static_cast<png_uint_32>(width), static_cast<png_uint_32>(height), kind.depth,
               kind.color_type, kind.interlace, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  if (kind.color_type == PNG_COLOR_TYPE_PALETTE) {
    png_color palette[256];
    for (int i = 0; i < 256; ++i)
      palette[i] = {static_cast<png_byte>(i), static_cast<png_byte>(255 - i), static_cast<png_byte>(7 * i)};
    png_set_PLTE(png, info, palette, 1 << kind.depth);
  }
  if (kind.transparent_color) {
    const auto first = [&kind](int channel) { return static_cast<png_uint_16>(SampleAt(0, 0, channel, kind.depth)); };
    const png_color_16 color = {0, first(0), first(1), first(2), first(0)};
    const png_byte first_is_clear[] = {0};
    png_set_tRNS(png, info, first_is_clear, 1, kind.color_type == PNG_COLOR_TYPE_PALETTE ? nullptr : &color);
  }
  png_set_gAMA(png, info, 1.0);  // must not change anything
  png_write_info(png, info);
  const int channels = ChannelsOf(kind.color_type);
  std::vector<std::vector<png_byte>> rows(static_cast<std::size_t>(height));
  std::vector<png_bytep> pointers;
  for (int y = 0; y < height; ++y) {
    auto& row = rows[static_cast<std::size_t>(y)];
    row.resize((static_cast<std::size_t>(width) * channels * kind.depth + 7) / 8);
    for (int i = 0; i < width * channels; ++i) {
      const std::uint32_t sample = SampleAt(i / channels, y, i % channels, kind.depth);
      const auto bit = static_cast<std::size_t>(i) * kind.depth;
      if (kind.depth == 16) {
        row[bit / 8] = static_cast<png_byte>(sample >> 8);
        row[bit / 8 + 1] = static_cast<png_byte>(sample);
      } else {
        row[bit / 8] |= static_cast<png_byte>(sample << (8 - kind.depth - bit % 8));
      }
    }
    pointers.push_back(row.data());
  }
  png_write_image(png, pointers.data());
  png_write_end(png, info);
  png_destroy_write_struct(&png, &info);
  return file;
}
