#include "hosts/script/keys.h"

#include <algorithm>
#include <iterator>

#include "aygshell.h"
#include "hosts/script/arguments.h"
#include "phone.h"
#include "system/text.h"

namespace script {
namespace {

struct NamedKey {
  std::string_view name;
  UINT code;
  const char16_t* typed = u"";
};

constexpr NamedKey kKeys[] = {
    {"up", VK_UP},         {"down", VK_DOWN},  {"left", VK_LEFT},       {"right", VK_RIGHT},
    {"action", VK_RETURN}, {"back", VK_TBACK}, {"softleft", VK_TSOFT1}, {"softright", VK_TSOFT2},
    {"delete", VK_DELETE}, {"home", VK_HOME},  {"end", VK_END},         {"space", VK_SPACE, u" "},
};

constexpr std::uint32_t kLargestCode = 0xFFFF;

bool IsOneCharacter(const std::u16string& text) {
  return text.size() == 1 || (text.size() == 2 && text[0] >= 0xD800 && text[0] <= 0xDBFF);
}

}  // namespace

std::optional<Key> KeyByName(std::string_view name) {
  const auto* const named =
      std::find_if(std::begin(kKeys), std::end(kKeys), [&](const NamedKey& key) { return key.name == name; });
  if (named != std::end(kKeys)) return Key{named->code, named->typed};
  const std::optional<std::u16string> text = phone::ToUtf16(name);
  if (text && IsOneCharacter(*text)) return Key{0, *text};
  if (!name.starts_with('#')) return std::nullopt;
  const auto code = ParseNumber(name.substr(1), 1, kLargestCode);
  if (!code) return std::nullopt;
  return Key{static_cast<UINT>(*code), {}};
}

std::string KeyName(UINT code) {
  const auto* const named =
      std::find_if(std::begin(kKeys), std::end(kKeys), [&](const NamedKey& key) { return key.code == code; });
  return named != std::end(kKeys) ? std::string(named->name) : '#' + std::to_string(code);
}

void Press(const Key& key) {
  if (key.code) phone::PressKey(key.code);
  for (const char16_t unit : key.typed) phone::TypeCharacter(unit);
}

void Release(const Key& key) {
  if (key.code) phone::ReleaseKey(key.code);
}

}  // namespace script
