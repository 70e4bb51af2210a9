// The motions that selecting, carrying and removing are made of.
#include <windows.h>

#include <span>
#include <utility>

#include "animation/list/motion.h"
#include "animation/list/way.h"
#include "base/ring.h"

namespace {

/// The properties of a motion, in the order of its tracks.
class PropertyList {
 public:
  explicit PropertyList(DWORD mask) noexcept {
    for (const DWORD property : {PROP_X, PROP_Y, PROP_WIDTH, PROP_HEIGHT, PROP_ALPHA})
      if ((mask & property) != 0) ids_[count_++] = property;
  }
  operator std::span<const DWORD>() const noexcept { return {ids_, count_}; }

 private:
  DWORD ids_[5] = {};
  std::size_t count_ = 0;
};

constexpr DWORD kGapFromAbove[] = {PROP_Y, PROP_ALPHA, PROP_HEIGHT};
constexpr DWORD kGapFromBelow[] = {PROP_Y, PROP_HEIGHT};

/// Sends a row to where another one is now.
void SendRow(CVisualGroup& row, const CVisualGroup& place, std::span<const DWORD> properties,
             DWORD startTick) noexcept {
  QueueStep(row, startTick, kRowDuration);
  for (const DWORD property : properties) QueueTrack(row, property, place.GetValue(property, VALUE_ABSOLUTE));
  StartQuietly(row);
}

}  // namespace

void CScrollList::FinishItemAnimations() noexcept {
  for (const ListItem& item : RingRange(firstItem)) item.row->FinishAnimation(FINISH_ALL);
}

HRESULT CScrollList::MoveHighlight(DWORD startTick) noexcept {
  if (!selected || !highlight) return E_OUTOFMEMORY;
  Slide(highlight.get(), startTick, kBarDuration, PROP_Y, highlightY);
  Slide(moveHighlight.get(), startTick, kBarDuration, PROP_Y, highlightY);
  firstItem->row->RequestFrame();
  return S_OK;
}

void CScrollList::RotateForward(DWORD mask, INT advance, DWORD startTick) noexcept {
  Rotate(kDown, mask, advance, startTick);
}

void CScrollList::RotateBackward(DWORD mask, INT retreat, DWORD startTick) noexcept {
  Rotate(kUp, mask, retreat, startTick);
}

/// Finishing and starting a row at one go reuses the memory of its last motion while that is still at hand. A row is
/// finished before the one ahead of it asks for its place.
void CScrollList::Rotate(const Way& way, DWORD mask, INT advance, DWORD startTick) noexcept {
  if (!firstItem) return;
  const PropertyList properties(mask);
  (firstItem->*way.behind)->row->FinishAnimation(FINISH_ALL);
  const ListItem* item = firstItem;
  do {
    item->row->FinishAnimation(FINISH_ALL);
    SendRow(*item->row, *(item->*way.behind)->row, properties, startTick);
    item = item->*way.ahead;
  } while (item != firstItem);
  if (advance == 1) selected = selected->*way.ahead;
}

void CScrollList::SwapWithNext(DWORD mask, DWORD startTick) noexcept {
  Swap(kDown, mask, startTick);
}

void CScrollList::SwapWithPrevious(DWORD mask, DWORD startTick) noexcept {
  Swap(kUp, mask, startTick);
}

void CScrollList::Swap(const Way& way, DWORD mask, DWORD startTick) noexcept {
  if (!selected || selected->next == selected) return;
  FinishItemAnimations();
  const PropertyList properties(mask);
  ListItem* const other = selected->*way.ahead;
  SendRow(*selected->row, *other->row, properties, startTick);
  SendRow(*other->row, *selected->row, properties, startTick);
  std::swap(selected->row, other->row);
  std::swap(selected->value, other->value);
  std::swap(selected->data, other->data);
  selected = other;
}

void CScrollList::UpdateScrollBar(DWORD startTick) noexcept {
  if (!scrollBar) return;
  scrollBar->FinishAnimation(FINISH_ALL);
  const std::int64_t offset = std::int64_t{selectedIndex - selectedRow} * rowHeight;
  const std::int64_t view = std::int64_t{rowHeight} * visibleRows;
  const std::int64_t content = std::int64_t{rowHeight} * itemCount;
  if (content <= view) {
    scrollBar->SetVisible(0);
    return;
  }
  scrollBar->SetVisible(1);
  const INT thumbTop = top + static_cast<INT>(offset * view / content);
  QueueStep(*scrollBar, startTick, kRowDuration);
  QueueTrack(*scrollBar, PROP_Y, thumbTop + rowHeight);
  QueueTrack(*scrollBar, PROP_HEIGHT, static_cast<INT>(view * view / content));
  StartQuietly(*scrollBar);
  scrollBar->RequestFrame();
}

void CScrollList::ToggleMoveMode() noexcept {
  const DWORD now = GetTickCount();
  if (selected) selected->row->FinishAnimation(FINISH_ALL);
  moveMode = moveMode == 0 ? 1 : 0;
  const bool entering = moveMode == 1;
  Slide(moveHighlight.get(), now, kRowDuration, PROP_ALPHA, entering ? ALPHA_OPAQUE : ALPHA_TRANSPARENT);
  Slide(highlight.get(), now, kRowDuration, PROP_ALPHA, entering ? ALPHA_TRANSPARENT : ALPHA_OPAQUE);
  if (highlight) highlight->RequestFrame();
}

/// The rows above slide into the gap, from the one above the view on.
void CScrollList::CloseGapFromAbove(DWORD startTick) noexcept {
  for (const ListItem* item = firstItem->next; item != selected; item = item->next)
    SendRow(*item->row, *item->next->row, kGapFromAbove, startTick);
}

void CScrollList::CloseGapFromBelow(DWORD startTick) noexcept {
  for (const ListItem* item = selected->next; item != firstItem; item = item->next)
    SendRow(*item->row, *item->prev->row, kGapFromBelow, startTick);
}

void CScrollList::RemoveSelected() noexcept {
  const DWORD now = GetTickCount();
  if (moveMode == 1) ToggleMoveMode();
  if (itemCount == 0) return;
  ListItem* remaining = selected->prev;
  if (itemCount > 1) {
    FinishItemAnimations();
    // Items above the view are at hand to fill it; only without them the rows below move up.
    const bool scrolled = selectedIndex > selectedRow;
    if (scrolled) {
      CloseGapFromAbove(now);
    } else {
      CloseGapFromBelow(now);
      if (selectedRow > 0) --selectedRow;
    }
    if (selectedIndex == 0) {
      remaining = selected->next;
    } else if (!scrolled) {
      highlightY = remaining->row->y.current;
    }
    Slide(highlight.get(), now, kBarDuration, PROP_Y, highlightY);
    Slide(moveHighlight.get(), now, kBarDuration, PROP_Y, highlightY);
  }
  [[maybe_unused]] const std::unique_ptr<ListItem> removed = TakeFromRing(firstItem, selected);
  selected = remaining;
  --itemCount;
  if (selectedIndex > 0) --selectedIndex;
  UpdateScrollBar(now);
}
