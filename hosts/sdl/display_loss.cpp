#include "hosts/sdl/display_loss.h"

#include <SDL_syswm.h>

#include <atomic>
#include <csetjmp>
#include <cstdlib>
#include <iostream>
#include <thread>

namespace sdl {
namespace {

std::atomic<bool> g_lost = false;
std::thread::id g_owner;

// SDL's wait goes on without end when its connection is lost; this leads out of it, over frames of C only.
std::jmp_buf g_way_out;
bool g_waiting = false;

int NoteLoss(Display*) {
  g_lost = true;
  if (std::this_thread::get_id() != g_owner) {
    // It wanted to wake the owner up. There is no way back from here, and nothing to come back for.
    std::cerr << "quillmark: " << kDisplayLost << std::endl;
    std::_Exit(EXIT_FAILURE);
  }
  if (g_waiting) std::longjmp(g_way_out, 1);
  return 0;
}

/// What Xlib calls instead of exit.
void LiveOn(Display*, void*) {}

// A compositor that goes away makes SDL ask the program to quit; only the connection tells why.
wl_display* g_wayland = nullptr;
int (*g_wayland_error)(wl_display*) = nullptr;

void WatchWayland(wl_display* display) {
  void* const library = SDL_LoadObject("libwayland-client.so.0");
  if (!library) return;
  g_wayland_error = reinterpret_cast<decltype(g_wayland_error)>(SDL_LoadFunction(library, "wl_display_get_error"));
  g_wayland = display;
}

using SetHandler = decltype(&XSetIOErrorHandler);
using SetExitHandler = decltype(&XSetIOErrorExitHandler);

void WatchX11(Display* display) {
  // SDL has loaded the library by itself; it stays loaded.
  void* const library = SDL_LoadObject("libX11.so.6");
  if (!library) return;
  const auto set_handler = reinterpret_cast<SetHandler>(SDL_LoadFunction(library, "XSetIOErrorHandler"));
  const auto set_exit = reinterpret_cast<SetExitHandler>(SDL_LoadFunction(library, "XSetIOErrorExitHandler"));
  if (!set_handler || !set_exit) return;
  g_owner = std::this_thread::get_id();
  set_handler(NoteLoss);
  set_exit(display, LiveOn, nullptr);
}

}  // namespace

void SurviveDisplayLoss(SDL_Window* window) {
  SDL_SysWMinfo info = {};
  SDL_VERSION(&info.version);
  if (!SDL_GetWindowWMInfo(window, &info)) return;
  if (info.subsystem == SDL_SYSWM_X11) WatchX11(info.info.x11.display);
  if (info.subsystem == SDL_SYSWM_WAYLAND) WatchWayland(info.info.wl.display);
}

bool DisplayIsLost() {
  return g_lost || (g_wayland_error && g_wayland_error(g_wayland) != 0);
}

bool WaitForEvent(SDL_Event& event, int milliseconds) {
  if (g_lost || setjmp(g_way_out) != 0) {
    g_waiting = false;
    return false;
  }
  g_waiting = true;
  const bool got = SDL_WaitEventTimeout(&event, milliseconds) != 0;
  g_waiting = false;
  return got;
}

}  // namespace sdl
