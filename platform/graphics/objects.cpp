// Bitmaps and stock objects, and deleting by handle.

#include <climits>
#include <cstdlib>

#include "graphics/context.h"
#include "system/faults.h"

namespace phone {

namespace {

bool IsPlain32Bit(const BITMAPINFOHEADER& header) noexcept {
  return header.biSize >= sizeof(BITMAPINFOHEADER) && header.biPlanes == 1 && header.biBitCount == 32 &&
         header.biCompression == BI_RGB;
}

HBITMAP OpenBitmap(const Ref<Bitmap>& bitmap) {
  return bitmap ? static_cast<HBITMAP>(OpenHandle(*bitmap)) : nullptr;
}

/// True for none, and for one that is good.
bool ContextIsUsable(HDC dc) noexcept {
  return dc == nullptr || FindContext(dc) != nullptr;
}

}  // namespace

}  // namespace phone

using namespace phone;

HBITMAP CreateCompatibleBitmap(HDC dc, int width, int height) {
  if (FaultDue(Operation::CreateCompatibleBitmap)) return nullptr;
  if (!ContextIsUsable(dc) || width <= 0 || height <= 0) return nullptr;
  try {
    return OpenBitmap(Bitmap::Create(width, height));
  } catch (...) {
    return nullptr;
  }
}

HBITMAP CreateDIBSection(HDC dc, const BITMAPINFO* info, UINT usage, void** bits, HANDLE section, DWORD) {
  if (bits != nullptr) *bits = nullptr;
  if (FaultDue(Operation::CreateDIBSection)) return nullptr;
  if (!ContextIsUsable(dc) || info == nullptr || usage != DIB_RGB_COLORS || section != nullptr) return nullptr;
  const BITMAPINFOHEADER& header = info->bmiHeader;
  if (!IsPlain32Bit(header) || header.biWidth <= 0 || header.biHeight == 0 || header.biHeight == INT_MIN)
    return nullptr;
  const RowOrder order = header.biHeight > 0 ? RowOrder::bottom_up : RowOrder::top_down;
  try {
    const Ref<Bitmap> bitmap = Bitmap::Create(header.biWidth, std::abs(header.biHeight), order);
    const HBITMAP handle = OpenBitmap(bitmap);
    if (handle == nullptr) return nullptr;
    bitmap->shared_with_program = true;
    if (bits != nullptr) *bits = bitmap->memory();
    return handle;
  } catch (...) {
    return nullptr;
  }
}

BOOL DeleteObject(HGDIOBJ object) {
  GraphicsObject* found = FindObject(object);
  if (found == nullptr || found->kind == ObjectKind::context) return FALSE;
  if (found->stock) return TRUE;
  if (found->kind == ObjectKind::font)
    GiveBackFont(static_cast<Font&>(*found));
  else
    CloseObjectHandle(object);
  return TRUE;
}

int GetObjectW(HGDIOBJ object, int size, LPVOID description) {
  const Bitmap* bitmap = Find<Bitmap>(object, ObjectKind::bitmap);
  constexpr int kSize = sizeof(BITMAP);
  if (bitmap == nullptr) return 0;
  if (description == nullptr) return kSize;
  if (size < kSize) return 0;
  BITMAP& answer = *static_cast<BITMAP*>(description);
  answer = {};
  answer.bmWidth = bitmap->width();
  answer.bmHeight = bitmap->height();
  answer.bmWidthBytes = bitmap->width() * 4;
  answer.bmPlanes = 1;
  answer.bmBitsPixel = 32;
  if (bitmap->shared_with_program) answer.bmBits = bitmap->memory();
  return kSize;
}

HGDIOBJ GetStockObject(int index) {
  if (index != WHITE_BRUSH) return nullptr;
  try {
    static GraphicsObject* const brush = [] {
      Ref<GraphicsObject> made(new GraphicsObject(ObjectKind::brush));
      OpenHandle(*made);
      made->stock = true;
      return made.get();
    }();
    return brush->handle;
  } catch (...) {
    return nullptr;
  }
}
