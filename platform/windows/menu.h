/// \file
/// The menu of a soft key, drawn over it and worked with the keys.
#pragma once

#include <optional>
#include <vector>

#include "graphics/surface.h"
#include "windows.h"
#include "windows/resources.h"

namespace phone {

struct SoftKey;
struct Window;

struct Menu {
  HWND bar = nullptr;
  bool on_right = false;  ///< it stands over the right soft key
  std::vector<MenuItem> items;
  std::size_t selected = 0;
  std::size_t first = 0;  ///< the topmost item in view
  std::optional<Surface> picture;
  bool stale = true;  ///< the picture does not show the menu as it is
};

inline constexpr std::u16string_view kMenuSelectLabel = u"Select";
inline constexpr std::u16string_view kMenuCancelLabel = u"Cancel";

/// Opens the menu of a bar's key; nothing for a key whose menu has no items.
void OpenMenu(const Window& bar, const SoftKey& key, bool on_right);
/// Closes the open menu, if any, without a choice.
void CloseMenu();
/// A key pressed while a menu is open.
void PressInMenu(UINT key);
/// A character typed while a menu is open: a digit chooses the item of that number.
void TypeInMenu(WCHAR character);
/// Chooses an item by its position: the menu closes, then the bar's owner gets the command. Nothing for a position that
/// does not exist or an item that cannot be chosen.
void ChooseInMenu(std::size_t index);

enum class MenuPart {
  none,   ///< beside the menu
  frame,  ///< its frame, or the strip of an arrow that leads nowhere
  item,
  up,  ///< the arrow that tells it goes on above
  down,
};

struct MenuHit {
  MenuPart part = MenuPart::none;
  std::size_t index = 0;  ///< of the item
};

/// What of the menu lies at a place of the client area.
MenuHit HitMenu(const Menu& menu, const Surface& client, POINT at);
/// Chooses the item that was hit, or scrolls on by one at an arrow.
void ClickInMenu(const MenuHit& hit);

/// Draws the menu over the client area.
void DrawMenu(Menu& menu, Surface& client);

}  // namespace phone
