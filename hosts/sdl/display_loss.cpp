#include "hosts/sdl/display_loss.h"

#include <SDL_syswm.h>

#include <atomic>

namespace sdl {
namespace {

std::atomic<bool> g_lost = false;

// Xlib's own answer to a lost connection is to end the program, in the middle of whatever it does.
int NoteLoss(Display*) {
  g_lost = true;
  return 0;
}

void LiveOn(Display*, void*) {}

using SetHandler = decltype(&XSetIOErrorHandler);
using SetExitHandler = decltype(&XSetIOErrorExitHandler);

}  // namespace

void SurviveDisplayLoss(SDL_Window* window) {
  SDL_SysWMinfo info = {};
  SDL_VERSION(&info.version);
  if (!SDL_GetWindowWMInfo(window, &info) || info.subsystem != SDL_SYSWM_X11) return;
  // SDL has loaded the library by itself; it stays loaded.
  void* const library = SDL_LoadObject("libX11.so.6");
  if (!library) return;
  const auto set_handler = reinterpret_cast<SetHandler>(SDL_LoadFunction(library, "XSetIOErrorHandler"));
  const auto set_exit = reinterpret_cast<SetExitHandler>(SDL_LoadFunction(library, "XSetIOErrorExitHandler"));
  if (!set_handler || !set_exit) return;
  set_handler(NoteLoss);
  set_exit(info.info.x11.display, LiveOn, nullptr);
}

bool DisplayIsLost() {
  return g_lost;
}

}  // namespace sdl
