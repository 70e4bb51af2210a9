#include "app/controller.h"
#include "base/status.h"
#include "themes/apply.h"

namespace {

/// The worker's entry. A controller without the worker's handle has given up on it.
DWORD WINAPI ApplyThemeWorker(LPVOID parameter) noexcept {
  CAppController* const controller = static_cast<CAppController*>(parameter);
  if (!controller || !controller->applyThread.load()) return 0;
  Unexamined(ApplyScheme(controller->applyPath));
  EndApply(controller->applyThread);
  return 0;
}

}  // namespace

void CAppController::StartApplyTheme(LPCWSTR path) noexcept {
  if (applyThread.load()) return;
  // The last worker, if there was one, has done its work: it only has to return.
  WaitForWorker(applyWait);
  applyPath.Assign(path);
  StartWorker(ApplyThemeWorker, this, applyThread, applyWait);
}
