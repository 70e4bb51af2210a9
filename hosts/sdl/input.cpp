#include "hosts/sdl/input.h"

#include <algorithm>
#include <iterator>

#include "aygshell.h"

namespace sdl {
namespace {

struct Row {
  SDL_Keycode key;
  PhoneKey phone;
};

// Back is both: it leaves a screen, and in a field it deletes the character before the caret.
constexpr Row kKeys[] = {
    {SDLK_UP, {VK_UP, true}},           {SDLK_DOWN, {VK_DOWN, true}},      {SDLK_LEFT, {VK_LEFT, true}},
    {SDLK_RIGHT, {VK_RIGHT, true}},     {SDLK_RETURN, {VK_RETURN, false}}, {SDLK_KP_ENTER, {VK_RETURN, false}},
    {SDLK_F1, {VK_TSOFT1, false}},      {SDLK_F2, {VK_TSOFT2, false}},     {SDLK_ESCAPE, {VK_TBACK, false}},
    {SDLK_BACKSPACE, {VK_TBACK, true}}, {SDLK_AC_BACK, {VK_TBACK, false}}, {SDLK_DELETE, {VK_DELETE, true}},
    {SDLK_HOME, {VK_HOME, false}},      {SDLK_END, {VK_END, false}},
};

// The keypad without its lock.
constexpr Row kKeypad[] = {
    {SDLK_KP_8, {VK_UP, true}},      {SDLK_KP_2, {VK_DOWN, true}},        {SDLK_KP_4, {VK_LEFT, true}},
    {SDLK_KP_6, {VK_RIGHT, true}},   {SDLK_KP_7, {VK_HOME, false}},       {SDLK_KP_1, {VK_END, false}},
    {SDLK_KP_0, {VK_INSERT, false}}, {SDLK_KP_PERIOD, {VK_DELETE, true}},
};

// With Ctrl.
constexpr Row kLetters[] = {
    {SDLK_a, {'A', false}},
    {SDLK_c, {'C', false}},
    {SDLK_v, {'V', true}},
    {SDLK_x, {'X', false}},
};

template <std::size_t Count>
PhoneKey Find(const Row (&rows)[Count], SDL_Keycode key) {
  const Row* const row = std::find_if(std::begin(rows), std::end(rows), [&](const Row& it) { return it.key == key; });
  return row == std::end(rows) ? PhoneKey{} : row->phone;
}

/// The letter of a key; where the layout has other letters, the one that stands there on a Latin keyboard.
SDL_Keycode LatinLetter(const SDL_Keysym& key) {
  constexpr SDL_Keycode ascii_end = 0x80;
  if (key.sym < ascii_end || key.scancode < SDL_SCANCODE_A || key.scancode > SDL_SCANCODE_Z) return key.sym;
  return SDLK_a + (key.scancode - SDL_SCANCODE_A);
}

/// Keys 1 to 9 come before 0 in both rows.
WCHAR DigitFrom(SDL_Scancode code, SDL_Scancode one, SDL_Scancode zero) {
  if (code == zero) return u'0';
  return code >= one && code < zero ? static_cast<WCHAR>(u'1' + (code - one)) : WCHAR{0};
}

}  // namespace

PhoneKey KeyOf(const SDL_Keysym& key) {
  if ((key.mod & KMOD_NUM) == 0)
    if (const PhoneKey found = Find(kKeypad, key.sym); found.code) return found;
  return Find(kKeys, key.sym);
}

PhoneKey FieldKeyOf(const SDL_Keysym& key) {
  if (key.sym == SDLK_INSERT || (key.sym == SDLK_KP_0 && (key.mod & KMOD_NUM) == 0)) return {VK_INSERT, true};
  // AltGr, which comes with Ctrl on some layouts, types.
  const bool control = (key.mod & KMOD_CTRL) != 0 && (key.mod & (KMOD_ALT | KMOD_MODE)) == 0;
  return control ? Find(kLetters, LatinLetter(key)) : PhoneKey{};
}

WCHAR DigitOf(const SDL_Keysym& key) {
  if ((key.mod & (KMOD_CTRL | KMOD_ALT | KMOD_GUI)) != 0) return 0;
  if (key.sym >= SDLK_0 && key.sym <= SDLK_9) return static_cast<WCHAR>(key.sym);
  if (const WCHAR digit = DigitFrom(key.scancode, SDL_SCANCODE_1, SDL_SCANCODE_0)) return digit;
  if ((key.mod & KMOD_NUM) == 0) return 0;
  return DigitFrom(key.scancode, SDL_SCANCODE_KP_1, SDL_SCANCODE_KP_0);
}

phone::KeyModifiers ModifiersOf(std::uint16_t modifiers) {
  return {.shift = (modifiers & KMOD_SHIFT) != 0, .control = (modifiers & KMOD_CTRL) != 0};
}

}  // namespace sdl
