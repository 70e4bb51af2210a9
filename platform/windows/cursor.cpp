#include "windows/cursor.h"

#include "system/outside.h"
#include "system/scheduler.h"
#include "windows/desktop.h"

namespace phone {

namespace {

// Guarded by the scheduler's lock.
Cursor wanted = Cursor::none;
Cursor taken = Cursor::none;  ///< what the user-interface thread has last seen wanted

}  // namespace

void ResetCursor() {
  const SchedulerLock lock = LockScheduler();
  wanted = taken = Cursor::none;
}

bool CursorChangeWaits() {
  return wanted != taken;
}

void ShowWantedCursor() {
  {
    const SchedulerLock lock = LockScheduler();
    if (!CursorChangeWaits()) return;
    taken = wanted;
  }
  TheDesktop().shown_cursor = taken;
  MarkClientStale();
  CurrentHost().ShowCursor(taken);
}

}  // namespace phone

using namespace phone;

HCURSOR LoadCursorW(HINSTANCE, LPCWSTR name) {
  return name == IDC_WAIT ? reinterpret_cast<HCURSOR>(const_cast<WCHAR*>(name)) : nullptr;
}

HCURSOR SetCursor(HCURSOR cursor) {
  if (!DesktopExists()) return nullptr;
  return Guarded<HCURSOR>(nullptr, [cursor] {
    Cursor before;
    {
      const SchedulerLock lock = LockScheduler();
      before = wanted;
      wanted = cursor != nullptr ? Cursor::wait : Cursor::none;
    }
    if (OnUiThread())
      ShowWantedCursor();
    else
      NotifyScheduler();
    return before == Cursor::wait ? LoadCursorW(nullptr, IDC_WAIT) : nullptr;
  });
}
