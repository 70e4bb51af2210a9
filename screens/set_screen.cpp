#include <utility>

#include "app/controller.h"
#include "base/status.h"
#include "screens/resource.h"
#include "screens/soft_key_bars.h"

namespace {

constexpr LONG NO_FIELDS = 0;

/// How a screen is set up; null where nothing is set.
struct ScreenRow {
  LONG screen;
  HWND CAppController::*bar;
  bool overridesBack;
  LPCWSTR leftLabel;
  LPCWSTR rightLabel;
  LPCWSTR caption;
  LONG editLayout;
};

constexpr ScreenRow SCREENS[] = {
    {SCREEN_THEME_LIST, &CAppController::themeListBar, true, nullptr, nullptr, TEXT("Select Theme"), NO_FIELDS},
    {SCREEN_EDITOR, &CAppController::editorBar, true, nullptr, nullptr, TEXT("Select Plugins"), NO_FIELDS},
    {SCREEN_SAVE_THEME, &CAppController::formBar, true, TEXT("Save"), TEXT("Cancel"), TEXT("Save Theme"),
     EDIT_LAYOUT_SAVE_THEME},
    {SCREEN_CHOOSER, &CAppController::chooserBar, true, nullptr, nullptr, TEXT("Choose Plugin"), NO_FIELDS},
    {SCREEN_ADD_FAVORITE, &CAppController::formBar, true, TEXT("Save"), TEXT("Cancel"), TEXT("Add to favorites"),
     EDIT_LAYOUT_ADD_FAVORITE},
    {SCREEN_ABOUT, &CAppController::aboutBar, false, TEXT(" "), TEXT("Back"), nullptr, NO_FIELDS},
};

const ScreenRow* FindScreen(LONG screen) noexcept {
  for (const ScreenRow& row : SCREENS)
    if (row.screen == screen) return &row;
  return nullptr;
}

void ShowBar(HWND bar, const ScreenRow& row) noexcept {
  if (!bar) return;
  ShowWindow(bar, SW_SHOW);
  if (row.overridesBack) OverrideBackKey(bar);
  if (!row.leftLabel) return;
  LabelSoftKey(bar, IDM_LEFT_SOFT_KEY, row.leftLabel);
  LabelSoftKey(bar, IDM_RIGHT_SOFT_KEY, row.rightLabel);
  // Relabelling may drop the override.
  if (row.overridesBack) OverrideBackKey(bar);
}

void DropField(HWND& field) noexcept {
  if (const HWND window = std::exchange(field, nullptr)) DestroyWindow(window);
}

/// Drops what belongs to other screens.
void LeaveOtherScreens(CAppController& controller, LONG screen) noexcept {
  if (screen != SCREEN_SAVE_THEME) {
    DropField(controller.titleEdit);
    DropField(controller.fileNameEdit);
  }
  if (screen != SCREEN_ADD_FAVORITE) DropField(controller.favoriteNameEdit);
  if (screen != SCREEN_ABOUT) controller.aboutImage.reset();
}

}  // namespace

HRESULT CAppController::SetScreen(HWND window, LONG screen) noexcept {
  const ScreenRow* const row = FindScreen(screen);
  if (!row) return E_FAIL;
  HideBars(*this);
  RECT client = {};
  GetClientRect(window, &client);
  ShowBar(this->*row->bar, *row);
  screenId = screen;
  if (row->caption && caption) caption->SetText(row->caption);
  RETURN_IF_FAILED(CreateEditFields(window, instance, client, row->editLayout));
  LeaveOtherScreens(*this, screen);
  InvalidateRect(window, nullptr, FALSE);
  return S_OK;
}
