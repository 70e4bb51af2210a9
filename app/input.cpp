#include <aygshell.h>

#include <cstddef>

#include "app/commands.h"
#include "screens/resource.h"

namespace {

/// What a key or command does on one screen.
struct InputRow {
  LONG screen;
  UINT code;
  Action action;
};

constexpr InputRow KEYS[] = {
    {SCREEN_THEME_LIST, VK_RETURN, GoTo<NAV_EDITOR>},
    {SCREEN_THEME_LIST, VK_UP, SelectPrevious},
    {SCREEN_THEME_LIST, VK_DOWN, SelectNext},
    {SCREEN_EDITOR, VK_RETURN, ToggleMoveMode},
    {SCREEN_EDITOR, VK_UP, SelectPrevious},
    {SCREEN_EDITOR, VK_DOWN, SelectNext},
    {SCREEN_CHOOSER, VK_RETURN, ChooseFavorite},
    {SCREEN_CHOOSER, VK_UP, SelectPrevious},
    {SCREEN_CHOOSER, VK_DOWN, SelectNext},
    {SCREEN_ABOUT, VK_RETURN, OpenProductPage},
};

/// On the release of the Back key; a press does nothing. The forms hand it to their fields instead.
constexpr InputRow RELEASED_KEYS[] = {
    {SCREEN_THEME_LIST, VK_TBACK, LeaveForeground},
    {SCREEN_EDITOR, VK_TBACK, GoTo<NAV_RELOAD>},
    {SCREEN_CHOOSER, VK_TBACK, GoTo<NAV_RETURN>},
    {SCREEN_ABOUT, VK_TBACK, LeaveForeground},
};

constexpr InputRow COMMANDS[] = {
    {SCREEN_THEME_LIST, IDM_RIGHT_SOFT_KEY, EndProgram},
    {SCREEN_THEME_LIST, IDM_DELETE, DeleteTheme},
    {SCREEN_THEME_LIST, IDM_CONFIRM, ApplyTheme},
    {SCREEN_THEME_LIST, IDM_EDIT, GoTo<NAV_EDITOR>},
    {SCREEN_THEME_LIST, IDM_HELP, OpenHelp},
    {SCREEN_THEME_LIST, IDM_ABOUT, ShowAbout},
    {SCREEN_EDITOR, IDM_RIGHT_SOFT_KEY, GoTo<NAV_RELOAD>},
    {SCREEN_EDITOR, IDM_ADD_NEW_PLUGIN, GoTo<NAV_CHOOSER>},
    {SCREEN_EDITOR, IDM_DELETE, RemovePlugin},
    {SCREEN_EDITOR, IDM_ADD_TO_FAVORITES, OpenFavoriteForm},
    {SCREEN_EDITOR, IDM_CONFIRM, GoTo<NAV_SAVE_THEME>},
    {SCREEN_EDITOR, IDM_HELP, OpenHelp},
    {SCREEN_SAVE_THEME, IDM_LEFT_SOFT_KEY, SaveTheme},
    {SCREEN_SAVE_THEME, IDM_RIGHT_SOFT_KEY, CancelForm},
    {SCREEN_CHOOSER, IDM_RIGHT_SOFT_KEY, GoTo<NAV_RETURN>},
    {SCREEN_CHOOSER, IDM_DELETE, DeleteFavorite},
    {SCREEN_CHOOSER, IDM_CONFIRM, AddFavorite},
    {SCREEN_CHOOSER, IDM_HELP, OpenHelp},
    {SCREEN_ADD_FAVORITE, IDM_LEFT_SOFT_KEY, KeepFavorite},
    {SCREEN_ADD_FAVORITE, IDM_RIGHT_SOFT_KEY, CancelForm},
    {SCREEN_ABOUT, IDM_RIGHT_SOFT_KEY, GoTo<NAV_RELOAD>},
};

template <std::size_t Count>
constexpr bool EachOnce(const InputRow (&rows)[Count]) noexcept {
  for (std::size_t i = 0; i < Count; ++i)
    for (std::size_t j = 0; j < i; ++j)
      if (rows[i].screen == rows[j].screen && rows[i].code == rows[j].code) return false;
  return true;
}
static_assert(EachOnce(KEYS) && EachOnce(RELEASED_KEYS) && EachOnce(COMMANDS));

template <std::size_t Count>
void Act(const InputRow (&rows)[Count], UINT code, CAppController& controller, HWND window) noexcept {
  for (const InputRow& row : rows)
    if (row.screen == controller.screenId && row.code == code) return row.action(controller, window);
}

}  // namespace

void CAppController::OnKey(HWND window, UINT key) noexcept {
  Act(KEYS, key, *this, window);
}

void CAppController::OnHotKey(HWND window, WPARAM wparam, LPARAM lparam) noexcept {
  if (HIWORD(lparam) != VK_TBACK) return;
  const bool isForm = screenId == SCREEN_SAVE_THEME || screenId == SCREEN_ADD_FAVORITE;
  if (isForm) return SHSendBackToFocusWindow(WM_HOTKEY, wparam, lparam);
  if (LOWORD(lparam) & MOD_KEYUP) Act(RELEASED_KEYS, VK_TBACK, *this, window);
}

void CAppController::OnCommand(HWND window, INT command) noexcept {
  Act(COMMANDS, static_cast<UINT>(command), *this, window);
}
