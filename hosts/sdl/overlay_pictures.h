/// \file
/// Pictures of what the host itself says, in the window's own pixels.
#pragma once

#include <SDL.h>

#include <string>
#include <vector>

#include "graphics/surface.h"
#include "hosts/sdl/geometry.h"

namespace sdl {

/// A bar of that width with texts one below the other, broken into lines. `scale` as of View.
phone::Surface DrawNotices(const std::vector<std::u16string>& texts, int width, int scale);

/// The key map, as large as `scale` wants it and as small as the room needs it.
phone::Surface DrawKeyMap(Size room, int scale);

/// Text that an input method still works on.
struct Composition {
  std::u16string text;    ///< empty while there is none
  std::size_t caret = 0;  ///< code units before the caret

  bool operator==(const Composition&) const = default;
};
/// It as a strip of that height, as wide as it needs to be and the room allows.
phone::Surface DrawComposition(const Composition& composition, int height, int room, int scale);

/// A question, and its two buttons inside of the picture.
struct QuestionPicture {
  phone::Surface picture;
  SDL_Rect yes;  ///< px, in the picture
  SDL_Rect no;   ///< px, in the picture
};
QuestionPicture DrawQuestion(const std::u16string& text, const std::u16string& yes, const std::u16string& no, int width,
                             int scale);

}  // namespace sdl
