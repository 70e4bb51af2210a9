#include "hosts/sdl/window.h"

#include <algorithm>
#include <cmath>
#include <tuple>
#include <vector>

#include "hosts/sdl/icon.h"

namespace sdl {
namespace {

constexpr char kTitle[] = "Quillmark";
constexpr std::uint32_t kUsualFrameTime = 16;
constexpr SDL_Rect kUnknownDisplay = {0, 0, 640, 480};
constexpr double kRounding = 0.02;  ///< of the density, where a desktop scales by a fraction and whole pixels come out

std::vector<SDL_Rect> AllUsableBounds() {
  std::vector<SDL_Rect> all;
  for (int display = 0; display < SDL_GetNumVideoDisplays(); ++display) {
    SDL_Rect usable = {};
    if (SDL_GetDisplayUsableBounds(display, &usable) == 0) all.push_back(usable);
  }
  return all;
}

int FloorDivide(int dividend, int divisor) {
  return dividend / divisor - (dividend % divisor < 0 ? 1 : 0);
}

/// The window's units that hold that many pixels.
int Units(int pixels, double density) {
  return static_cast<int>(std::ceil(pixels / density));
}

}  // namespace

bool Window::Show(const phone::ScreenImage& screen) {
  const Size size = {screen.width, screen.height};
  const bool resized = window_ && size != screen_;
  screen_ = size;
  if (!window_ && !Open()) return false;
  if (resized) ApplyScale();
  canvas_.SetScreen(screen);
  return HasFlag(SDL_WINDOW_MINIMIZED | SDL_WINDOW_HIDDEN) || canvas_.Draw();
}

void Window::Refresh() {
  // Where nothing can be seen, waiting for the display could take as long as the person is away.
  if (!window_ || HasFlag(SDL_WINDOW_MINIMIZED | SDL_WINDOW_HIDDEN)) return;
  canvas_.Draw();
}

void Window::SetLayers(std::vector<Layer> layers) {
  canvas_.SetLayers(std::move(layers));
  Refresh();
}

View Window::CurrentView() const {
  View view;
  if (!window_) return view;
  view.window = canvas_.OutputSize();
  view.screen = PlacePicture(screen_, view.window);
  view.scale = view.screen.w / screen_.width;
  return view;
}

SDL_Point Window::ToPixels(int x, int y) const {
  return {static_cast<int>(std::floor(x * density_)), static_cast<int>(std::floor(y * density_))};
}

SDL_Point Window::ToScreen(int x, int y) const {
  const View view = CurrentView();
  const SDL_Point at = ToPixels(x, y);
  return {FloorDivide(at.x - view.screen.x, view.scale), FloorDivide(at.y - view.screen.y, view.scale)};
}

SDL_Rect Window::PixelsOf(const RECT& part) const {
  const View view = CurrentView();
  return {view.screen.x + part.left * view.scale, view.screen.y + part.top * view.scale,
          (part.right - part.left) * view.scale, (part.bottom - part.top) * view.scale};
}

SDL_Rect Window::UnitsOf(const SDL_Rect& pixels) const {
  return {Units(pixels.x, density_), Units(pixels.y, density_), Units(pixels.w, density_), Units(pixels.h, density_)};
}

std::uint32_t Window::FrameTime() const {
  SDL_DisplayMode mode = {};
  const int display = window_ ? SDL_GetWindowDisplayIndex(window_.get()) : 0;
  if (SDL_GetCurrentDisplayMode(display, &mode) != 0 || mode.refresh_rate <= 0) return kUsualFrameTime;
  return std::max(1u, 1000u / static_cast<std::uint32_t>(mode.refresh_rate));
}

int Window::SetScale(int scale) {
  state_.scale = scale;
  if (!window_) return scale;
  const bool was_maximised = HasFlag(SDL_WINDOW_MAXIMIZED);
  if (was_maximised) SDL_RestoreWindow(window_.get());
  const int reached = ApplyScale();
  if (was_maximised && state_.position) MoveTo(*state_.position);
  if (scale) state_.scale = reached;
  return reached;
}

void Window::ToggleFullScreen() {
  if (window_) SDL_SetWindowFullscreen(window_.get(), IsFullScreen() ? 0 : SDL_WINDOW_FULLSCREEN_DESKTOP);
}

bool Window::IsFullScreen() const {
  return HasFlag(SDL_WINDOW_FULLSCREEN);
}

void Window::HandleEvent(const SDL_WindowEvent& event) {
  switch (event.event) {
    case SDL_WINDOWEVENT_EXPOSED:
    case SDL_WINDOWEVENT_SHOWN: Refresh(); break;
    case SDL_WINDOWEVENT_SIZE_CHANGED: HandleSize(); break;
    case SDL_WINDOWEVENT_MOVED:
      // The event may be older than the place that the window was given last.
      if (IsPlain()) state_.position = Place();
      break;
    default: break;
  }
}

void Window::HandleReset() {
  canvas_.Lost();
  Refresh();
}

void Window::Abandon() {
  canvas_.Abandon();
  std::ignore = wait_cursor_.release();
  std::ignore = window_.release();
}

void Window::ShowCursor(phone::Cursor cursor) {
  if (!window_) return;
  if (cursor == phone::Cursor::none) {
    SDL_SetCursor(SDL_GetDefaultCursor());
    return;
  }
  if (!wait_cursor_) wait_cursor_.reset(SDL_CreateSystemCursor(SDL_SYSTEM_CURSOR_WAIT));
  if (wait_cursor_) SDL_SetCursor(wait_cursor_.get());
}

void Window::Minimise() {
  if (window_) SDL_MinimizeWindow(window_.get());
}

void Window::Hide() {
  if (window_) SDL_HideWindow(window_.get());
}

void Window::Raise() {
  if (!window_) return;
  if (HasFlag(SDL_WINDOW_MINIMIZED)) SDL_RestoreWindow(window_.get());
  SDL_RaiseWindow(window_.get());
}

void Window::ShowNotice(const std::string& notice) {
  const std::string title = notice.empty() ? kTitle : std::string(kTitle) + " - " + notice;
  if (window_) SDL_SetWindowTitle(window_.get(), title.c_str());
}

bool Window::Open() {
  // How many pixels the window has is known only when it is there; it is sized before it is shown.
  constexpr Uint32 flags = SDL_WINDOW_RESIZABLE | SDL_WINDOW_ALLOW_HIGHDPI | SDL_WINDOW_HIDDEN;
  const SDL_Point at = state_.position.value_or(SDL_Point{SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED});
  window_.reset(SDL_CreateWindow(kTitle, at.x, at.y, screen_.width, screen_.height, flags));
  if (!window_ || !canvas_.Open(window_.get())) return false;
  SetIcon(window_.get());
  ApplyScale();
  const SDL_Point place = state_.position.value_or(Centre());
  MoveTo(place);
  SDL_ShowWindow(window_.get());
  // The desktop has put a frame around it only now, and SDL hears of that as of an event.
  SDL_PumpEvents();
  ApplyScale();
  MoveTo(place);
  return true;
}

bool Window::HasFlag(Uint32 flag) const {
  return window_ && (SDL_GetWindowFlags(window_.get()) & flag) != 0;
}

/// Neither filling the display nor out of sight.
bool Window::IsPlain() const {
  return window_ && !HasFlag(SDL_WINDOW_FULLSCREEN | SDL_WINDOW_MAXIMIZED | SDL_WINDOW_MINIMIZED | SDL_WINDOW_HIDDEN);
}

double Window::Density() const {
  int units = 0;
  SDL_GetWindowSize(window_.get(), &units, nullptr);
  const int pixels = canvas_.OutputSize().width;
  return units > 0 && pixels > 0 ? static_cast<double>(pixels) / units : 1;
}

SDL_Rect Window::UsableBounds() const {
  SDL_Rect usable = kUnknownDisplay;
  const int display = SDL_GetWindowDisplayIndex(window_.get());
  SDL_GetDisplayUsableBounds(std::max(display, 0), &usable);
  return usable;
}

/// Where the window is in the middle of its display.
SDL_Point Window::Centre() const {
  const SDL_Rect usable = UsableBounds();
  SDL_Point size = {};
  SDL_GetWindowSize(window_.get(), &size.x, &size.y);
  return {usable.x + (usable.w - size.x) / 2, usable.y + (usable.h - size.y) / 2};
}

SDL_Point Window::Place() const {
  SDL_Point place = {};
  SDL_GetWindowPosition(window_.get(), &place.x, &place.y);
  return place;
}

Window::Frame Window::FrameSize() const {
  Frame frame;
  SDL_GetWindowBordersSize(window_.get(), &frame.top, &frame.left, &frame.bottom, &frame.right);
  return frame;
}

/// Moves the window's content to a place, or as near to it as no part of the window or its frame is off the displays.
void Window::MoveTo(SDL_Point place) {
  const Frame frame = FrameSize();
  SDL_Point size = {};
  SDL_GetWindowSize(window_.get(), &size.x, &size.y);
  const SDL_Rect whole = {place.x - frame.left, place.y - frame.top, size.x + frame.left + frame.right,
                          size.y + frame.top + frame.bottom};
  const SDL_Point corner = PlaceWindow(whole, AllUsableBounds());
  SDL_SetWindowPosition(window_.get(), corner.x + frame.left, corner.y + frame.top);
}

int Window::ApplyScale() {
  density_ = Density();
  const SDL_Rect usable = UsableBounds();
  const Frame frame = FrameSize();
  const Size room = {static_cast<int>((usable.w - frame.left - frame.right) * density_),
                     static_cast<int>((usable.h - frame.top - frame.bottom) * density_)};
  scale_ = state_.scale ? std::min(state_.scale, LargestScale(screen_, room)) : ComfortableScale(screen_, room);
  SDL_SetWindowMinimumSize(window_.get(), Units(screen_.width, density_), Units(screen_.height, density_));
  if (IsFullScreen()) return scale_;
  const SDL_Point size = {Units(screen_.width * scale_, density_), Units(screen_.height * scale_, density_)};
  SDL_SetWindowSize(window_.get(), size.x, size.y);
  MoveTo(Place());
  return scale_;
}

void Window::HandleSize() {
  canvas_.Resized();
  if (std::abs(Density() - density_) > kRounding) {
    ApplyScale();
  } else if (IsPlain() && CurrentView().scale != scale_) {
    // Somebody has drawn the window to another size.
    scale_ = CurrentView().scale;
    state_.scale = std::min(scale_, kLargestScale);
  }
  Refresh();
}

}  // namespace sdl
