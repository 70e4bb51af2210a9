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
    {"insert", VK_INSERT},
};

constexpr std::string_view kShift = "shift+";
constexpr std::string_view kControl = "ctrl+";

constexpr std::uint32_t kLargestCode = 0xFFFF;

bool IsOneCharacter(const std::u16string& text) {
  return text.size() == 1 || (text.size() == 2 && text[0] >= 0xD800 && text[0] <= 0xDBFF);
}

/// A key without modifiers.
std::optional<Key> PlainKey(std::string_view name) {
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

/// A key that a modifier is held with types nothing; a letter is a key by its capital's code.
std::optional<Key> ModifiedKey(Key key, phone::KeyModifiers modifiers) {
  key.modifiers = modifiers;
  if (key.code == 0) {
    const bool is_letter = key.typed.size() == 1 && key.typed[0] >= u'a' && key.typed[0] <= u'z';
    if (!is_letter || !modifiers.control) return std::nullopt;
    key.code = static_cast<UINT>(key.typed[0] - u'a' + u'A');
  }
  key.typed.clear();
  return key;
}

bool Skip(std::string_view& name, std::string_view prefix) {
  if (!name.starts_with(prefix)) return false;
  name.remove_prefix(prefix.size());
  return true;
}

}  // namespace

std::optional<Key> KeyByName(std::string_view name) {
  phone::KeyModifiers modifiers;
  for (bool more = true; more;) {
    const bool shift = !modifiers.shift && Skip(name, kShift);
    const bool control = !modifiers.control && Skip(name, kControl);
    modifiers.shift |= shift;
    modifiers.control |= control;
    more = shift || control;
  }
  const std::optional<Key> key = PlainKey(name);
  return key && (modifiers.shift || modifiers.control) ? ModifiedKey(*key, modifiers) : key;
}

std::string KeyName(UINT code, phone::KeyModifiers modifiers) {
  std::string name;
  if (modifiers.control) name += kControl;
  if (modifiers.shift) name += kShift;
  const auto* const named =
      std::find_if(std::begin(kKeys), std::end(kKeys), [&](const NamedKey& key) { return key.code == code; });
  if (named != std::end(kKeys)) return name.append(named->name);
  const bool is_letter = modifiers.control && code >= 'A' && code <= 'Z';
  return is_letter ? name + static_cast<char>(code - 'A' + 'a') : name + '#' + std::to_string(code);
}

void Press(const Key& key) {
  if (key.code) phone::PressKey(key.code, key.modifiers);
  for (const char16_t unit : key.typed) phone::TypeCharacter(unit);
}

void Release(const Key& key) {
  if (key.code) phone::ReleaseKey(key.code);
}

}  // namespace script
