/// \file
/// A visual that shows a picture.
#pragma once

#include "base/gdi_owner.h"
#include "visuals/visual.h"

class CImageVisual : public CVisual {
 public:
  /// Decodes a PNG file into a new bitmap; the picture from before is gone unless the path itself is refused. The path
  /// has at most 254 code units. E_OUTOFMEMORY for a null path, or a bitmap or pixels that cannot be had; else the
  /// status of the platform call that failed.
  [[nodiscard]] HRESULT Load(LPCWSTR path) noexcept;
  /// Draws the picture, scaled to the visual's size, with its opacity; `selector` is the ValueSelector of the drawing
  /// position. A hidden or transparent visual, or one of no size, draws nothing and succeeds. E_OUTOFMEMORY without a
  /// picture or memory device context, E_FAIL when the drawing call fails.
  [[nodiscard]] HRESULT Draw(HDC dc, DWORD selector) noexcept;
  /// Frees the picture.
  void Release() noexcept;

  OwnedDC memoryDC;        ///< holds `bitmap` from the first draw on
  BITMAP bitmapInfo = {};  ///< of `bitmap`, from the first draw on
  OwnedBitmap bitmap;      ///< 32-bit pixels, premultiplied by alpha, rows bottom-up
  BYTE hasAlpha = 0;       ///< 1: the picture carries per-pixel alpha

 private:
  HRESULT Decode(LPCWSTR path, HDC screen) noexcept;
  HRESULT PrepareMemoryDC(HDC dc) noexcept;
};
