// A PNG file: decoded at its own size and scaled, and drawn the way the program draws its pictures. A fuzzer cannot
// guess checksums, so each input is read as it is and with the checksums of its chunks put right.

#include <imaging.h>
#include <zlib.h>

#include "base/com_owner.h"
#include "fuzz/fuzzing.h"
#include "visuals/image_visual.h"

namespace {

using fuzzing::Phone;
using fuzzing::Require;

constexpr LPCWSTR kPath = TEXT("\\picture.png");

/// A chunk is the length of its data, a type of four bytes, the data, and a checksum of type and data.
constexpr std::size_t kSignature = 8;
constexpr std::size_t kChunkHead = 8;
constexpr std::size_t kChecksum = 4;

std::uint32_t BigEndianAt(const std::string& bytes, std::size_t at) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < 4; ++i) value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
  return value;
}

std::string WithChecksums(std::string bytes) {
  std::size_t at = kSignature;
  while (at + kChunkHead + kChecksum <= bytes.size()) {
    const std::size_t length = BigEndianAt(bytes, at);
    if (length > bytes.size() - at - kChunkHead - kChecksum) break;
    const std::size_t end = at + kChunkHead + length;
    const auto* const type = reinterpret_cast<const Bytef*>(bytes.data()) + at + 4;
    const auto sum = static_cast<std::uint32_t>(crc32(0, type, static_cast<uInt>(length + 4)));
    for (std::size_t i = 0; i < kChecksum; ++i) bytes[end + i] = static_cast<char>(sum >> (24 - 8 * i) & 0xFF);
    at = end + kChecksum;
  }
  return bytes;
}

void CheckPixels(IBitmapImage& decoded, UINT width, UINT height) {
  BitmapData data = {};
  Require(decoded.LockBits(nullptr, ImageLockModeRead, PixelFormat32bppPARGB, &data) == S_OK, "pixels can be locked");
  Require(data.Width == width && data.Height == height, "the picture has its size");
  for (UINT y = 0; y < height; ++y) {
    const auto* const row = reinterpret_cast<const BYTE*>(data.Scan0) + static_cast<std::ptrdiff_t>(y) * data.Stride;
    for (UINT x = 0; x < width; ++x) {
      const BYTE* const pixel = row + std::size_t{x} * 4;
      Require(pixel[0] <= pixel[3] && pixel[1] <= pixel[3] && pixel[2] <= pixel[3], "colours are premultiplied");
    }
  }
  Require(decoded.UnlockBits(&data) == S_OK, "pixels can be unlocked");
}

/// Decodes the picture at its own size (0, 0) or scaled; tells whether its data is good.
bool Decode(IImagingFactory& factory, IImage& image, UINT width, UINT height) {
  ImageInfo info = {};
  Require(image.GetImageInfo(&info) == S_OK, "a picture has its facts");
  Require(info.Width > 0 && info.Height > 0, "a picture has a size");
  ComPtr<IBitmapImage> decoded;
  const HRESULT status = factory.CreateBitmapFromImage(&image, width, height, PixelFormat32bppARGB,
                                                       InterpolationHintDefault, decoded.Receive());
  Require(SUCCEEDED(status) == static_cast<bool>(decoded), "a success gives pixels");
  if (!decoded) return false;
  CheckPixels(*decoded.get(), width > 0 ? width : info.Width, height > 0 ? height : info.Height);
  return true;
}

void Draw(bool good) {
  static const OwnedDC dc(CreateCompatibleDC(nullptr));
  static const OwnedBitmap target(CreateCompatibleBitmap(dc.get(), 48, 48));
  SelectObject(dc.get(), target.get());
  CImageVisual picture;
  Require((picture.Load(kPath) == S_OK) == good, "good data can be loaded");
  picture.SetSize(31, 17);
  picture.SetVisible(1);
  picture.SetAlpha(200);
  Require((picture.Draw(dc.get(), VALUE_ABSOLUTE) == S_OK) == good, "what was loaded can be drawn");
}

void Read(std::string_view bytes) {
  Phone::On().Put("picture.png", bytes);
  ComPtr<IImagingFactory> factory;
  CoCreateInstance(CLSID_ImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IImagingFactory,
                   reinterpret_cast<void**>(factory.Receive()));
  Require(static_cast<bool>(factory), "there are imaging codecs");
  ComPtr<IImage> image;
  const HRESULT status = factory->CreateImageFromFile(kPath, image.Receive());
  Require(SUCCEEDED(status) == static_cast<bool>(image), "a success gives a picture");
  const bool good = image && Decode(*factory.get(), *image.get(), 0, 0);
  if (good) Require(Decode(*factory.get(), *image.get(), 5, 9), "what can be decoded can be scaled");
  Draw(good);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(fuzzing::TextOf(data, size));
  Read(bytes);
  const std::string mended = WithChecksums(bytes);
  if (mended != bytes) Read(mended);
  return 0;
}
