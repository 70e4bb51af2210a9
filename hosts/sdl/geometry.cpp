#include "hosts/sdl/geometry.h"

#include <algorithm>
#include <cstdint>

namespace sdl {
namespace {

constexpr Size kComfort = {32, 64};  ///< what is left free beside the screen: the window's frame and a little air

constexpr std::string_view kPortrait = "portrait";
constexpr std::string_view kLandscape = "landscape";

std::int64_t SharedArea(const SDL_Rect& a, const SDL_Rect& b) {
  const auto shared = [](std::int64_t a_from, std::int64_t a_length, std::int64_t b_from, std::int64_t b_length) {
    return std::max<std::int64_t>(std::min(a_from + a_length, b_from + b_length) - std::max(a_from, b_from), 0);
  };
  return shared(a.x, a.w, b.x, b.w) * shared(a.y, a.h, b.y, b.h);
}

int Into(int from, int length, int room_from, int room_length) {
  const int last = room_from + std::max(room_length - length, 0);
  return std::clamp(from, room_from, last);
}

}  // namespace

std::optional<Orientation> OrientationByName(std::string_view name) {
  if (name == kPortrait) return Orientation::portrait;
  if (name == kLandscape) return Orientation::landscape;
  return std::nullopt;
}

const char* NameOf(Orientation orientation) {
  return (orientation == Orientation::portrait ? kPortrait : kLandscape).data();
}

int LargestScale(Size screen, Size room) {
  return std::max(std::min(room.width / screen.width, room.height / screen.height), 1);
}

int ComfortableScale(Size screen, Size room) {
  return std::min(LargestScale(screen, {room.width - kComfort.width, room.height - kComfort.height}), kLargestScale);
}

SDL_Rect PlacePicture(Size screen, Size window) {
  const int scale = LargestScale(screen, window);
  const int width = screen.width * scale;
  const int height = screen.height * scale;
  return {(window.width - width) / 2, (window.height - height) / 2, width, height};
}

SDL_Point PlaceWindow(const SDL_Rect& window, std::span<const SDL_Rect> displays) {
  if (displays.empty()) return {window.x, window.y};
  const auto seen = [&](const SDL_Rect& display) { return SharedArea(window, display); };
  const SDL_Rect& best = *std::ranges::max_element(displays, {}, seen);
  if (seen(best) > 0) return {Into(window.x, window.w, best.x, best.w), Into(window.y, window.h, best.y, best.h)};
  const SDL_Rect& first = displays.front();
  return {first.x + std::max((first.w - window.w) / 2, 0), first.y + std::max((first.h - window.h) / 2, 0)};
}

}  // namespace sdl
