#include "app/messages.h"

#include "app/controller.h"

void CAppController::ShowNotice(LPCWSTR text) noexcept {
  boxOpen = true;
  MessageBoxW(mainWindow, text, MESSAGE_CAPTION, MB_OK | MB_ICONEXCLAMATION);
  boxOpen = false;
}

bool CAppController::Ask(LPCWSTR text) noexcept {
  boxOpen = true;
  const int answer = MessageBoxW(mainWindow, text, MESSAGE_CAPTION, MB_YESNO | MB_ICONQUESTION);
  boxOpen = false;
  return answer == IDYES;
}
