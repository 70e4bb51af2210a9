#include "windows/menu.h"

#include <algorithm>
#include <string>

#include "aygshell.h"
#include "windows/desktop.h"
#include "windows/drawing.h"
#include "windows/focus.h"
#include "windows/message_queue.h"
#include "windows/style.h"

namespace phone {

namespace {

using namespace style;

constexpr std::size_t kNumberedItems = 9;
constexpr int kFrame = 1;  // px

/// How much of a menu fits into the client area.
struct Extent {
  int width;
  int height;
  std::size_t rows;
  bool scrolls;
};

Extent MeasureMenu(const Menu& menu, const Surface& client) {
  int width = 0;
  for (const MenuItem& item : menu.items) width = std::max(width, MeasureLine(item.label, kMenuStyle));
  width = std::max(width + kMenuNumberWidth + 3 * kMenuPadding, kMenuLeastWidth);
  const int count = static_cast<int>(menu.items.size());
  const int room = client.height() - 2 * kFrame;
  const bool scrolls = count * kMenuRowHeight > room;
  const int rows = scrolls ? std::max((room - 2 * kMenuArrowHeight) / kMenuRowHeight, 1) : count;
  const int height = rows * kMenuRowHeight + (scrolls ? 2 * kMenuArrowHeight : 0) + 2 * kFrame;
  return {std::min(width, client.width()), std::min(height, client.height()), static_cast<std::size_t>(rows), scrolls};
}

void DrawItem(Surface& picture, const Menu& menu, std::size_t index, const RECT& row) {
  const MenuItem& item = menu.items[index];
  const bool selected = index == menu.selected;
  if (selected) DrawChosen(picture, row);
  RECT column{row.left + kMenuPadding, row.top, row.left + kMenuPadding + kMenuNumberWidth, row.bottom};
  if (index < kNumberedItems) {
    LineStyle number = kNumberStyle;
    if (selected) number.color = kText;
    const WCHAR digit = static_cast<WCHAR>(u'1' + index);
    DrawLine(picture, column, {&digit, 1}, number);
  }
  LineStyle label = kMenuStyle;
  if (!item.enabled) label.color = kQuietText;
  column.left = column.right;
  column.right = std::max(row.right - kMenuPadding, column.left);
  DrawLine(picture, column, item.label, label);
}

void DrawPicture(Menu& menu, const Extent& extent) {
  if (!menu.picture || menu.picture->width() != extent.width || menu.picture->height() != extent.height)
    menu.picture.emplace(extent.width, extent.height);
  Surface& picture = *menu.picture;
  DrawPanel(picture, {0, 0, extent.width, extent.height});
  int y = kFrame;
  if (extent.scrolls) {
    const RECT strip{kFrame, y, extent.width - kFrame, y + kMenuArrowHeight};
    if (menu.first > 0) DrawArrow(picture, strip, Arrow::up);
    y += kMenuArrowHeight;
  }
  const std::size_t end = std::min(menu.first + extent.rows, menu.items.size());
  for (std::size_t i = menu.first; i < end; ++i, y += kMenuRowHeight)
    DrawItem(picture, menu, i, {kFrame, y, extent.width - kFrame, y + kMenuRowHeight});
  if (extent.scrolls && end < menu.items.size())
    DrawArrow(picture, {kFrame, y, extent.width - kFrame, y + kMenuArrowHeight}, Arrow::down);
}

void ScrollToSelection(Menu& menu, std::size_t rows) {
  menu.first = std::min(menu.first, menu.selected);
  if (menu.selected >= menu.first + rows) menu.first = menu.selected - rows + 1;
  menu.first = std::min(menu.first, menu.items.size() - std::min(rows, menu.items.size()));
}

void Select(Menu& menu, std::size_t index) {
  menu.selected = index;
  menu.stale = true;
  MarkClientStale();
}

}  // namespace

void OpenMenu(const Window& bar, const SoftKey& key, bool on_right) {
  if (key.menu.empty()) return;
  Desktop& desktop = TheDesktop();
  desktop.menu.emplace();
  desktop.menu->bar = bar.handle;
  desktop.menu->on_right = on_right;
  desktop.menu->items = key.menu;
  HoldFocus();
  MarkAllStale();
}

void CloseMenu() {
  if (!TheDesktop().menu) return;
  TheDesktop().menu.reset();
  MarkAllStale();
  ReleaseHeldFocus();
}

void PressInMenu(UINT key) {
  Menu& menu = *TheDesktop().menu;
  const std::size_t count = menu.items.size();
  switch (key) {
    case VK_UP: return Select(menu, (menu.selected + count - 1) % count);
    case VK_DOWN: return Select(menu, (menu.selected + 1) % count);
    case VK_RETURN:
    case VK_TSOFT1: return ChooseInMenu(menu.selected);
    case VK_TBACK:
    case VK_TSOFT2: return CloseMenu();
    default: return;
  }
}

void TypeInMenu(WCHAR character) {
  if (character >= u'1' && character < u'1' + kNumberedItems) ChooseInMenu(character - u'1');
}

void ChooseInMenu(std::size_t index) {
  Desktop& desktop = TheDesktop();
  if (!desktop.menu || index >= desktop.menu->items.size() || !desktop.menu->items[index].enabled) return;
  const WORD command = desktop.menu->items[index].command;
  const Window* bar = desktop.windows.Find(desktop.menu->bar);
  const HWND owner = bar != nullptr ? bar->owner : nullptr;
  CloseMenu();
  PostToWindow(owner, WM_COMMAND, command, 0);
}

MenuHit HitMenu(const Menu& menu, const Surface& client, POINT at) {
  const Extent extent = MeasureMenu(menu, client);
  const int left = menu.on_right ? client.width() - extent.width : 0;
  int y = at.y - (client.height() - extent.height);
  if (at.x < left || at.x >= left + extent.width || y < 0 || at.y >= client.height()) return {};
  y -= kFrame;
  if (extent.scrolls) y -= kMenuArrowHeight;
  const std::size_t end = std::min(menu.first + extent.rows, menu.items.size());
  if (y < 0) return {.part = menu.first > 0 ? MenuPart::up : MenuPart::frame};
  const std::size_t index = menu.first + static_cast<std::size_t>(y / kMenuRowHeight);
  if (index < end) return {.part = MenuPart::item, .index = index};
  if (end < menu.items.size()) return {.part = MenuPart::down, .index = end};
  return {.part = MenuPart::frame};
}

void ClickInMenu(const MenuHit& hit) {
  Menu& menu = *TheDesktop().menu;
  switch (hit.part) {
    case MenuPart::item: return ChooseInMenu(hit.index);
    case MenuPart::up: return Select(menu, menu.first - 1);
    case MenuPart::down: return Select(menu, hit.index);
    default: return;
  }
}

void DrawMenu(Menu& menu, Surface& client) {
  if (menu.stale) {
    const Extent extent = MeasureMenu(menu, client);
    ScrollToSelection(menu, extent.rows);
    DrawPicture(menu, extent);
    menu.stale = false;
  }
  const int x = menu.on_right ? client.width() - menu.picture->width() : 0;
  const int y = client.height() - menu.picture->height();
  DrawShadow(client, {x, y, x + menu.picture->width(), client.height()});
  client.Copy(*menu.picture, x, y);
}

}  // namespace phone
