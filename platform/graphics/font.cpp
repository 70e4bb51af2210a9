#include "graphics/font.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <functional>
#include <unordered_map>

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

Face* Font::SearchFace() {
  constexpr int kDefaultHeight = 12;  // px
  const int height = request_.height == 0 ? kDefaultHeight : CharacterHeight();
  face_ = FindFace(request_.Name(), height, request_.weight >= kFirstBoldWeight);
  return face_.get();
}

void GiveBackFont(Font& font) noexcept {
  if (--font.holders > 0) return;
  OpenFonts().erase(font.request());
  CloseObjectHandle(font.handle);
}

}  // namespace phone

using namespace phone;

HFONT CreateFontIndirectW(const LOGFONTW* description) {
  if (FaultDue(Operation::CreateFontIndirectW) || description == nullptr) return nullptr;
  try {
    return static_cast<HFONT>(OpenFont(RequestOf(*description)));
  } catch (...) {
    return nullptr;
  }
}
