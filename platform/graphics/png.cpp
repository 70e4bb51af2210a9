#include "graphics/png.h"

#include <png.h>

#include <csetjmp>
#include <cstring>
#include <exception>

namespace phone {

namespace {

// A sane maximum for a small phone: 64 MB when decoded.
constexpr std::int64_t kMostPicturePixels = std::int64_t{1} << 24;
constexpr png_uint_32 kMostPictureExtent = 32767;  // px

// Deflate's limit: 258 bytes from two bits, rounded up.
constexpr std::uint64_t kLargestExpansion = 1032;

// libpng reports errors by a jump. Whatever it jumps over has no destructors: each operation that it can leave so is a
// function of its own that holds nothing, and what must be freed belongs to its caller.

void JumpOut(png_structp png, png_const_charp) {
  png_longjmp(png, 1);
}
void StaySilent(png_structp, png_const_charp) {}

class Reader {
 public:
  explicit Reader(std::span<const std::byte> file) : rest_(file) {
    png_ = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, JumpOut, StaySilent);
    if (png_ == nullptr) return;
    info_ = png_create_info_struct(png_);
    png_set_read_fn(png_, this, Read);
    png_set_user_limits(png_, kMostPictureExtent, kMostPictureExtent);
    // Chunks that do not change the pixels are not even looked at.
    constexpr int kAllAncillaryChunks = -1;
    png_set_keep_unknown_chunks(png_, PNG_HANDLE_CHUNK_NEVER, nullptr, kAllAncillaryChunks);
  }
  ~Reader() { png_destroy_read_struct(&png_, &info_, nullptr); }
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;

  bool usable() const noexcept { return png_ != nullptr && info_ != nullptr; }

  bool ReadHeader(PngHeader& header, std::uint64_t& raw_bytes) {
    if (setjmp(png_jmpbuf(png_)) != 0) return false;
    png_read_info(png_, info_);
    header.width = static_cast<int>(png_get_image_width(png_, info_));
    header.height = static_cast<int>(png_get_image_height(png_, info_));
    header.alpha =
        (png_get_color_type(png_, info_) & PNG_COLOR_MASK_ALPHA) != 0 || png_get_valid(png_, info_, PNG_INFO_tRNS) != 0;
    raw_bytes = std::uint64_t{png_get_rowbytes(png_, info_)} * png_get_image_height(png_, info_);
    return true;
  }

  bool ReadPixels(const PngHeader& header, std::uint32_t* pixels) {
    if (setjmp(png_jmpbuf(png_)) != 0) return false;
    constexpr png_uint_32 kOpaque = 0xFF;
    png_set_expand(png_);
    png_set_scale_16(png_);
    png_set_gray_to_rgb(png_);
    png_set_bgr(png_);
    if (!header.alpha) png_set_add_alpha(png_, kOpaque, PNG_FILLER_AFTER);
    const int passes = png_set_interlace_handling(png_);
    png_read_update_info(png_, info_);
    const auto width = static_cast<std::size_t>(header.width);
    if (png_get_rowbytes(png_, info_) != width * 4) return false;
    for (int pass = 0; pass < passes; ++pass)
      for (int y = 0; y < header.height; ++y)
        png_read_row(png_, reinterpret_cast<png_bytep>(pixels + static_cast<std::size_t>(y) * width), nullptr);
    png_read_end(png_, nullptr);
    return true;
  }

 private:
  static void Read(png_structp png, png_bytep bytes, std::size_t size) {
    std::span<const std::byte>& rest = static_cast<Reader*>(png_get_io_ptr(png))->rest_;
    if (size > rest.size()) png_error(png, "end of file");
    std::memcpy(bytes, rest.data(), size);
    rest = rest.subspan(size);
  }

  std::span<const std::byte> rest_;
  png_structp png_ = nullptr;
  png_infop info_ = nullptr;
};

class Writer {
 public:
  explicit Writer(std::vector<std::byte>& file) : file_(file) {
    png_ = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, JumpOut, StaySilent);
    if (png_ == nullptr) return;
    info_ = png_create_info_struct(png_);
    png_set_write_fn(png_, this, Write, [](png_structp) {});
  }
  ~Writer() { png_destroy_write_struct(&png_, &info_); }
  Writer(const Writer&) = delete;
  Writer& operator=(const Writer&) = delete;

  bool usable() const noexcept { return png_ != nullptr && info_ != nullptr; }

  bool WriteScreen(const ScreenImage& screen) {
    if (setjmp(png_jmpbuf(png_)) != 0) return false;
    constexpr int kBitDepth = 8;
    png_set_IHDR(png_, info_, static_cast<png_uint_32>(screen.width), static_cast<png_uint_32>(screen.height),
                 kBitDepth, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png_, info_);
    png_set_bgr(png_);
    png_set_filler(png_, 0, PNG_FILLER_AFTER);
    for (int y = 0; y < screen.height; ++y)
      png_write_row(png_, reinterpret_cast<png_const_bytep>(screen.pixels + std::ptrdiff_t{y} * screen.stride));
    png_write_end(png_, info_);
    return true;
  }

 private:
  static void Write(png_structp png, png_bytep bytes, std::size_t size) {
    if (!static_cast<Writer*>(png_get_io_ptr(png))->Append(bytes, size)) png_error(png, "no memory");
  }

  bool Append(const unsigned char* bytes, std::size_t size) noexcept {
    try {
      const auto* begin = reinterpret_cast<const std::byte*>(bytes);
      file_.insert(file_.end(), begin, begin + size);
      return true;
    } catch (const std::exception&) {
      return false;
    }
  }

  std::vector<std::byte>& file_;
  png_structp png_ = nullptr;
  png_infop info_ = nullptr;
};

/// value * alpha / 255, rounded to nearest.
constexpr std::uint32_t Scaled(std::uint32_t value, std::uint32_t alpha) noexcept {
  const std::uint32_t product = value * alpha + 128;
  return (product + (product >> 8)) >> 8;
}

std::uint32_t Premultiplied(std::uint32_t pixel) noexcept {
  const std::uint32_t alpha = pixel >> 24;
  return alpha << 24 | Scaled(pixel >> 16 & 0xFF, alpha) << 16 | Scaled(pixel >> 8 & 0xFF, alpha) << 8 |
         Scaled(pixel & 0xFF, alpha);
}

}  // namespace

bool ReadPngHeader(std::span<const std::byte> file, PngHeader& header) {
  Reader reader(file);
  std::uint64_t raw_bytes = 0;
  if (!reader.usable() || !reader.ReadHeader(header, raw_bytes)) return false;
  return std::int64_t{header.width} * header.height <= kMostPicturePixels &&
         raw_bytes / kLargestExpansion <= file.size();
}

bool DecodePng(std::span<const std::byte> file, const PngHeader& header, std::uint32_t* pixels) {
  Reader reader(file);
  PngHeader again;
  std::uint64_t raw_bytes = 0;
  if (!reader.usable() || !reader.ReadHeader(again, raw_bytes)) return false;
  if (again.width != header.width || again.height != header.height) return false;
  if (!reader.ReadPixels(again, pixels)) return false;
  const std::size_t count = static_cast<std::size_t>(again.width) * static_cast<std::size_t>(again.height);
  if (again.alpha)
    for (std::size_t i = 0; i < count; ++i) pixels[i] = Premultiplied(pixels[i]);
  return true;
}

bool EncodePng(const ScreenImage& screen, std::vector<std::byte>& file) {
  file.clear();
  if (screen.pixels == nullptr || screen.width <= 0 || screen.height <= 0) return false;
  Writer writer(file);
  return writer.usable() && writer.WriteScreen(screen);
}

}  // namespace phone
