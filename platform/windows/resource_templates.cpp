#include "windows/resources.h"

namespace phone {

namespace {

constexpr WORD kItemDisabled = 0x0001 | 0x0002;
constexpr WORD kItemPopup = 0x0010;
constexpr WORD kItemLast = 0x0080;
constexpr int kDeepestMenu = 8;

constexpr WORD kButtonEnabled = 0x0004;
constexpr WORD kButtonDropDown = 0x0008;
constexpr WORD kNoPopup = 0xFFFF;

/// A separator: neither label nor command.
bool IsSeparator(const MenuItem& item) {
  return !item.popup && item.label.empty() && item.command == 0;
}

bool ReadItems(ByteReader& reader, int depth, std::vector<MenuItem>& items) {
  if (depth > kDeepestMenu) return false;
  while (true) {
    const std::optional<WORD> flags = reader.Word();
    if (!flags) return false;
    MenuItem item;
    item.popup = (*flags & kItemPopup) != 0;
    item.enabled = (*flags & kItemDisabled) == 0;
    if (!item.popup) {
      const std::optional<WORD> command = reader.Word();
      if (!command) return false;
      item.command = *command;
    }
    std::optional<std::u16string> label = reader.Text();
    if (!label) return false;
    item.label = std::move(*label);
    if (item.popup && !ReadItems(reader, depth + 1, item.items)) return false;
    if (!IsSeparator(item)) items.push_back(std::move(item));
    if ((*flags & kItemLast) != 0) return true;
  }
}

std::optional<MenuBarButton> ReadButton(ByteReader& reader) {
  enum Field { image, command, state, style, label, data, popup, count };
  WORD fields[Field::count];
  for (WORD& field : fields) {
    const std::optional<WORD> value = reader.Word();
    if (!value) return std::nullopt;
    field = *value;
  }
  MenuBarButton button{};
  button.command = fields[command];
  button.enabled = (fields[state] & kButtonEnabled) != 0;
  button.drop_down = (fields[style] & kButtonDropDown) != 0;
  button.label = fields[label];
  if (fields[popup] != kNoPopup) button.popup = fields[popup];
  return button;
}

}  // namespace

std::optional<std::vector<MenuItem>> ReadMenu(Bytes content) {
  ByteReader reader(content);
  const std::optional<WORD> version = reader.Word();
  const std::optional<WORD> header_size = reader.Word();
  if (version != 0 || !header_size || !reader.Take(*header_size)) return std::nullopt;
  std::vector<MenuItem> items;
  if (!ReadItems(reader, 0, items)) return std::nullopt;
  return items;
}

std::optional<MenuBarTemplate> ReadMenuBar(Bytes content) {
  ByteReader reader(content);
  const std::optional<WORD> menu = reader.Word();
  const std::optional<WORD> count = reader.Word();
  if (!menu || !count) return std::nullopt;
  MenuBarTemplate bar{*menu, {}};
  for (WORD i = 0; i < *count; ++i) {
    const std::optional<MenuBarButton> button = ReadButton(reader);
    if (!button) return std::nullopt;
    bar.buttons.push_back(*button);
  }
  return bar;
}

}  // namespace phone
