#include "app/controller.h"

#include "base/status.h"
#include "themes/apply.h"
#include "visuals/chrome.h"

namespace {

template <typename Record>
Record* SelectedIn(const std::unique_ptr<CScrollList>& list) noexcept {
  return list ? static_cast<Record*>(list->GetSelectedData()) : nullptr;
}

}  // namespace

INT InvalidateCallback(LPVOID context, DWORD, DWORD) {
  InvalidateRect(static_cast<HWND>(context), nullptr, FALSE);
  return 0;
}

CAppController::~CAppController() {
  WaitForWorker(applyWait);
  themeList.reset();
  pluginList.reset();
  favoriteList.reset();
  background.reset();
  topBar.reset();
  bottomBar.reset();
  aboutImage.reset();
  caption.reset();
  themeTitleLabel.reset();
  fileNameLabel.reset();
  pluginTitleLabel.reset();
  versionText.reset();
  Unexamined(ClearThemeRecords());
  Unexamined(ClearPluginRecords());
  Unexamined(ClearFavoriteRecords());
  // A bitmap can only go when no context has it selected.
  composeDC.Reset();
  backgroundDC.Reset();
}

void CAppController::Initialize(HWND window, HINSTANCE programInstance) noexcept {
  mainWindow = window;
  instance = programInstance;
}

void CAppController::HandleMessage(HWND window, UINT message, WPARAM wparam, LPARAM lparam) noexcept {
  const bool isInput = message == WM_KEYDOWN || message == WM_HOTKEY || message == WM_COMMAND;
  if (isInput && boxOpen) return;
  switch (message) {
    case WM_CREATE: return Unexamined(OnCreate(window));
    case WM_SETFOCUS: return OnSetFocus();
    case WM_PAINT: return OnPaint(window);
    case WM_KEYDOWN: return OnKey(window, LOWORD(wparam));
    case WM_HOTKEY: return OnHotKey(window, wparam, lparam);
    case WM_COMMAND: return OnCommand(window, LOWORD(wparam));
    case WM_DESTROY: return OnDestroy();
    default: return;
  }
}

HRESULT CAppController::ClearThemeRecords() noexcept {
  ClearRing(themeRecords);
  return S_OK;
}

HRESULT CAppController::ClearPluginRecords() noexcept {
  ClearRing(pluginRecords);
  return S_OK;
}

HRESULT CAppController::ClearFavoriteRecords() noexcept {
  ClearRing(favoriteRecords);
  return S_OK;
}

CScrollList* CAppController::CurrentList() const noexcept {
  switch (screenId) {
    case SCREEN_THEME_LIST: return themeList.get();
    case SCREEN_EDITOR: return pluginList.get();
    case SCREEN_CHOOSER: return favoriteList.get();
    default: return nullptr;
  }
}

ThemeRecord* CAppController::SelectedTheme() const noexcept {
  return SelectedIn<ThemeRecord>(themeList);
}

PluginRecord* CAppController::SelectedPlugin() const noexcept {
  return SelectedIn<PluginRecord>(pluginList);
}

PluginRecord* CAppController::SelectedFavorite() const noexcept {
  return SelectedIn<PluginRecord>(favoriteList);
}

HRESULT CAppController::OnCreate(HWND window) noexcept {
  RECT client = {};
  GetClientRect(window, &client);
  RETURN_IF_FAILED(CreateChromeImages(client));
  RETURN_IF_FAILED(CreateTextVisuals(client));
  RETURN_IF_FAILED(CreateSoftKeyBars(window));
  landscape = IsLandscape(client);
  return Navigate(window, NAV_THEME_LIST);
}

void CAppController::OnSetFocus() noexcept {
  const HWND field = screenId == SCREEN_SAVE_THEME     ? titleEdit
                     : screenId == SCREEN_ADD_FAVORITE ? favoriteNameEdit
                                                       : nullptr;
  if (field) SetFocus(field);
}

void CAppController::OnDestroy() noexcept {
  // The other bars are owned by the main window and go with it.
  if (formBar) DestroyWindow(std::exchange(formBar, nullptr));
}
