#include "app/commands.h"

#include <aygshell.h>

#include "app/messages.h"
#include "base/paths.h"

namespace {

constexpr LPCWSTR BROWSER = TEXT("\\Windows\\iexplore.exe");
constexpr LPCWSTR HELP_PAGE = TEXT("help_en.html");
constexpr LPCWSTR PRODUCT_PAGE = TEXT("product_en.html");

void OpenPage(CAppController& controller, LPCWSTR page) noexcept {
  TextField path;
  if (ProgramPath(controller.instance, page, path)) Unexamined(controller.RunProgram(BROWSER, path));
}

/// A removal slides the rows together: the repaint starts its frames.
void RemoveRow(CScrollList& list, HWND window) noexcept {
  list.RemoveSelected();
  InvalidateRect(window, nullptr, FALSE);
}

/// What the user reads when a file is to be deleted.
struct DeletionTexts {
  LPCWSTR question;
  LPCWSTR failure;
};

/// Deletes the file behind the list's selected row, and the row.
void DeleteFileOfRow(CAppController& controller, HWND window, CScrollList& list, LPCWSTR path,
                     const DeletionTexts& texts) noexcept {
  if (!controller.Ask(texts.question)) return;
  if (!DeleteFileW(path)) return controller.ShowNotice(texts.failure);
  RemoveRow(list, window);
}

}  // namespace

void SelectPrevious(CAppController& controller, HWND) noexcept {
  if (CScrollList* const list = controller.CurrentList()) list->MoveUp();
}

void SelectNext(CAppController& controller, HWND) noexcept {
  if (CScrollList* const list = controller.CurrentList()) list->MoveDown();
}

void EndProgram(CAppController&, HWND window) noexcept {
  DestroyWindow(window);
}

void ApplyTheme(CAppController& controller, HWND) noexcept {
  if (const ThemeRecord* const theme = controller.SelectedTheme()) controller.StartApplyTheme(theme->path);
}

void DeleteTheme(CAppController& controller, HWND window) noexcept {
  const ThemeRecord* const theme = controller.SelectedTheme();
  if (!theme) return;
  DeleteFileOfRow(controller, window, *controller.themeList, theme->path,
                  {MESSAGE_DELETE_THEME, MESSAGE_THEME_NOT_DELETED});
}

void ShowAbout(CAppController& controller, HWND window) noexcept {
  Unexamined(controller.SetScreen(window, SCREEN_ABOUT));
}

void OpenHelp(CAppController& controller, HWND) noexcept {
  OpenPage(controller, HELP_PAGE);
}

void ToggleMoveMode(CAppController& controller, HWND) noexcept {
  if (controller.SelectedPlugin()) controller.pluginList->ToggleMoveMode();
}

void RemovePlugin(CAppController& controller, HWND window) noexcept {
  PluginRecord* const plugin = controller.SelectedPlugin();
  if (!plugin) return;
  plugin->node.Reset();
  RemoveRow(*controller.pluginList, window);
}

void OpenFavoriteForm(CAppController& controller, HWND window) noexcept {
  Unexamined(controller.SetScreen(window, SCREEN_ADD_FAVORITE));
  const HWND field = controller.favoriteNameEdit;
  if (!field) return;
  if (const PluginRecord* const plugin = controller.SelectedPlugin())
    SendMessageW(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(plugin->name.units));
  SetFocus(field);
}

void SaveTheme(CAppController& controller, HWND window) noexcept {
  if (controller.SaveThemeAs() != S_OK) return;
  Unexamined(controller.SetScreen(window, SCREEN_THEME_LIST));
  Unexamined(controller.Navigate(window, NAV_RELOAD));
}

void KeepFavorite(CAppController& controller, HWND window) noexcept {
  if (controller.SaveFavorite() == S_OK) CancelForm(controller, window);
}

void CancelForm(CAppController& controller, HWND window) noexcept {
  Unexamined(controller.SetScreen(window, SCREEN_EDITOR));
  SetFocus(window);
}

void ChooseFavorite(CAppController& controller, HWND window) noexcept {
  const PluginRecord* const favorite = controller.SelectedFavorite();
  if (!favorite || FAILED(controller.AddFavoriteToTheme(favorite->clsid))) return;
  Unexamined(controller.Navigate(window, NAV_RETURN));
}

void AddFavorite(CAppController& controller, HWND window) noexcept {
  const PluginRecord* const favorite = controller.SelectedFavorite();
  if (!favorite) return;
  Unexamined(controller.AddFavoriteToTheme(favorite->clsid));
  Unexamined(controller.Navigate(window, NAV_RETURN));
}

void DeleteFavorite(CAppController& controller, HWND window) noexcept {
  const PluginRecord* const favorite = controller.SelectedFavorite();
  if (!favorite) return;
  DeleteFileOfRow(controller, window, *controller.favoriteList, favorite->clsid,
                  {MESSAGE_DELETE_FAVORITE, MESSAGE_FAVORITE_NOT_DELETED});
}

void OpenProductPage(CAppController& controller, HWND) noexcept {
  OpenPage(controller, PRODUCT_PAGE);
}

void LeaveForeground(CAppController&, HWND) noexcept {
  SHNavigateBack();
}
