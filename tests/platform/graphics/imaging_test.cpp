#include <gtest/gtest.h>
#include <zlib.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "graphics/imaging_factory.h"
#include "graphics/png.h"
#include "png_maker.h"
#include "support/file_content.h"
#include "support/temporary_folder.h"
#include "system/faults.h"
#include "system/files.h"

namespace {

constexpr int kWidth = 13;
constexpr int kHeight = 11;

/// value * alpha / 255, rounded to nearest.
std::uint32_t Product(std::uint32_t value, std::uint32_t alpha) {
  return (2 * value * alpha + 255) / 510;
}

std::uint32_t Widened(std::uint32_t sample, int depth) {
  return static_cast<std::uint32_t>(std::lround(sample * 255.0 / ((1 << depth) - 1)));
}

/// The premultiplied pixel that a file of MakePng has there.
std::uint32_t ExpectedPixel(const PngKind& kind, int x, int y) {
  const int channels = ChannelsOf(kind.color_type);
  std::uint32_t color[4];
  bool as_first = true;
  for (int i = 0; i < 4; ++i) {
    const std::uint32_t sample = SampleAt(x, y, std::min(i, channels - 1), kind.depth);
    as_first = as_first && sample == SampleAt(0, 0, std::min(i, channels - 1), kind.depth);
    color[i] = Widened(channels < 3 && i < 3 ? SampleAt(x, y, 0, kind.depth) : sample, kind.depth);
  }
  std::uint32_t alpha = (kind.color_type & PNG_COLOR_MASK_ALPHA) != 0 ? color[3] : 255;
  if (kind.color_type == PNG_COLOR_TYPE_PALETTE) {
    const std::uint32_t index = SampleAt(x, y, 0, kind.depth);
    color[0] = index;
    color[1] = 255 - index;
    color[2] = 7 * index & 255;
    as_first = index == 0;
  }
  if (kind.transparent_color && as_first) alpha = 0;
  return alpha << 24 | Product(color[0], alpha) << 16 | Product(color[1], alpha) << 8 | Product(color[2], alpha);
}

class Imaging : public testing::Test {
 protected:
  void SetUp() override {
    phone::MountFiles(folder_.path, folder_.path, u"\\Program Files\\Test\\test.exe");
    void* factory = nullptr;
    ASSERT_EQ(S_OK, phone::CreateImagingFactory(IID_IImagingFactory, &factory));
    factory_ = static_cast<IImagingFactory*>(factory);
  }
  void TearDown() override {
    factory_->Release();
    phone::UnmountFiles();
  }

  /// Writes a file and reads it back. The status of the first step that fails.
  HRESULT Load(const std::vector<std::byte>& file) {
    WriteFile(folder_.path / "p.png", {reinterpret_cast<const char*>(file.data()), file.size()});
    IImage* image = nullptr;
    HRESULT status = factory_->CreateImageFromFile(u"\\p.png", &image);
    EXPECT_EQ(SUCCEEDED(status), image != nullptr);
    if (FAILED(status)) return status;
    status = image->GetImageInfo(&info_);
    IBitmapImage* bitmap = nullptr;
    if (SUCCEEDED(status))
      status = factory_->CreateBitmapFromImage(image, 0, 0, info_.PixelFormat, InterpolationHintDefault, &bitmap);
    image->Release();
    if (FAILED(status)) return status;
    BitmapData data = {};
    status = bitmap->LockBits(nullptr, ImageLockModeRead, PixelFormat32bppPARGB, &data);
    if (SUCCEEDED(status)) {
      const auto* scan = static_cast<const std::uint32_t*>(data.Scan0);
      EXPECT_EQ(static_cast<INT>(data.Width * 4), data.Stride);
      pixels_.assign(scan, scan + std::size_t{data.Width} * data.Height);
      EXPECT_EQ(S_OK, bitmap->UnlockBits(&data));
    }
    bitmap->Release();
    return status;
  }

  ImageInfo info_ = {};
  std::vector<std::uint32_t> pixels_;
  TemporaryFolder folder_;
  IImagingFactory* factory_ = nullptr;
};

TEST_F(Imaging, DecodesEveryKindOfFile) {
  constexpr int kTypesAndDepths[][2] = {
      {PNG_COLOR_TYPE_GRAY, 1},    {PNG_COLOR_TYPE_GRAY, 2},        {PNG_COLOR_TYPE_GRAY, 4},
      {PNG_COLOR_TYPE_GRAY, 8},    {PNG_COLOR_TYPE_GRAY, 16},       {PNG_COLOR_TYPE_GRAY_ALPHA, 8},
      {PNG_COLOR_TYPE_PALETTE, 1}, {PNG_COLOR_TYPE_PALETTE, 2},     {PNG_COLOR_TYPE_PALETTE, 4},
      {PNG_COLOR_TYPE_PALETTE, 8}, {PNG_COLOR_TYPE_GRAY_ALPHA, 16}, {PNG_COLOR_TYPE_RGB, 8},
      {PNG_COLOR_TYPE_RGB, 16},    {PNG_COLOR_TYPE_RGB_ALPHA, 8},   {PNG_COLOR_TYPE_RGB_ALPHA, 16}};
  for (const auto& [type, depth] : kTypesAndDepths) {
    for (const int interlace : {PNG_INTERLACE_NONE, PNG_INTERLACE_ADAM7}) {
      for (const bool transparent_color : {false, true}) {
        const bool channel = (type & PNG_COLOR_MASK_ALPHA) != 0;
        if (channel && transparent_color) continue;
        const PngKind kind = {type, depth, interlace, transparent_color};
        ASSERT_EQ(S_OK, Load(MakePng(kWidth, kHeight, kind)));
        ASSERT_EQ(std::pair(13u, 11u), std::pair(info_.Width, info_.Height));
        EXPECT_EQ(channel || transparent_color ? ImageFlagsHasAlpha : 0, info_.Flags);
        for (int i = 0; i < kWidth * kHeight; ++i)
          ASSERT_EQ(ExpectedPixel(kind, i % kWidth, i / kWidth), pixels_[static_cast<std::size_t>(i)])
              << "type " << type << " depth " << depth << " at " << i;
      }
    }
  }
}

TEST_F(Imaging, RefusesFilesThatLie) {
  const std::vector<std::byte> good = MakePng(kWidth, kHeight, {});
  ASSERT_EQ(S_OK, Load(good));
  // Every cut, and every damaged byte, is a failure; the chunk's checksum finds what the decoder does not.
  for (std::size_t length = 0; length < good.size(); length += 3)
    EXPECT_EQ(E_FAIL, Load({good.begin(), good.begin() + static_cast<std::ptrdiff_t>(length)})) << length;
  const std::size_t last_chunk = good.size() - 12;
  int refused = 0;
  for (std::size_t i = 0; i < last_chunk; ++i) {
    std::vector<std::byte> damaged = good;
    damaged[i] ^= std::byte{0x40};
    refused += FAILED(Load(damaged)) ? 1 : 0;
  }
  constexpr int kGammaChunk = 16;  // may be damaged without harm
  EXPECT_GE(refused, static_cast<int>(last_chunk) - kGammaChunk);
}

TEST_F(Imaging, TakesNoHeaderAtItsWord) {
  constexpr std::size_t kWidthAt = 16;
  constexpr std::size_t kHeaderAt = 12;  // its name, which the checksum begins with
  constexpr std::size_t kHeaderSize = 17;
  for (const std::uint32_t size : {0u, 4000u, 30000u, 40000u, 0x7FFFFFFFu, 0xFFFFFFFFu}) {
    std::vector<std::byte> file = MakePng(kWidth, kHeight, {});
    const auto put = [&file](std::size_t at, std::uint32_t value) {
      for (int i = 0; i < 4; ++i) file[at + i] = static_cast<std::byte>(value >> (24 - 8 * i));
    };
    put(kWidthAt, size);
    put(kWidthAt + 4, size);
    const auto* header = reinterpret_cast<const Bytef*>(file.data() + kHeaderAt);
    put(kHeaderAt + kHeaderSize, static_cast<std::uint32_t>(crc32(0, header, kHeaderSize)));
    EXPECT_EQ(E_FAIL, Load(file)) << size;
  }
}

TEST_F(Imaging, GivesTheStatusOfWhatFails) {
  IImage* image = nullptr;
  EXPECT_EQ(HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND), factory_->CreateImageFromFile(u"\\none.png", &image));
  EXPECT_EQ(E_POINTER, factory_->CreateImageFromFile(nullptr, &image));
  using phone::Operation;
  for (const Operation operation : {Operation::CreateImageFromFile, Operation::GetImageInfo,
                                    Operation::CreateBitmapFromImage, Operation::LockBits}) {
    phone::SetFault(operation, 1, 0);
    EXPECT_EQ(E_FAIL, Load(MakePng(kWidth, kHeight, {})));
    EXPECT_EQ(S_OK, Load(MakePng(kWidth, kHeight, {})));
  }
}

TEST(Png, ScreensComeBackAsTheyWere) {
  constexpr int kStride = 5;
  std::vector<std::uint32_t> screen(kStride * 3);
  for (std::size_t i = 0; i < screen.size(); ++i) screen[i] = static_cast<std::uint32_t>(i * 0x00123457);
  std::vector<std::byte> file;
  EXPECT_FALSE(phone::EncodePng({screen.data(), 0, 3, 4}, file));
  ASSERT_TRUE(phone::EncodePng({screen.data(), 4, 3, kStride}, file));
  phone::PngHeader header;
  ASSERT_TRUE(phone::ReadPngHeader(file, header));
  EXPECT_FALSE(header.alpha);
  std::vector<std::uint32_t> pixels(12);
  ASSERT_TRUE(phone::DecodePng(file, header, pixels.data()));
  for (std::size_t i = 0; i < pixels.size(); ++i)
    EXPECT_EQ((screen[i / 4 * kStride + i % 4] & 0xFFFFFF) | 0xFF000000, pixels[i]);
}

}  // namespace
