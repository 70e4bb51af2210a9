#include "hosts/sdl/controls.h"

#include <algorithm>
#include <initializer_list>
#include <memory>
#include <utility>

#include "hosts/sdl/layout_import.h"
#include "hosts/sdl/pictures.h"
#include "phone.h"

namespace sdl {
namespace {

constexpr int kWhatFits = 0;
constexpr int kLargestScaleKey = 6;

std::string Quoted(const std::string& name) {
  return "\u201c" + name + "\u201d";
}

bool IsOneOf(SDL_Keycode key, std::initializer_list<SDL_Keycode> keys) {
  return std::ranges::find(keys, key) != keys.end();
}

/// The number on a key of either row of digits, whatever layout the keyboard has; -1 on another key.
int DigitOf(const SDL_Keysym& key) {
  if (key.sym >= SDLK_0 && key.sym <= SDLK_9) return key.sym - SDLK_0;
  if (key.scancode == SDL_SCANCODE_0 || key.scancode == SDL_SCANCODE_KP_0) return 0;
  if (key.scancode >= SDL_SCANCODE_1 && key.scancode <= SDL_SCANCODE_9) return key.scancode - SDL_SCANCODE_1 + 1;
  if (key.scancode >= SDL_SCANCODE_KP_1 && key.scancode <= SDL_SCANCODE_KP_9)
    return key.scancode - SDL_SCANCODE_KP_1 + 1;
  return -1;
}

/// What SDL has allocated.
struct Free {
  void operator()(char* text) const { SDL_free(text); }
};

}  // namespace

bool Controls::Take(const SDL_Event& event) {
  switch (event.type) {
    case SDL_KEYDOWN: return TakeKey(event.key);
    case SDL_KEYUP:
      if (event.key.keysym.sym != taken_key_) return false;
      taken_key_ = SDLK_UNKNOWN;
      return true;
    case SDL_TEXTINPUT:
    case SDL_TEXTEDITING: return taken_key_ != SDLK_UNKNOWN;
    case SDL_MOUSEBUTTONDOWN: return overlays_.TakeClick(window_.ToPixels(event.button.x, event.button.y));
    case SDL_MOUSEBUTTONUP:
    case SDL_MOUSEWHEEL: return overlays_.Asks();
    case SDL_WINDOWEVENT: HandleWindow(event.window); return false;
    case SDL_RENDER_TARGETS_RESET:
    case SDL_RENDER_DEVICE_RESET: window_.HandleReset(); return true;
    case SDL_DROPFILE: Import(std::unique_ptr<char, Free>(event.drop.file).get()); return true;
    case SDL_DROPTEXT:
      SDL_free(event.drop.file);
      overlays_.Notify("A text cannot be dropped here, only layout files (*.home.xml).");
      return true;
    default: return false;
  }
}

void Controls::Opened() {
  overlays_.Opened();
  if (state_.First()) overlays_.IntroduceKeys();
  TellOfRoom(window_.State().scale);
  Remember();
}

void Controls::Remember() {
  const std::string problem = state_.Save(window_.State());
  if (!problem.empty()) overlays_.Notify(problem);
}

bool Controls::TakeKey(const SDL_KeyboardEvent& event) {
  // A key goes on being taken while it is held.
  const bool held = event.repeat != 0 && event.keysym.sym == taken_key_;
  taken_key_ = SDLK_UNKNOWN;
  if (!held && !overlays_.TakeKey(event.keysym.sym) && !(event.repeat == 0 && TakeShortcut(event.keysym))) return false;
  taken_key_ = event.keysym.sym;
  return true;
}

bool Controls::TakeShortcut(const SDL_Keysym& key) {
  switch (key.sym) {
    case SDLK_F10: overlays_.ShowKeyMap(); return true;
    case SDLK_F11: window_.ToggleFullScreen(); return true;
    case SDLK_F12: TakePicture(); return true;
    default: break;
  }
  const bool control = (key.mod & KMOD_CTRL) != 0 && (key.mod & (KMOD_ALT | KMOD_GUI)) == 0;
  return control && TakeScaleKey(key);
}

bool Controls::TakeScaleKey(const SDL_Keysym& key) {
  if (IsOneOf(key.sym, {SDLK_PLUS, SDLK_EQUALS, SDLK_KP_PLUS})) {
    ChangeScale(std::min(window_.Scale() + 1, kLargestScale));
  } else if (IsOneOf(key.sym, {SDLK_MINUS, SDLK_KP_MINUS})) {
    ChangeScale(std::max(window_.Scale() - 1, 1));
  } else if (const int digit = DigitOf(key); digit >= 0 && digit <= kLargestScaleKey) {
    ChangeScale(digit);
  } else {
    return false;
  }
  return true;
}

void Controls::HandleWindow(const SDL_WindowEvent& event) {
  window_.HandleEvent(event);
  if (event.event == SDL_WINDOWEVENT_SIZE_CHANGED) overlays_.Draw();
}

void Controls::ChangeScale(int scale) {
  if (window_.IsFullScreen()) return overlays_.Notify("Full screen has the largest scale; F11 leaves it.");
  window_.SetScale(scale);
  TellOfRoom(scale);
  Remember();
}

void Controls::TellOfRoom(int wanted_scale) {
  const int reached = window_.Scale();
  if (wanted_scale != kWhatFits && reached < wanted_scale)
    overlays_.Notify("This display has room for scale " + std::to_string(reached) + " at most.");
}

void Controls::TakePicture() {
  const PictureResult result = WritePicture(phone::Screen(), PicturesFolder());
  overlays_.Notify(result.error.empty() ? "Picture: " + result.file.string()
                                        : "The picture cannot be written: " + result.error);
}

void Controls::Import(const std::filesystem::path& file) {
  const auto layout = std::make_shared<Layout>();
  const std::string problem = ReadLayout(file, *layout);
  const std::string name = Quoted(layout->name);
  if (!problem.empty()) return overlays_.Notify(name + " is not copied: " + problem + ".");
  const auto store = [this, layout, name](bool wanted) {
    if (!wanted) return overlays_.Notify(name + " stays as it was.");
    const std::string failure = StoreLayout(*layout);
    if (!failure.empty()) return overlays_.Notify(name + " is not copied: " + failure + ".");
    ShowImported(name, layout->readable);
  };
  if (!layout->replaces) return store(true);
  overlays_.Ask("The phone has a layout " + name + " already. Replace it?", "Replace (Enter)", "Keep (Esc)", store);
}

void Controls::ShowImported(const std::string& name, bool readable) {
  const bool shows = refresh_.Begin();
  overlays_.Notify(name + " is copied to the phone" +
                   (!readable ? ", which cannot read it: it is not a layout."
                    : shows   ? "."
                              : "; the list shows it when it is opened the next time."));
}

}  // namespace sdl
