#include "app/controller.h"

namespace {

constexpr DWORD FIELD_STYLE = WS_CHILD | WS_VISIBLE | WS_TABSTOP | ES_AUTOHSCROLL;
constexpr INT FIELD_MARGIN = 10;  // px, at both sides
constexpr INT FIELD_HEIGHT = 27;  // px

/// One field of a form.
struct FieldRow {
  LONG layout;
  HWND CAppController::*field;
  INT top;  // px, from the client area's top
};

constexpr FieldRow FIELDS[] = {
    {EDIT_LAYOUT_SAVE_THEME, &CAppController::titleEdit, 60},
    {EDIT_LAYOUT_SAVE_THEME, &CAppController::fileNameEdit, 140},
    {EDIT_LAYOUT_ADD_FAVORITE, &CAppController::favoriteNameEdit, 60},
};

}  // namespace

HRESULT CAppController::CreateEditFields(HWND window, HINSTANCE programInstance, const RECT& client,
                                         LONG layout) noexcept {
  const INT width = client.right - client.left - 2 * FIELD_MARGIN;
  for (const FieldRow& row : FIELDS) {
    if (row.layout != layout) continue;
    this->*row.field =
        CreateWindowExW(0, TEXT("EDIT"), nullptr, FIELD_STYLE, client.left + FIELD_MARGIN, client.top + row.top, width,
                        FIELD_HEIGHT, window, nullptr, programInstance, nullptr);
    if (!(this->*row.field)) return E_OUTOFMEMORY;
  }
  return S_OK;
}
