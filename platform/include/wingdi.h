/// \file
/// The graphics device interface: device contexts, bitmaps, the three blits, fonts and text. All coordinates are device
/// pixels. The calls are for the user-interface thread.
#pragma once

#include <windef.h>

#define SRCCOPY 0x00CC0020u
#define BI_RGB 0u
#define DIB_RGB_COLORS 0u
#define AC_SRC_OVER 0x00
#define AC_SRC_ALPHA 0x01
#define TRANSPARENT 1
#define OPAQUE 2
#define WHITE_BRUSH 0
#define LF_FACESIZE 32

struct BITMAP {
  LONG bmType;
  LONG bmWidth;
  LONG bmHeight;
  LONG bmWidthBytes;
  WORD bmPlanes;
  WORD bmBitsPixel;
  LPVOID bmBits;
};

struct BITMAPINFOHEADER {
  DWORD biSize;
  LONG biWidth;
  LONG biHeight;  ///< positive: the rows lie bottom-up in memory
  WORD biPlanes;
  WORD biBitCount;
  DWORD biCompression;
  DWORD biSizeImage;
  LONG biXPelsPerMeter;
  LONG biYPelsPerMeter;
  DWORD biClrUsed;
  DWORD biClrImportant;
};

struct RGBQUAD {
  BYTE rgbBlue;
  BYTE rgbGreen;
  BYTE rgbRed;
  BYTE rgbReserved;
};

struct BITMAPINFO {
  BITMAPINFOHEADER bmiHeader;
  RGBQUAD bmiColors[1];
};

struct BLENDFUNCTION {
  BYTE BlendOp;              ///< AC_SRC_OVER
  BYTE BlendFlags;           ///< 0
  BYTE SourceConstantAlpha;  ///< 0 transparent to 255 opaque
  BYTE AlphaFormat;          ///< AC_SRC_ALPHA: the source's fourth byte counts, its colours are premultiplied
};

struct LOGFONTW {
  LONG lfHeight;  ///< negative: the character height in pixels
  LONG lfWidth;
  LONG lfEscapement;
  LONG lfOrientation;
  LONG lfWeight;
  BYTE lfItalic;
  BYTE lfUnderline;
  BYTE lfStrikeOut;
  BYTE lfCharSet;
  BYTE lfOutPrecision;
  BYTE lfClipPrecision;
  BYTE lfQuality;
  BYTE lfPitchAndFamily;
  WCHAR lfFaceName[LF_FACESIZE];
};

/// A memory device context; null argument: compatible with the screen. Null on failure. The caller deletes it.
HDC CreateCompatibleDC(HDC dc);
BOOL DeleteDC(HDC dc);
/// A 32-bit bitmap for drawing into, black at first. Null on failure. The caller deletes it.
HBITMAP CreateCompatibleBitmap(HDC dc, int width, int height);
/// A 32-bit bitmap whose pixels (blue, green, red, alpha) the caller reaches through `bits`. Null on failure.
HBITMAP CreateDIBSection(HDC dc, const BITMAPINFO* info, UINT usage, void** bits, HANDLE section, DWORD offset);
/// Gives the object selected before. A bitmap or font may be deleted while selected; it lives on in the context.
HGDIOBJ SelectObject(HDC dc, HGDIOBJ object);
BOOL DeleteObject(HGDIOBJ object);
/// Describes a bitmap; gives the number of bytes written, 0 on failure.
int GetObjectW(HGDIOBJ object, int size, LPVOID description);
HGDIOBJ GetStockObject(int index);

/// Copies pixels. False on failure; what lies outside the target is left out.
BOOL BitBlt(HDC target, int x, int y, int width, int height, HDC source, int source_x, int source_y, DWORD operation);
/// Copies pixels, scaled by taking the nearest source pixel. A size of 0 draws nothing and succeeds.
BOOL StretchBlt(HDC target, int x, int y, int width, int height, HDC source, int source_x, int source_y,
                int source_width, int source_height, DWORD operation);
/// Blends pixels: source * a / 255 + target * (255 - source alpha * a / 255) / 255, each product rounded to nearest;
/// a is the constant opacity. Scaled by taking the nearest source pixel.
BOOL AlphaBlend(HDC target, int x, int y, int width, int height, HDC source, int source_x, int source_y,
                int source_width, int source_height, BLENDFUNCTION blend);

/// A font; null on failure. The caller deletes it.
HFONT CreateFontIndirectW(const LOGFONTW* description);
COLORREF SetTextColor(HDC dc, COLORREF color);
int SetBkMode(HDC dc, int mode);
