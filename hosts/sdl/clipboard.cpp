#include "hosts/sdl/clipboard.h"

#include <SDL.h>

#include <cstring>
#include <memory>

#include "system/text.h"

namespace sdl {
namespace {

constexpr std::size_t kMostBytes = 64 * 1024;

struct Free {
  void operator()(char* text) const { SDL_free(text); }
};

bool ContinuesCharacter(char unit) {
  return (static_cast<unsigned char>(unit) & 0xC0) == 0x80;
}

}  // namespace

std::u16string ClipboardText() {
  const std::unique_ptr<char, Free> text(SDL_HasClipboardText() ? SDL_GetClipboardText() : nullptr);
  if (!text) return {};
  std::size_t length = strnlen(text.get(), kMostBytes + 1);
  if (length > kMostBytes)
    for (length = kMostBytes; length > 0 && ContinuesCharacter(text.get()[length]);) --length;
  return phone::ToUtf16({text.get(), length}).value_or(std::u16string());
}

bool SetClipboardText(std::u16string_view text) {
  return SDL_SetClipboardText(phone::ToUtf8Lossy(text).c_str()) == 0;
}

}  // namespace sdl
