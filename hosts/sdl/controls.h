/// \file
/// What a person does to the window rather than to the phone: its scale, full screen, the key map, pictures, files
/// dropped on it, and what the host has to say.
#pragma once

#include <SDL.h>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "hosts/sdl/list_refresh.h"
#include "hosts/sdl/overlays.h"
#include "hosts/sdl/window.h"
#include "hosts/sdl/window_state.h"

namespace sdl {

class Controls {
 public:
  Controls(Window& window, StateFile& state) : window_(window), state_(state), overlays_(window) {}

  /// True when the event was for the window and not for the phone.
  bool Take(const SDL_Event& event);
  /// Says something to the person.
  void Notify(const std::string& text) { overlays_.Notify(text); }

  /// As of Overlays.
  void ShowComposition(const Composition& composition, const SDL_Rect& caret) {
    overlays_.ShowComposition(composition, caret);
  }

  /// The window has been opened.
  void Opened();
  /// The program ends: remembers the window.
  void Remember();

  /// Does what the person has asked the host to do with the phone. True when the phone has been given something to do.
  bool GoOn() { return refresh_.GoOn(); }
  /// True while the phone's screen is on its way to where the person left it.
  bool HidesScreen() const { return refresh_.Underway(); }

  /// Takes away what has been shown long enough.
  void Expire() { overlays_.Expire(); }
  /// Milliseconds until then; the longest time while nothing is shown that goes by itself.
  std::uint32_t TimeLeft() const { return overlays_.TimeLeft(); }

 private:
  bool TakeKey(const SDL_KeyboardEvent& event);
  bool TakeShortcut(const SDL_Keysym& key);
  bool TakeScaleKey(const SDL_Keysym& key);
  void HandleWindow(const SDL_WindowEvent& event);
  void ChangeScale(int scale);
  void TellOfRoom(int wanted_scale);
  void TakePicture();
  void Import(const std::filesystem::path& file);
  void ShowImported(const std::string& name, bool readable);

  Window& window_;
  StateFile& state_;
  Overlays overlays_;
  ListRefresh refresh_;
  SDL_Keycode taken_key_ = SDLK_UNKNOWN;  ///< its release, and what it would type, is not for the phone either
};

}  // namespace sdl
