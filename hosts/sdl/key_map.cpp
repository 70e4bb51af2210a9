#include "hosts/sdl/key_map.h"

#include <algorithm>
#include <string_view>

namespace sdl {
namespace {

constexpr std::string_view kIndent = "  ";
constexpr std::size_t kGap = 2;

constexpr KeyMapRow kRows[] = {
    {"Arrows, wheel", "direction pad"},
    {"Enter", "action key"},
    {"F1, F2", "left and right soft key"},
    {"Esc", "Back; in a field, delete"},
    {"Backspace", "Back; in a field, delete"},
    {"Characters", "type in a field; a digit chooses a menu item"},
    {"Home, End, Delete", "move and delete in a field"},
    {"Ctrl + arrows", "move by words in a field"},
    {"Shift + arrows", "select in a field"},
    {"Ctrl + X, C, V, A", "cut, copy, paste, select all"},
    {"Click", "soft key, menu item, button, caret"},
    {"Ctrl + plus, minus", "larger, smaller"},
    {"Ctrl + 1 to 6, 0", "scale; 0: what fits"},
    {"F10", "show these keys"},
    {"F11", "full screen"},
    {"F12", "picture of the screen"},
    {"Drop a layout", "copy it to the phone"},
};

}  // namespace

std::span<const KeyMapRow> KeyMap() {
  return kRows;
}

std::string KeyMapText() {
  std::size_t column = 0;
  for (const KeyMapRow& row : kRows) column = std::max(column, std::string_view(row.keys).size() + kGap);
  std::string text;
  for (const KeyMapRow& row : kRows) {
    std::string keys = row.keys;
    keys.resize(column, ' ');
    text.append(kIndent).append(keys).append(row.effect).append("\n");
  }
  return text;
}

}  // namespace sdl
