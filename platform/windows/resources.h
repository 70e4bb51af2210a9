/// \file
/// The program's compiled resources: the .res format of resource compilers, read without trusting it.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "windef.h"

namespace phone {

using Bytes = std::span<const std::byte>;

inline constexpr WORD kMenuType = 4;
inline constexpr WORD kStringTableType = 6;
inline constexpr WORD kIconGroupType = 14;
inline constexpr std::u16string_view kMenuBarType = u"SHMENUBAR";

/// A type or a name of a resource: a number, or text when the number is absent.
struct ResourceId {
  std::optional<WORD> number;
  std::u16string text;
};

struct Resource {
  ResourceId type;
  ResourceId name;
  WORD language = 0;
  Bytes content;
};

/// Little-endian values one after the other. What lies beyond the end reads as nothing, and everything after it too.
class ByteReader {
 public:
  explicit ByteReader(Bytes bytes) : rest_(bytes), size_(bytes.size()) {}

  std::optional<WORD> Word();
  std::optional<DWORD> Double();
  /// Text up to its zero, which is read too.
  std::optional<std::u16string> Text();
  std::optional<std::u16string> Text(std::size_t length);
  std::optional<Bytes> Take(std::size_t count);
  /// Goes on to the next multiple of four; to the end where that lies beyond it.
  void Align();
  std::size_t position() const { return size_ - rest_.size(); }
  bool at_end() const { return rest_.empty(); }

 private:
  Bytes rest_;
  std::size_t size_;
};

/// The entries of a .res file up to the first that cannot be read. The contents point into the file.
std::vector<Resource> ReadResources(Bytes file);

/// A resource by type and number, of language 1033 where there is a choice; null when there is none.
const Resource* FindResource(std::span<const Resource> resources, WORD type, WORD name);
const Resource* FindResource(std::span<const Resource> resources, std::u16string_view type, WORD name);

/// A string of the string tables.
std::optional<std::u16string> FindString(std::span<const Resource> resources, UINT id);

struct MenuItem {
  std::u16string label;
  WORD command = 0;  ///< of a popup: 0
  bool enabled = true;
  bool popup = false;
  std::vector<MenuItem> items;  ///< of a popup
};

/// The items of a menu resource at its top level; nothing when it does not hold together.
std::optional<std::vector<MenuItem>> ReadMenu(Bytes content);

struct MenuBarButton {
  WORD command;
  bool enabled;
  bool drop_down;
  WORD label;                 ///< string id
  std::optional<WORD> popup;  ///< which popup of the menu it opens, from 0
};

struct MenuBarTemplate {
  WORD menu;  ///< id of the menu resource
  std::vector<MenuBarButton> buttons;
};

/// A soft-key bar resource: WORD menu id, WORD button count, then for each button seven WORDs: image, command, state,
/// style, string id, data, popup or 0xFFFF.
std::optional<MenuBarTemplate> ReadMenuBar(Bytes content);

}  // namespace phone
