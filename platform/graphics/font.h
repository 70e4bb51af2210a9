/// \file
/// Fonts as the program asks for them.
#pragma once

#include <string_view>

#include "graphics/face.h"
#include "graphics/object.h"

namespace phone {

/// From this weight on the bold face is used.
inline constexpr LONG kFirstBoldWeight = 550;

/// What of a font's description counts.
struct FontRequest {
  WCHAR face[LF_FACESIZE] = {};  ///< with its zero, zeros after it
  LONG height = 0;               ///< as in LOGFONTW
  LONG weight = 0;

  std::u16string_view Name() const noexcept { return face; }
};

class Font : public GraphicsObject {
 public:
  explicit Font(const FontRequest& request) : GraphicsObject(ObjectKind::font), request_(request) {}

  const FontRequest& request() const noexcept { return request_; }
  int CharacterHeight() const noexcept;  // px, as requested
  /// Found at the first use; null when the phone has no font at all. Throws std::bad_alloc.
  Face* face() { return face_ ? face_.get() : SearchFace(); }

  int holders = 0;  ///< how often its handle was given to the program

 private:
  Face* SearchFace();

  FontRequest request_;
  Ref<Face> face_;
};

/// The program deletes one of its holds on a font; with the last one the handle is closed.
void GiveBackFont(Font& font) noexcept;

/// The font of a new device context.
Font& StockFont();

}  // namespace phone
