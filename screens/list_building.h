/// \file
/// How the three list screens build their lists: one look and one geometry, a row for each record of a ring.
#pragma once

#include "app/controller.h"
#include "base/status.h"

/// Makes an empty list in the slot with the screens' geometry and artwork. E_OUTOFMEMORY when it cannot be allocated.
[[nodiscard]] HRESULT CreateScreenList(CAppController& controller, HWND window,
                                       std::unique_ptr<CScrollList>& slot) noexcept;

/// Makes the list in the slot anew: one row for each record, in ring order, with the given text. `select` may then move
/// the selection. E_OUTOFMEMORY, and no list, for an empty ring; rows made before a failure stay.
template <typename Record, typename Select>
[[nodiscard]] HRESULT BuildList(CAppController& controller, HWND window, std::unique_ptr<CScrollList>& slot,
                                Record* records, TextField Record::*text, Select&& select) noexcept {
  // The thumb's motion starts now: the time spent building counts as elapsed.
  const DWORD startTick = GetTickCount();
  slot.reset();
  if (!records) return E_OUTOFMEMORY;
  RETURN_IF_FAILED(CreateScreenList(controller, window, slot));
  for (Record& record : RingRange(records)) RETURN_IF_FAILED(slot->AddItem(record.*text, 0, &record));
  select(*slot);
  slot->UpdateScrollBar(startTick);
  return S_OK;
}
