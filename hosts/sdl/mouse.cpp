#include "hosts/sdl/mouse.h"

#include <algorithm>
#include <cmath>

#include "hosts/sdl/input.h"

namespace sdl {
namespace {

constexpr float kMostNotches = 8;  ///< of one event, so that a swing does not outlast the hand

void Tap(UINT key) {
  phone::PressKey(key);
  phone::ReleaseKey(key);
}

}  // namespace

void Mouse::Press(SDL_Point at) {
  dragging_ = phone::Click(at.x, at.y, {.shift = (SDL_GetModState() & KMOD_SHIFT) != 0});
  last_ = at;
}

void Mouse::Move(SDL_Point at) {
  if (!dragging_ || (at.x == last_.x && at.y == last_.y)) return;
  last_ = at;
  phone::DragTo(at.x, at.y);
}

void Mouse::Turn(const SDL_MouseWheelEvent& event) {
  const float notches = event.direction == SDL_MOUSEWHEEL_FLIPPED ? -event.preciseY : event.preciseY;
  // Whoever turns back means it at once.
  if (turned_ * notches < 0) turned_ = 0;
  turned_ = std::clamp(turned_ + notches, -kMostNotches, kMostNotches);
  for (; turned_ >= 1; --turned_) Tap(VK_UP);
  for (; turned_ <= -1; ++turned_) Tap(VK_DOWN);
}

}  // namespace sdl
