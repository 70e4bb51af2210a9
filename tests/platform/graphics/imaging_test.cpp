#include <gtest/gtest.h>
#include <zlib.h>

#include <cmath>
#include <fstream>

#include "graphics/imaging_factory.h"
#include "graphics/png.h"
#include "png_maker.h"
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
  const auto sample = [&](int channel) { return SampleAt(x, y, channel, kind.depth); };
  const int channels = ChannelsOf(kind.color_type);
  std::uint32_t color[3];
  for (int i = 0; i < 3; ++i) color[i] = Widened(sample(channels >= 3 ? i : 0), kind.depth);
  std::uint32_t alpha = 255;
  if ((kind.color_type & PNG_COLOR_MASK_ALPHA) != 0) alpha = Widened(sample(channels - 1), kind.depth);
  if (kind.color_type == PNG_COLOR_TYPE_PALETTE) {
    const std::uint32_t index = sample(0);
    color[0] = index;
    color[1] = 255 - index;
    color[2] = 7 * index & 255;
    if (kind.transparent_color && index == 0) alpha = 0;
  } else if (kind.transparent_color) {
    bool clear = true;
    for (int i = 0; i < channels; ++i) clear = clear && sample(i) == SampleAt(0, 0, i, kind.depth);
    if (clear) alpha = 0;
  }
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

  void Put(const std::vector<std::byte>& file) {
    std::ofstream out(folder_.path / "p.png", std::ios::binary);
    out.write(reinterpret_cast<const char*>(file.data()), static_cast<std::streamsize>(file.size()));
  }

  /// The status of the first step that fails; the pixels when none does.
  HRESULT Load(std::vector<std::uint32_t>& pixels, ImageInfo& info) {
    IImage* image = nullptr;
    HRESULT status = factory_->CreateImageFromFile(u"\\p.png", &image);
    if (FAILED(status)) return status;
    status = image->GetImageInfo(&info);
    IBitmapImage* bitmap = nullptr;
    if (SUCCEEDED(status))
      status = factory_->CreateBitmapFromImage(image, 0, 0, info.PixelFormat, InterpolationHintDefault, &bitmap);
    image->Release();
    if (FAILED(status)) return status;
    BitmapData data = {};
    status = bitmap->LockBits(nullptr, ImageLockModeRead, PixelFormat32bppPARGB, &data);
    if (SUCCEEDED(status)) {
      const auto* scan = static_cast<const std::uint32_t*>(data.Scan0);
      EXPECT_EQ(static_cast<INT>(data.Width * 4), data.Stride);
      pixels.assign(scan, scan + std::size_t{data.Width} * data.Height);
      EXPECT_EQ(S_OK, bitmap->UnlockBits(&data));
    }
    bitmap->Release();
    return status;
  }

  HRESULT LoadBytes(const std::vector<std::byte>& file) {
    Put(file);
    std::vector<std::uint32_t> pixels;
    ImageInfo info = {};
    return Load(pixels, info);
  }

  TemporaryFolder folder_;
  IImagingFactory* factory_ = nullptr;
};

TEST_F(Imaging, DecodesEveryKindOfFile) {
  const struct {
    int color_type;
    std::vector<int> depths;
  } types[] = {{PNG_COLOR_TYPE_GRAY, {1, 2, 4, 8, 16}},
               {PNG_COLOR_TYPE_GRAY_ALPHA, {8, 16}},
               {PNG_COLOR_TYPE_PALETTE, {1, 2, 4, 8}},
               {PNG_COLOR_TYPE_RGB, {8, 16}},
               {PNG_COLOR_TYPE_RGB_ALPHA, {8, 16}}};
  for (const auto& type : types) {
    for (const int depth : type.depths) {
      for (const int interlace : {PNG_INTERLACE_NONE, PNG_INTERLACE_ADAM7}) {
        for (const bool transparent_color : {false, true}) {
          const bool channel = (type.color_type & PNG_COLOR_MASK_ALPHA) != 0;
          if (channel && transparent_color) continue;
          const PngKind kind = {type.color_type, depth, interlace, transparent_color};
          Put(MakePng(kWidth, kHeight, kind));
          std::vector<std::uint32_t> pixels;
          ImageInfo info = {};
          ASSERT_EQ(S_OK, Load(pixels, info));
          EXPECT_EQ(13u, info.Width);
          EXPECT_EQ(11u, info.Height);
          EXPECT_EQ(channel || transparent_color ? ImageFlagsHasAlpha : 0, info.Flags);
          for (int y = 0; y < kHeight; ++y)
            for (int x = 0; x < kWidth; ++x)
              ASSERT_EQ(ExpectedPixel(kind, x, y), pixels[static_cast<std::size_t>(y * kWidth + x)])
                  << "type " << type.color_type << " depth " << depth << " at " << x << ',' << y;
        }
      }
    }
  }
}

TEST_F(Imaging, RefusesFilesThatLie) {
  const std::vector<std::byte> good = MakePng(kWidth, kHeight, {});
  ASSERT_EQ(S_OK, LoadBytes(good));
  // Every cut, and every damaged byte, is a failure; the chunk's checksum finds what the decoder does not.
  for (std::size_t length = 0; length < good.size(); length += 3)
    EXPECT_EQ(E_FAIL, LoadBytes({good.begin(), good.begin() + static_cast<std::ptrdiff_t>(length)})) << length;
  const std::size_t last_chunk = good.size() - 12;
  int refused = 0;
  for (std::size_t i = 0; i < last_chunk; ++i) {
    std::vector<std::byte> damaged = good;
    damaged[i] ^= std::byte{0x40};
    refused += FAILED(LoadBytes(damaged)) ? 1 : 0;
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
    Put(file);
    IImage* image = nullptr;
    EXPECT_EQ(E_FAIL, factory_->CreateImageFromFile(u"\\p.png", &image)) << size;
    EXPECT_EQ(nullptr, image);
  }
}

TEST_F(Imaging, GivesTheStatusOfWhatFails) {
  IImage* image = nullptr;
  EXPECT_EQ(HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND), factory_->CreateImageFromFile(u"\\none.png", &image));
  EXPECT_EQ(E_POINTER, factory_->CreateImageFromFile(nullptr, &image));
  void* other = nullptr;
  EXPECT_EQ(E_NOINTERFACE, phone::CreateImagingFactory(CLSID_ImagingFactory, &other));
  EXPECT_EQ(nullptr, other);
  using phone::Operation;
  for (const Operation operation : {Operation::CreateImageFromFile, Operation::GetImageInfo,
                                    Operation::CreateBitmapFromImage, Operation::LockBits}) {
    phone::SetFault(operation, 1, 0);
    EXPECT_EQ(E_FAIL, LoadBytes(MakePng(kWidth, kHeight, {})));
    EXPECT_EQ(S_OK, LoadBytes(MakePng(kWidth, kHeight, {})));
  }
}

TEST(Png, ScreensComeBackAsTheyWere) {
  constexpr int kStride = 5;
  std::vector<std::uint32_t> screen(kStride * 3);
  for (std::size_t i = 0; i < screen.size(); ++i) screen[i] = static_cast<std::uint32_t>(i * 0x00123457);
  std::vector<std::byte> file;
  ASSERT_TRUE(phone::EncodePng({screen.data(), 4, 3, kStride}, file));
  phone::PngHeader header;
  ASSERT_TRUE(phone::ReadPngHeader(file, header));
  EXPECT_FALSE(header.alpha);
  std::vector<std::uint32_t> pixels(12);
  ASSERT_TRUE(phone::DecodePng(file, header, pixels.data()));
  for (std::size_t i = 0; i < pixels.size(); ++i)
    EXPECT_EQ((screen[i / 4 * kStride + i % 4] & 0xFFFFFF) | 0xFF000000, pixels[i]);
  EXPECT_FALSE(phone::EncodePng({nullptr, 4, 3, 4}, file));
  EXPECT_FALSE(phone::EncodePng({screen.data(), 0, 3, 4}, file));
}

}  // namespace
