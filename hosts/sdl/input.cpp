#include "hosts/sdl/input.h"

#include <algorithm>
#include <iterator>

#include "aygshell.h"
#include "system/text.h"

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

}  // namespace

PhoneKey KeyOf(SDL_Keycode key) {
  const Row* const row = std::find_if(std::begin(kKeys), std::end(kKeys), [&](const Row& it) { return it.key == key; });
  return row == std::end(kKeys) ? PhoneKey{0, false} : row->phone;
}

void TypeText(const char* text) {
  for (const char16_t unit : phone::ToUtf16(text).value_or(std::u16string())) phone::TypeCharacter(unit);
}

}  // namespace sdl
