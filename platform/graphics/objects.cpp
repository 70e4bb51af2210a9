// Bitmaps, fonts and stock objects by their handles.

#include <algorithm>
#include <climits>
#include <functional>
#include <new>
#include <unordered_map>

#include "graphics/context.h"
#include "system/faults.h"

namespace phone {

namespace {

struct RequestHash {
  std::size_t operator()(const FontRequest& request) const noexcept {
    constexpr std::size_t kSpread = 1000003;
    const auto measures = static_cast<std::size_t>(request.height) * kSpread + static_cast<std::size_t>(request.weight);
    return std::hash<std::u16string_view>()(request.Name()) ^ measures * kSpread;
  }
};

struct RequestEqual {
  bool operator()(const FontRequest& a, const FontRequest& b) const noexcept {
    return a.height == b.height && a.weight == b.weight && a.Name() == b.Name();
  }
};

/// The fonts that the program holds: the same request has the same handle, so that another one costs nothing.
std::unordered_map<FontRequest, Font*, RequestHash, RequestEqual>& OpenFonts() {
  static auto* const fonts = new std::unordered_map<FontRequest, Font*, RequestHash, RequestEqual>;
  return *fonts;
}

FontRequest RequestOf(const LOGFONTW& description) noexcept {
  FontRequest request;
  for (int i = 0; i < LF_FACESIZE - 1 && description.lfFaceName[i] != 0; ++i)
    request.face[i] = description.lfFaceName[i];
  request.height = description.lfHeight;
  request.weight = description.lfWeight;
  return request;
}

HANDLE OpenFont(const FontRequest& request) {
  const auto [place, fresh] = OpenFonts().try_emplace(request, nullptr);
  if (fresh) {
    try {
      Ref<Font> font(new Font(request));
      OpenHandle(*font);
      place->second = font.get();
    } catch (...) {
      OpenFonts().erase(place);
      throw;
    }
  }
  ++place->second->holders;
  return place->second->handle;
}

void CloseFont(Font& font) noexcept {
  if (--font.holders > 0) return;
  OpenFonts().erase(font.request());
  CloseObjectHandle(font.handle);
}

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

Font& StockFont() {
  static Font* const font = [] {
    Ref<Font> made(new Font(FontRequest{u"Verdana", -12, 400}));
    OpenHandle(*made);
    made->stock = true;
    return made.get();
  }();
  return *font;
}

int Font::CharacterHeight() const noexcept {
  const std::int64_t height = request_.height;
  return static_cast<int>(std::min<std::int64_t>(height < 0 ? -height : height, INT_MAX));
}

Face* Font::face() {
  constexpr int kDefaultHeight = 12;  // px
  constexpr LONG kFirstBoldWeight = 550;
  if (!face_) {
    const int height = request_.height == 0 ? kDefaultHeight : CharacterHeight();
    face_ = FindFace(request_.Name(), height, request_.weight >= kFirstBoldWeight);
  }
  return face_.get();
}

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
    CloseFont(static_cast<Font&>(*found));
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

HFONT CreateFontIndirectW(const LOGFONTW* description) {
  if (FaultDue(Operation::CreateFontIndirectW) || description == nullptr) return nullptr;
  try {
    return static_cast<HFONT>(OpenFont(RequestOf(*description)));
  } catch (...) {
    return nullptr;
  }
}
