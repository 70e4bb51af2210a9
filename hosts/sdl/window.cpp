#include "hosts/sdl/window.h"

#include <algorithm>

namespace sdl {
namespace {

constexpr char kTitle[] = "Quillmark";
constexpr int kLargestDefaultScale = 3;
constexpr std::uint32_t kUsualFrameTime = 16;

/// The largest whole scale at which the phone's screen fits on the display with some room for the window's frame.
int FittingScale(int width, int height) {
  constexpr int frame = 48;
  SDL_Rect usable = {};
  if (SDL_GetDisplayUsableBounds(0, &usable) != 0) return 1;
  return std::clamp(std::min(usable.w / width, (usable.h - frame) / height), 1, kLargestDefaultScale);
}

}  // namespace

bool Window::Show(const phone::ScreenImage& screen) {
  if (!window_ && !Open(screen.width, screen.height)) return false;
  if (!FitTexture(screen.width, screen.height)) return false;
  const int pitch = screen.stride * static_cast<int>(sizeof *screen.pixels);
  if (SDL_UpdateTexture(texture_.get(), nullptr, screen.pixels, pitch) != 0) return false;
  Refresh();
  return true;
}

void Window::Refresh() {
  if (!texture_) return;
  SDL_RenderClear(renderer_.get());
  SDL_RenderCopy(renderer_.get(), texture_.get(), nullptr, nullptr);
  SDL_RenderPresent(renderer_.get());
}

std::uint32_t Window::FrameTime() const {
  SDL_DisplayMode mode = {};
  const int display = window_ ? SDL_GetWindowDisplayIndex(window_.get()) : 0;
  if (SDL_GetCurrentDisplayMode(display, &mode) != 0 || mode.refresh_rate <= 0) return kUsualFrameTime;
  return std::max(1u, 1000u / static_cast<std::uint32_t>(mode.refresh_rate));
}

void Window::ShowCursor(phone::Cursor cursor) {
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
  SDL_RestoreWindow(window_.get());
  SDL_RaiseWindow(window_.get());
}

void Window::ShowNotice(const std::string& notice) {
  const std::string title = notice.empty() ? kTitle : std::string(kTitle) + " \u2013 " + notice;
  if (window_) SDL_SetWindowTitle(window_.get(), title.c_str());
}

bool Window::Open(int width, int height) {
  const int scale = scale_ ? scale_ : FittingScale(width, height);
  constexpr Uint32 flags = SDL_WINDOW_RESIZABLE | SDL_WINDOW_ALLOW_HIGHDPI;
  window_.reset(
      SDL_CreateWindow(kTitle, SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, width * scale, height * scale, flags));
  if (!window_) return false;
  SDL_SetWindowMinimumSize(window_.get(), width, height);
  renderer_.reset(SDL_CreateRenderer(window_.get(), -1, SDL_RENDERER_PRESENTVSYNC));
  return renderer_ && SDL_SetRenderDrawColor(renderer_.get(), 0, 0, 0, SDL_ALPHA_OPAQUE) == 0;
}

bool Window::FitTexture(int width, int height) {
  int texture_width = 0;
  int texture_height = 0;
  if (texture_) SDL_QueryTexture(texture_.get(), nullptr, nullptr, &texture_width, &texture_height);
  if (texture_width == width && texture_height == height) return true;
  texture_.reset(
      SDL_CreateTexture(renderer_.get(), SDL_PIXELFORMAT_RGB888, SDL_TEXTUREACCESS_STREAMING, width, height));
  // The screen keeps its shape and whole pixels whatever size the window is given.
  return texture_ && SDL_RenderSetLogicalSize(renderer_.get(), width, height) == 0 &&
         SDL_RenderSetIntegerScale(renderer_.get(), SDL_TRUE) == 0;
}

}  // namespace sdl
