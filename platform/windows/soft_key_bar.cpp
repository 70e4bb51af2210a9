#include "aygshell.h"
#include "system/faults.h"
#include "windows/desktop.h"
#include "windows/lifetime.h"

namespace phone {

namespace {

constexpr std::u16string_view kBarClass = u"MENU_WORKER";

void Relabel(SoftKey& key, const TBBUTTONINFO& info) {
  if ((info.dwMask & TBIF_TEXT) != 0 && info.pszText != nullptr) key.label = info.pszText;
  MarkKeysStale();
}

LRESULT SetButton(SoftKeyBar& bar, WPARAM command, const TBBUTTONINFO* info) {
  if (info == nullptr) return FALSE;
  for (SoftKey* key : {&bar.left, &bar.right}) {
    if (key->command != command || command == 0) continue;
    Relabel(*key, *info);
    return TRUE;
  }
  return FALSE;
}

LRESULT OverrideKey(SoftKeyBar& bar, WPARAM key, LPARAM flags) {
  if (key != VK_TBACK) return FALSE;
  const WORD meant = LOWORD(flags);
  bar.back_flags = static_cast<WORD>((bar.back_flags & ~meant) | (HIWORD(flags) & meant));
  return TRUE;
}

LRESULT CALLBACK BarProcedure(HWND handle, UINT message, WPARAM wparam, LPARAM lparam) {
  Window* window = TheDesktop().windows.Find(handle);
  if (window == nullptr || !window->bar) return 0;
  switch (message) {
    case SHCMBM_OVERRIDEKEY: return OverrideKey(*window->bar, wparam, lparam);
    case TB_SETBUTTONINFO: return SetButton(*window->bar, wparam, reinterpret_cast<const TBBUTTONINFO*>(lparam));
    default: return DefWindowProcW(handle, message, wparam, lparam);
  }
}

/// The items of the popup that a button opens; none when the resource has no such popup.
std::vector<MenuItem> PopupOf(const MenuBarTemplate& bar, const MenuBarButton& button) {
  const Resource* resource = FindResource(TheDesktop().resources, kMenuType, bar.menu);
  if (resource == nullptr) return {};
  std::optional<std::vector<MenuItem>> items = ReadMenu(resource->content);
  if (!items) return {};
  // The button names its popup by its place among the menu's items.
  const std::size_t place = button.popup.value_or(0);
  if (place >= items->size() || !(*items)[place].popup) return {};
  std::vector<MenuItem> popup = std::move((*items)[place].items);
  std::erase_if(popup, [](const MenuItem& item) { return item.popup; });
  return popup;
}

SoftKey MakeKey(const MenuBarTemplate& bar, std::size_t place) {
  SoftKey key;
  if (place >= bar.buttons.size()) return key;
  const MenuBarButton& button = bar.buttons[place];
  key.command = button.command;
  key.enabled = button.enabled;
  key.opens_menu = button.drop_down;
  key.label = FindString(TheDesktop().resources, button.label).value_or(u"");
  if (key.opens_menu) key.menu = PopupOf(bar, button);
  return key;
}

HWND MakeBar(HWND given_owner, WORD id) {
  Desktop& desktop = TheDesktop();
  const Window* owner = desktop.windows.Find(given_owner);
  const Resource* resource = FindResource(desktop.resources, kMenuBarType, id);
  if (owner == nullptr || owner->destroying || resource == nullptr) return nullptr;
  const std::optional<MenuBarTemplate> bar = ReadMenuBar(resource->content);
  if (!bar) return nullptr;
  SoftKeyBar keys{.left = MakeKey(*bar, 0), .right = MakeKey(*bar, 1)};
  Window& window = desktop.windows.Add();
  window.procedure = BarProcedure;
  window.class_name = kBarClass;
  window.owner = owner->handle;
  window.bar = std::move(keys);
  SetVisible(window, true);
  return window.handle;
}

}  // namespace

}  // namespace phone

using namespace phone;

BOOL SHInitExtraControls() {
  return TRUE;
}

BOOL SHCreateMenuBar(SHMENUBARINFO* info) {
  if (FaultDue(Operation::SHCreateMenuBar) || !OnUiThread() || info == nullptr || info->nToolBarId > 0xFFFF)
    return FALSE;
  return Guarded<BOOL>(FALSE, [info] {
    info->hwndMB = MakeBar(info->hwndParent, static_cast<WORD>(info->nToolBarId));
    return info->hwndMB != nullptr ? TRUE : FALSE;
  });
}
