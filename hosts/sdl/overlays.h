/// \file
/// What the host itself says, over the phone's screen: notices, the key map, a question. None of it is part of the
/// phone's screen.
#pragma once

#include <SDL.h>

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "hosts/sdl/overlay_pictures.h"
#include "hosts/sdl/window.h"

namespace sdl {

class Overlays {
 public:
  explicit Overlays(Window& window) : window_(window) {}

  /// Says something for some seconds, and on standard error.
  void Notify(const std::string& text);
  /// The window has been opened: shows what was said before.
  void Opened();

  void ShowKeyMap();
  /// The same for who has not asked for it: it goes by itself.
  void IntroduceKeys();

  /// Asks a question; `answer` is called with what the person says. Questions wait for each other.
  void Ask(const std::string& text, const std::string& yes, const std::string& no, std::function<void(bool)> answer);

  /// True while a question waits for its answer.
  bool Asks() const { return !questions_.empty(); }

  /// Shows text that an input method still works on, over the caret of the field that it will be typed into (in the
  /// window's pixels); none when it is empty.
  void ShowComposition(const Composition& composition, const SDL_Rect& caret);

  /// Draws everything for the window as it is now.
  void Draw();
  /// Takes away what has been shown long enough.
  void Expire();
  /// Milliseconds until something has been shown long enough; the largest number while there is no such thing.
  std::uint32_t TimeLeft() const;

  /// True when the key was for an overlay.
  bool TakeKey(SDL_Keycode key);
  /// The same for a click, in the window's pixels.
  bool TakeClick(SDL_Point at);

 private:
  struct Notice {
    std::string text;
    Uint64 end;  ///< tick
  };
  struct Question {
    std::string text;
    std::string yes;
    std::string no;
    std::function<void(bool)> answer;
  };

  void CloseKeyMap();
  void Answer(bool yes);
  void DrawQuestionInto(std::vector<Layer>& layers, const View& view);
  std::string LastNotice() const { return notices_.empty() ? std::string() : notices_.back().text; }

  Window& window_;
  Composition composition_;
  SDL_Rect caret_ = {0, 0, 0, 0};  ///< px, in the window
  std::deque<Notice> notices_;
  bool key_map_ = false;
  std::optional<Uint64> key_map_end_;  ///< tick; nothing when the person has asked for it
  std::deque<Question> questions_;
  SDL_Rect yes_ = {0, 0, 0, 0};  ///< px, in the window
  SDL_Rect no_ = {0, 0, 0, 0};
};

}  // namespace sdl
