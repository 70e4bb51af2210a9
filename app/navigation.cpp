#include "app/controller.h"
#include "base/status.h"
#include "themes/catalog.h"
#include "themes/favorites.h"
#include "themes/xml_reading.h"

// A list goes before the records that its rows point to.

namespace {

void DropFavorites(CAppController& controller) noexcept {
  controller.favoriteList.reset();
  Unexamined(controller.ClearFavoriteRecords());
}

void DropPlugins(CAppController& controller) noexcept {
  controller.pluginList.reset();
  Unexamined(controller.ClearPluginRecords());
}

void DropThemes(CAppController& controller) noexcept {
  controller.themeList.reset();
  Unexamined(controller.ClearThemeRecords());
}

HRESULT ShowThemeList(CAppController& controller, HWND window) noexcept {
  Unexamined(controller.SetScreen(window, SCREEN_THEME_LIST));
  if (!controller.themeList) {
    FixedText<MAX_PATH> applicationData;
    if (FindApplicationData(window, applicationData))
      Unexamined(LoadThemeCatalog(applicationData, controller.themeRecords));
    Unexamined(controller.BuildThemeList(window));
  }
  SetFocus(window);
  return S_OK;
}

HRESULT OpenEditor(CAppController& controller, HWND window) noexcept {
  const ThemeRecord* const theme = controller.SelectedTheme();
  if (!theme) return S_OK;
  controller.pluginList.reset();
  Unexamined(ReadThemePlugins(*theme, controller.pluginRecords));
  Unexamined(controller.BuildPluginList(window));
  Unexamined(controller.SetScreen(window, SCREEN_EDITOR));
  SetFocus(window);
  return S_OK;
}

HRESULT OpenChooser(CAppController& controller, HWND window) noexcept {
  DropFavorites(controller);
  TextField folder;
  if (FindFavoritesFolder(controller.instance, folder)) Unexamined(LoadFavorites(folder, controller.favoriteRecords));
  Unexamined(controller.BuildFavoriteList(window));
  Unexamined(controller.SetScreen(window, SCREEN_CHOOSER));
  SetFocus(window);
  return S_OK;
}

HRESULT ReturnToEditor(CAppController& controller, HWND window) noexcept {
  DropFavorites(controller);
  Unexamined(controller.SetScreen(window, SCREEN_EDITOR));
  SetFocus(window);
  return S_OK;
}

HRESULT ReloadThemes(CAppController& controller, HWND window) noexcept {
  DropFavorites(controller);
  DropPlugins(controller);
  DropThemes(controller);
  return ShowThemeList(controller, window);
}

HRESULT OpenSaveForm(CAppController& controller, HWND window) noexcept {
  Unexamined(controller.SetScreen(window, SCREEN_SAVE_THEME));
  if (controller.titleEdit) SetFocus(controller.titleEdit);
  const ThemeRecord* const theme = controller.SelectedTheme();
  if (!theme) return E_OUTOFMEMORY;
  SendMessageW(controller.titleEdit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(theme->title.units));
  SendMessageW(controller.fileNameEdit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(theme->fileName.units));
  return S_OK;
}

using Way = HRESULT (*)(CAppController& controller, HWND window) noexcept;

/// By NavTarget.
constexpr Way WAYS[] = {ShowThemeList, OpenEditor, OpenChooser, ReturnToEditor, ReloadThemes, OpenSaveForm};
constexpr LONG WAY_COUNT = sizeof WAYS / sizeof WAYS[0];
static_assert(WAY_COUNT == NAV_SAVE_THEME + 1);

}  // namespace

HRESULT CAppController::Navigate(HWND window, LONG target) noexcept {
  if (target < 0 || target >= WAY_COUNT) return E_FAIL;
  return WAYS[target](*this, window);
}
