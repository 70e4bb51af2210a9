#include "hosts/sdl/keyboard.h"

#include <unicode/uchar.h>

#include <string>
#include <vector>

#include "system/text.h"

namespace sdl {
namespace {

/// The code units of so many characters at the beginning of a text.
std::size_t UnitsOf(const std::u16string& text, int characters) {
  std::size_t units = 0;
  for (; characters > 0 && units < text.size(); --characters) {
    const bool is_pair = (text[units] & 0xFC00) == 0xD800 && units + 1 < text.size();
    units += is_pair ? 2 : 1;
  }
  return units;
}

/// What a key types, as far as one can tell from the key alone: no sign that stands above another.
std::string TextOn(const SDL_Keysym& key) {
  constexpr SDL_Keycode end = 0x10000;  // beyond are keys that have no character
  const bool types = key.sym >= SDLK_SPACE && key.sym < end && key.sym != SDLK_DELETE;
  if (!types || (key.mod & (KMOD_CTRL | KMOD_ALT | KMOD_GUI | KMOD_MODE)) != 0) return {};
  const bool shift = (key.mod & KMOD_SHIFT) != 0;
  const UChar32 capital = u_toupper(key.sym);
  if (shift && capital == key.sym) return {};
  const bool capitals = shift != ((key.mod & KMOD_CAPS) != 0);
  const UChar32 character = capitals ? capital : key.sym;
  return phone::ToUtf8Lossy(std::u16string(1, static_cast<char16_t>(character)));
}

/// Keys that came while nothing was typed have no text with them. Those that still wait get theirs, but for repeats of
/// the key that is held. What is typed fast looks like repeats, too.
void GiveTextToWaitingKeys(SDL_Scancode held) {
  std::vector<SDL_Event> waiting;
  for (SDL_Event event; SDL_PeepEvents(&event, 1, SDL_GETEVENT, SDL_FIRSTEVENT, SDL_LASTEVENT) == 1;)
    waiting.push_back(event);
  for (SDL_Event& event : waiting) {
    SDL_PeepEvents(&event, 1, SDL_ADDEVENT, SDL_FIRSTEVENT, SDL_LASTEVENT);
    if (event.type != SDL_KEYDOWN || (event.key.repeat && event.key.keysym.scancode == held)) continue;
    const std::string text = TextOn(event.key.keysym);
    if (text.empty()) continue;
    SDL_Event typed = {};
    typed.type = SDL_TEXTINPUT;
    text.copy(typed.text.text, sizeof typed.text.text - 1);
    SDL_PeepEvents(&typed, 1, SDL_ADDEVENT, SDL_FIRSTEVENT, SDL_LASTEVENT);
  }
}

}  // namespace

void Keyboard::SetTyping(bool typing) {
  if (typing == typing_) return;
  typing_ = typing;
  composition_ = {};
  if (!typing) return SDL_StopTextInput();
  SDL_StartTextInput();
  GiveTextToWaitingKeys(untyped_);
}

void Keyboard::PlaceCaret(const SDL_Rect& caret) {
  if (SDL_RectEquals(&caret, &caret_)) return;
  caret_ = caret;
  SDL_SetTextInputRect(&caret_);
}

void Keyboard::Press(const SDL_KeyboardEvent& event) {
  const SDL_Scancode scancode = event.keysym.scancode;
  if (!event.repeat) untyped_ = typing_ ? SDL_SCANCODE_UNKNOWN : scancode;
  repeats_untyped_ = event.repeat && scancode == untyped_;
  // What is being composed has the keys.
  if (!composition_.text.empty()) return;
  PhoneKey key = KeyOf(event.keysym);
  if (!key.code && typing_) key = FieldKeyOf(event.keysym);
  if (event.repeat && !key.repeats) return;
  if (key.code) {
    held_[event.keysym.scancode] = key.code;
    phone::PressKey(key.code, ModifiersOf(event.keysym.mod));
  } else if (const WCHAR digit = DigitOf(event.keysym); digit && !typing_) {
    phone::TypeCharacter(digit);
  }
}

/// The key that was pressed goes up, whatever it would be by now.
void Keyboard::Release(const SDL_KeyboardEvent& event) {
  if (event.keysym.scancode == untyped_) repeats_untyped_ = false;
  const auto held = held_.find(event.keysym.scancode);
  if (held == held_.end()) return;
  phone::ReleaseKey(held->second);
  held_.erase(held);
}

void Keyboard::Type(const SDL_TextInputEvent& event) {
  composition_ = {};
  // What was typed while a field had the focus is too late once it has not. A digit that has chosen in a menu is held
  // on.
  if (!typing_ || repeats_untyped_) return;
  for (const char16_t unit : phone::ToUtf16(event.text).value_or(std::u16string())) phone::TypeCharacter(unit);
}

void Keyboard::Compose(const SDL_TextEditingEvent& event) {
  if (!typing_) return;
  composition_ = {phone::ToUtf16(event.text).value_or(std::u16string()), 0};
  composition_.caret = UnitsOf(composition_.text, event.start);
}

}  // namespace sdl
