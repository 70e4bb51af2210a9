#include <windows.h>
#include <shellapi.h>

#include "app/controller.h"

HRESULT CAppController::RunProgram(LPCWSTR program, LPCWSTR argument) noexcept {
  if (!program) return E_FAIL;
  SHELLEXECUTEINFOW request = {};
  request.cbSize = sizeof request;
  request.lpFile = program;
  request.lpParameters = argument;
  return ShellExecuteEx(&request) ? S_OK : HRESULT_FROM_WIN32(GetLastError());
}
