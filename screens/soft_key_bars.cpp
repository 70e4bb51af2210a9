#include <aygshell.h>

#include "screens/resource.h"
#include "screens/soft_key_bars.h"

namespace {

struct BarRow {
  UINT resource;
  HWND CAppController::*bar;
};

constexpr BarRow BARS[] = {
    {IDR_FORM_BAR, &CAppController::formBar},
    {IDR_EDITOR_BAR, &CAppController::editorBar},
    {IDR_THEME_LIST_BAR, &CAppController::themeListBar},
    {IDR_CHOOSER_BAR, &CAppController::chooserBar},
    {IDR_ABOUT_BAR, &CAppController::aboutBar},
};

HWND CreateBar(HWND window, UINT resource, HINSTANCE instance) noexcept {
  SHMENUBARINFO info = {};
  info.cbSize = sizeof info;
  info.hwndParent = window;
  info.nToolBarId = resource;
  info.hInstRes = instance;
  return SHCreateMenuBar(&info) ? info.hwndMB : nullptr;
}

}  // namespace

HRESULT CAppController::CreateSoftKeyBars(HWND window) noexcept {
  for (const BarRow& row : BARS) {
    this->*row.bar = CreateBar(window, row.resource, instance);
    if (!(this->*row.bar)) return E_OUTOFMEMORY;
    if (row.resource != IDR_THEME_LIST_BAR) ShowWindow(this->*row.bar, SW_HIDE);
  }
  OverrideBackKey(themeListBar);
  return S_OK;
}

void HideBars(const CAppController& controller) noexcept {
  for (const BarRow& row : BARS)
    if (controller.*row.bar) ShowWindow(controller.*row.bar, SW_HIDE);
}

void OverrideBackKey(HWND bar) noexcept {
  constexpr DWORD flags = SHMBOF_NODEFAULT | SHMBOF_NOTIFY;
  SendMessageW(bar, SHCMBM_OVERRIDEKEY, VK_TBACK, MAKELPARAM(flags, flags));
}

void LabelSoftKey(HWND bar, UINT command, LPCWSTR label) noexcept {
  FixedText<32> text;
  text.Assign(label);
  TBBUTTONINFO button = {};
  button.cbSize = sizeof button;
  button.dwMask = TBIF_TEXT;
  button.pszText = text.units;
  SendMessageW(bar, TB_SETBUTTONINFO, command, reinterpret_cast<LPARAM>(&button));
}
