/// \file
/// Where the window lies on the displays, and the phone's screen in the window.
#pragma once

#include <SDL.h>

#include <optional>
#include <span>
#include <string_view>

namespace sdl {

enum class Orientation { portrait, landscape };

/// "portrait" or "landscape"; nothing for another name.
std::optional<Orientation> OrientationByName(std::string_view name);
const char* NameOf(Orientation orientation);

struct Size {
  int width = 0;   ///< px
  int height = 0;  ///< px

  bool operator==(const Size&) const = default;
};

/// Pixels of the display for one of the phone's.
inline constexpr int kLargestScale = 8;

/// The largest whole scale at which the screen fits into a room; 1 when none does.
int LargestScale(Size screen, Size room);
/// The scale that leaves some of the room to the window's frame and to what else is there.
int ComfortableScale(Size screen, Size room);

/// The screen in the middle of a window's pixels, at the largest whole scale.
SDL_Rect PlacePicture(Size screen, Size window);

/// Moves a window, by as little as possible, into the display that shows most of it; one that no display shows goes to
/// the middle of the first. A window larger than its display begins with it. `displays` are their usable parts.
SDL_Point PlaceWindow(const SDL_Rect& window, std::span<const SDL_Rect> displays);

}  // namespace sdl
