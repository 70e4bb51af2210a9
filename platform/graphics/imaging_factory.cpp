#include "graphics/imaging_factory.h"

#include <new>
#include <utility>
#include <vector>

#include "graphics/png.h"
#include "graphics/raster.h"
#include "system/component.h"
#include "system/faults.h"
#include "system/files.h"

namespace phone {

namespace {

class PngImage final : public Component<IImage> {
 public:
  PngImage(std::vector<std::byte> file, const PngHeader& header) : file_(std::move(file)), header_(header) {}

  HRESULT GetImageInfo(ImageInfo* info) override {
    if (FaultDue(Operation::GetImageInfo)) return E_FAIL;
    if (info == nullptr) return E_POINTER;
    constexpr double kDotsPerInch = 96;
    *info = {};
    info->PixelFormat = header_.alpha ? PixelFormat32bppARGB : PixelFormat24bppRGB;
    info->Width = info->TileWidth = static_cast<UINT>(header_.width);
    info->Height = info->TileHeight = static_cast<UINT>(header_.height);
    info->Xdpi = info->Ydpi = kDotsPerInch;
    if (header_.alpha) info->Flags = ImageFlagsHasAlpha;
    return S_OK;
  }

  /// Null for bad data, or without memory.
  Ref<Bitmap> Decode() const {
    Ref<Bitmap> bitmap = Bitmap::Create(header_.width, header_.height);
    if (bitmap && !DecodePng(file_, header_, bitmap->memory())) return {};
    return bitmap;
  }

 private:
  const std::vector<std::byte> file_;
  const PngHeader header_;
};

class DecodedImage final : public Component<IBitmapImage> {
 public:
  explicit DecodedImage(Ref<Bitmap> bitmap) : bitmap_(std::move(bitmap)) {}

  HRESULT LockBits(const RECT* rect, UINT flags, PixelFormatID format, BitmapData* data) override {
    if (FaultDue(Operation::LockBits)) return E_FAIL;
    if (data == nullptr) return E_POINTER;
    if (flags != ImageLockModeRead || format != PixelFormat32bppPARGB) return E_INVALIDARG;
    const Area area = rect == nullptr ? AreaOf(*bitmap_) : AreaOf(*rect);
    if (area.width <= 0 || area.height <= 0 || !Contains(AreaOf(*bitmap_), area)) return E_INVALIDARG;
    *data = {};
    data->Width = static_cast<UINT>(area.width);
    data->Height = static_cast<UINT>(area.height);
    data->Stride = bitmap_->width() * 4;
    data->PixelFormat = format;
    data->Scan0 = bitmap_->Row(static_cast<int>(area.y)) + area.x;
    return S_OK;
  }

  HRESULT UnlockBits(const BitmapData* data) override { return data == nullptr ? E_POINTER : S_OK; }

 private:
  const Ref<Bitmap> bitmap_;
};

/// The bitmap itself when it has the wanted size (0: its own), else a scaled one. Null when that is absurd.
Ref<Bitmap> Resized(Ref<Bitmap> bitmap, UINT width, UINT height) {
  if (width > kMaxExtent || height > kMaxExtent) return {};
  const int columns = width == 0 ? bitmap->width() : static_cast<int>(width);
  const int rows = height == 0 ? bitmap->height() : static_cast<int>(height);
  if (columns == bitmap->width() && rows == bitmap->height()) return bitmap;
  Ref<Bitmap> resized = Bitmap::Create(columns, rows);
  if (resized) StretchPixels(*resized, AreaOf(*resized), AreaOf(*resized), *bitmap, AreaOf(*bitmap));
  return resized;
}

bool IsKnown(PixelFormatID format) noexcept {
  return format == PixelFormat24bppRGB || format == PixelFormat32bppARGB || format == PixelFormat32bppPARGB;
}

class ImagingFactory final : public Component<IImagingFactory, IID_IImagingFactory> {
 public:
  HRESULT CreateImageFromFile(const WCHAR* path, IImage** image) override {
    if (image != nullptr) *image = nullptr;
    if (FaultDue(Operation::CreateImageFromFile)) return E_FAIL;
    if (path == nullptr || image == nullptr) return E_POINTER;
    try {
      std::vector<std::byte> file;
      const DWORD error = ReadWholeFile(path, file);
      if (error != ERROR_SUCCESS) return HRESULT_FROM_WIN32(error);
      PngHeader header;
      if (!ReadPngHeader(file, header)) return E_FAIL;
      *image = new PngImage(std::move(file), header);
      return S_OK;
    } catch (const std::bad_alloc&) {
      return E_OUTOFMEMORY;
    } catch (...) {
      return E_FAIL;
    }
  }

  HRESULT CreateBitmapFromImage(IImage* image, UINT width, UINT height, PixelFormatID format, InterpolationHint,
                                IBitmapImage** bitmap) override {
    if (bitmap != nullptr) *bitmap = nullptr;
    if (FaultDue(Operation::CreateBitmapFromImage)) return E_FAIL;
    if (image == nullptr || bitmap == nullptr) return E_POINTER;
    const auto* png = dynamic_cast<const PngImage*>(image);
    if (png == nullptr || !IsKnown(format)) return E_INVALIDARG;
    try {
      Ref<Bitmap> decoded = png->Decode();
      if (!decoded) return E_FAIL;
      decoded = Resized(std::move(decoded), width, height);
      if (!decoded) return E_OUTOFMEMORY;
      *bitmap = new DecodedImage(std::move(decoded));
      return S_OK;
    } catch (const std::bad_alloc&) {
      return E_OUTOFMEMORY;
    } catch (...) {
      return E_FAIL;
    }
  }
};

}  // namespace

HRESULT CreateImagingFactory(REFIID iid, void** object) noexcept {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  try {
    IImagingFactory* factory = new ImagingFactory;
    const HRESULT status = factory->QueryInterface(iid, object);
    factory->Release();
    return status;
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
}

}  // namespace phone
