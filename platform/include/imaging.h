/// \file
/// The imaging codecs. Every object that a call gives is the caller's to release.
#pragma once

#include <objbase.h>

#include <cstdint>

inline constexpr CLSID CLSID_ImagingFactory = {
    0x327ABDA8, 0x072B, 0x11D3, {0x9D, 0x7B, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
inline constexpr IID IID_IImagingFactory = {
    0x327ABDA7, 0x072B, 0x11D3, {0x9D, 0x7B, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};

using PixelFormatID = UINT;
inline constexpr PixelFormatID PixelFormat24bppRGB = 0x00021808;
inline constexpr PixelFormatID PixelFormat32bppARGB = 0x0026200A;
inline constexpr PixelFormatID PixelFormat32bppPARGB = 0x000E200B;  ///< premultiplied by alpha

inline constexpr UINT ImageFlagsHasAlpha = 0x0002;

enum InterpolationHint { InterpolationHintDefault };
enum ImageLockMode { ImageLockModeRead = 0x0001 };

struct ImageInfo {
  GUID RawDataFormat;
  PixelFormatID PixelFormat;
  UINT Width;   ///< px
  UINT Height;  ///< px
  UINT TileWidth;
  UINT TileHeight;
  double Xdpi;
  double Ydpi;
  UINT Flags;
};

struct BitmapData {
  UINT Width;
  UINT Height;
  INT Stride;  ///< bytes from one row to the next; negative when the rows lie bottom-up
  PixelFormatID PixelFormat;
  void* Scan0;  ///< the top row
  std::uintptr_t Reserved;
};

struct IImage : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE GetImageInfo(ImageInfo* info) = 0;
};

struct IBitmapImage : IUnknown {
  /// Gives the pixels of a rectangle in the wanted format, until UnlockBits.
  virtual HRESULT STDMETHODCALLTYPE LockBits(const RECT* rect, UINT flags, PixelFormatID format, BitmapData* data) = 0;
  virtual HRESULT STDMETHODCALLTYPE UnlockBits(const BitmapData* data) = 0;
};

struct IImagingFactory : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE CreateImageFromFile(const WCHAR* path, IImage** image) = 0;
  /// Decodes the image, scaled to the given size; 0: its own.
  virtual HRESULT STDMETHODCALLTYPE CreateBitmapFromImage(IImage* image, UINT width, UINT height, PixelFormatID format,
                                                          InterpolationHint hint, IBitmapImage** bitmap) = 0;
};
