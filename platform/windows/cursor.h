/// \file
/// The cursor: any thread sets it, the user-interface thread has the host show it.
#pragma once

namespace phone {

/// Forgets what an earlier run wanted shown.
void ResetCursor();
/// Whether a cursor is wanted that the host does not show yet. Under the scheduler's lock.
bool CursorChangeWaits();
/// Has the host show the cursor that is wanted, and the screen its mark. User-interface thread.
void ShowWantedCursor();

}  // namespace phone
