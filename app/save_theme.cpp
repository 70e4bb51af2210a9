#include "app/controller.h"
#include "app/form_input.h"
#include "app/messages.h"
#include "base/paths.h"
#include "base/status.h"
#include "themes/catalog.h"
#include "themes/writer.h"

namespace {

constexpr int SHORTEST_TITLE = 2;      // code units
constexpr int SHORTEST_FILE_NAME = 5;  // code units

/// The path of a layout file; false when it does not fit.
bool ThemePath(LPCWSTR applicationData, LPCWSTR fileName, TextField& path) noexcept {
  LongPath folder;
  return JoinPath(folder, applicationData, THEME_FOLDER) && JoinPath(path, folder, fileName);
}

HRESULT Refuse(CAppController& controller, LPCWSTR text) noexcept {
  controller.ShowNotice(text);
  return E_FAIL;
}

/// Refuses a title or file name that is empty (without a word) or too short.
HRESULT CheckFields(CAppController& controller, LPCWSTR title, LPCWSTR fileName) noexcept {
  const int titleLength = lstrlenW(title);
  const int fileNameLength = lstrlenW(fileName);
  if (titleLength == 0 || fileNameLength == 0) return E_FAIL;
  if (titleLength < SHORTEST_TITLE) return Refuse(controller, MESSAGE_TITLE_TOO_SHORT);
  if (fileNameLength < SHORTEST_FILE_NAME) return Refuse(controller, MESSAGE_FILE_NAME_TOO_SHORT);
  return S_OK;
}

}  // namespace

HRESULT CAppController::SaveThemeAs() noexcept {
  const ThemeRecord* const theme = SelectedTheme();
  if (!theme) return E_OUTOFMEMORY;
  FixedText<MAX_PATH> applicationData;
  if (!FindApplicationData(mainWindow, applicationData)) return E_FAIL;
  const TextField title = ReadEditText(titleEdit);
  const TextField fileName = ReadEditText(fileNameEdit);
  RETURN_IF_FAILED(CheckFields(*this, title, fileName));
  TextField path;
  if (!ThemePath(applicationData, fileName, path)) return Refuse(*this, MESSAGE_SAVE_FAILED);
  if (FileExists(path) && !Ask(MESSAGE_OVERWRITE)) return E_FAIL;
  if (FAILED(WriteThemeFile(theme->document.get(), title, path, pluginList.get())))
    return Refuse(*this, MESSAGE_SAVE_FAILED);
  if (Ask(MESSAGE_APPLY_SAVED)) StartApplyTheme(path);
  return S_OK;
}
