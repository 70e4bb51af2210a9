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
  LONG editLayout;
  HWND CAppController::*bar;
  LPCWSTR leftLabel;
  LPCWSTR rightLabel;
  LPCWSTR caption;
  bool overridesBack;
};

constexpr bool OVERRIDES_BACK = true;
constexpr bool SHELL_TAKES_BACK = false;

constexpr ScreenRow SCREENS[] = {
    {SCREEN_THEME_LIST, NO_FIELDS, &CAppController::themeListBar, nullptr, nullptr, TEXT("Select Theme"),
     OVERRIDES_BACK},
    {SCREEN_EDITOR, NO_FIELDS, &CAppController::editorBar, nullptr, nullptr, TEXT("Select Plugins"), OVERRIDES_BACK},
    {SCREEN_SAVE_THEME, EDIT_LAYOUT_SAVE_THEME, &CAppController::formBar, TEXT("Save"), TEXT("Cancel"),
     TEXT("Save Theme"), OVERRIDES_BACK},
    {SCREEN_CHOOSER, NO_FIELDS, &CAppController::chooserBar, nullptr, nullptr, TEXT("Choose Plugin"), OVERRIDES_BACK},
    {SCREEN_ADD_FAVORITE, EDIT_LAYOUT_ADD_FAVORITE, &CAppController::formBar, TEXT("Save"), TEXT("Cancel"),
     TEXT("Add to favorites"), OVERRIDES_BACK},
    {SCREEN_ABOUT, NO_FIELDS, &CAppController::aboutBar, TEXT(" "), TEXT("Back"), nullptr, SHELL_TAKES_BACK},
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
