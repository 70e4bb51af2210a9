#include "visuals/image_visual.h"

#include <imaging.h>
#include <strsafe.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "base/com_owner.h"
#include "base/status.h"

namespace {

constexpr std::size_t kPathCapacity = 255;
constexpr std::size_t kBytesPerPixel = 4;

/// COM for the length of one load.
class ComSession {
 public:
  ComSession() noexcept : status(CoInitializeEx(nullptr, COINIT_MULTITHREADED)) {}
  ComSession(const ComSession&) = delete;
  ComSession& operator=(const ComSession&) = delete;
  ~ComSession() {
    if (SUCCEEDED(status)) CoUninitialize();
  }

  const HRESULT status;
};

BITMAPINFO DescribePixels(const ImageInfo& info) noexcept {
  BITMAPINFO description = {};
  description.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
  description.bmiHeader.biWidth = static_cast<LONG>(info.Width);
  description.bmiHeader.biHeight = static_cast<LONG>(info.Height);
  description.bmiHeader.biPlanes = 1;
  description.bmiHeader.biBitCount = 32;
  description.bmiHeader.biCompression = BI_RGB;
  return description;
}

/// Copies the rows so that the picture stands upright in the bottom-up bitmap.
void CopyRows(BYTE* target, const ImageInfo& info, const BitmapData& data) noexcept {
  const std::size_t rowSize = info.Width * kBytesPerPixel;
  const std::size_t copied = std::min<std::size_t>(rowSize, static_cast<std::size_t>(std::abs(data.Stride)));
  const BYTE* const top = static_cast<const BYTE*>(data.Scan0);
  for (UINT row = 0; row < info.Height; ++row) {
    const std::ptrdiff_t source = static_cast<std::ptrdiff_t>(info.Height - 1 - row) * data.Stride;
    std::memcpy(target + row * rowSize, top + source, copied);
  }
}

/// Fills the bitmap's pixels with the decoded picture.
HRESULT FillPixels(void* pixels, IBitmapImage& decoded, const ImageInfo& info) noexcept {
  const RECT whole = {0, 0, static_cast<LONG>(info.Width), static_cast<LONG>(info.Height)};
  BitmapData data = {};
  RETURN_IF_FAILED(decoded.LockBits(&whole, ImageLockModeRead, PixelFormat32bppPARGB, &data));
  if (!pixels || !data.Scan0) return E_OUTOFMEMORY;
  CopyRows(static_cast<BYTE*>(pixels), info, data);
  return decoded.UnlockBits(&data);
}

}  // namespace

HRESULT CImageVisual::Load(LPCWSTR path) noexcept {
  if (!path) return E_OUTOFMEMORY;
  WCHAR file[kPathCapacity];
  RETURN_IF_FAILED(StringCchCopyW(file, kPathCapacity, path));
  Release();
  const OwnedDC screen(CreateCompatibleDC(nullptr));
  const ComSession com;
  RETURN_IF_FAILED(com.status);
  return Decode(file, screen.get());
}

HRESULT CImageVisual::Decode(LPCWSTR path, HDC screen) noexcept {
  ComPtr<IImagingFactory> factory;
  RETURN_IF_FAILED(CoCreateInstance(CLSID_ImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IImagingFactory,
                                    reinterpret_cast<void**>(factory.Receive())));
  if (!factory) return E_OUTOFMEMORY;
  ComPtr<IImage> image;
  RETURN_IF_FAILED(factory->CreateImageFromFile(path, image.Receive()));
  if (!image) return E_OUTOFMEMORY;
  ImageInfo info = {};
  RETURN_IF_FAILED(image->GetImageInfo(&info));
  hasAlpha = (info.Flags & ImageFlagsHasAlpha) != 0 ? 1 : 0;

  const BITMAPINFO description = DescribePixels(info);
  void* pixels = nullptr;
  bitmap.Reset(CreateDIBSection(screen, &description, DIB_RGB_COLORS, &pixels, nullptr, 0));
  if (!bitmap) return E_OUTOFMEMORY;
  if (pixels) std::memset(pixels, 0, kBytesPerPixel * info.Width * info.Height);

  ComPtr<IBitmapImage> decoded;
  const HRESULT status = factory->CreateBitmapFromImage(image.get(), info.Width, info.Height, info.PixelFormat,
                                                        InterpolationHintDefault, decoded.Receive());
  // The header was good and the data is not: there is no picture to show.
  if (FAILED(status) || !decoded) bitmap.Reset();
  RETURN_IF_FAILED(status);
  if (!decoded) return E_OUTOFMEMORY;
  return FillPixels(pixels, *decoded.get(), info);
}

HRESULT CImageVisual::PrepareMemoryDC(HDC dc) noexcept {
  if (memoryDC) return S_OK;
  memoryDC.Reset(CreateCompatibleDC(dc));
  if (!memoryDC) return E_OUTOFMEMORY;
  SelectObject(memoryDC.get(), bitmap.get());
  GetObjectW(bitmap.get(), sizeof(bitmapInfo), &bitmapInfo);
  return S_OK;
}

HRESULT CImageVisual::Draw(HDC dc, DWORD selector) noexcept {
  if (visible.current != 1 || alpha.current <= ALPHA_TRANSPARENT) return S_OK;
  if (!bitmap) return E_OUTOFMEMORY;
  RETURN_IF_FAILED(PrepareMemoryDC(dc));
  if (width.current <= 0 || height.current <= 0) return S_OK;

  const INT left = GetValue(PROP_X, selector);
  const INT top = GetValue(PROP_Y, selector);
  const INT sourceWidth = bitmapInfo.bmWidth;
  const INT sourceHeight = bitmapInfo.bmHeight;
  BOOL drawn = FALSE;
  if (alpha.current != ALPHA_OPAQUE || hasAlpha) {
    const BLENDFUNCTION blend = {AC_SRC_OVER, 0, static_cast<BYTE>(alpha.current & 0xFF),
                                 static_cast<BYTE>(hasAlpha ? AC_SRC_ALPHA : 0)};
    drawn = AlphaBlend(dc, left, top, width.current, height.current, memoryDC.get(), 0, 0, sourceWidth, sourceHeight,
                       blend);
  } else if (width.current == sourceWidth && height.current == sourceHeight) {
    drawn = BitBlt(dc, left, top, sourceWidth, sourceHeight, memoryDC.get(), 0, 0, SRCCOPY);
  } else {
    drawn = StretchBlt(dc, left, top, width.current, height.current, memoryDC.get(), 0, 0, sourceWidth, sourceHeight,
                       SRCCOPY);
  }
  return drawn ? S_OK : E_FAIL;
}

void CImageVisual::Release() noexcept {
  memoryDC.Reset();
  bitmap.Reset();
}
