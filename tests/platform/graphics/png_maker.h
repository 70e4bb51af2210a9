/// \file
/// PNG files of every kind for tests, written by libpng.
#pragma once

#include <png.h>

#include <cstddef>
#include <cstdint>
#include <vector>

struct PngKind {
  int color_type = PNG_COLOR_TYPE_RGB_ALPHA;
  int depth = 8;
  int interlace = PNG_INTERLACE_NONE;
  bool transparent_color = false;  ///< a tRNS chunk: the value of the first pixel
};

inline int ChannelsOf(int color_type) {
  const int colors = color_type == PNG_COLOR_TYPE_RGB || color_type == PNG_COLOR_TYPE_RGB_ALPHA ? 3 : 1;
  return colors + ((color_type & PNG_COLOR_MASK_ALPHA) != 0);
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
    png_uint_16 first[3];
    for (int i = 0; i < 3; ++i) first[i] = static_cast<png_uint_16>(SampleAt(0, 0, i, kind.depth));
    const png_color_16 color = {0, first[0], first[1], first[2], first[0]};
    const png_byte first_is_clear = 0;
    png_set_tRNS(png, info, &first_is_clear, 1, kind.color_type == PNG_COLOR_TYPE_PALETTE ? nullptr : &color);
  }
  png_set_gAMA(png, info, 1.0);  // must not change anything
  const int channels = ChannelsOf(kind.color_type);
  std::vector<std::vector<png_byte>> rows(static_cast<std::size_t>(height));
  std::vector<png_bytep> pointers;
  for (auto& row : rows) {
    const int y = static_cast<int>(&row - rows.data());
    for (int i = 0; i < width * channels; ++i) {
      const std::uint32_t sample = SampleAt(i / channels, y, i % channels, kind.depth);
      if (kind.depth == 16) row.push_back(static_cast<png_byte>(sample >> 8));
      row.push_back(static_cast<png_byte>(sample));
    }
    pointers.push_back(row.data());
  }
  png_set_rows(png, info, pointers.data());
  png_write_png(png, info, PNG_TRANSFORM_PACKING, nullptr);
  png_destroy_write_struct(&png, &info);
  return file;
}
