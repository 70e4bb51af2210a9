// Moving the selection, one row at a time or many at once.
#include <windows.h>

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "animation/list/motion.h"
#include "animation/list/way.h"
#include "base/ring.h"

namespace {

constexpr DWORD kRowsStay = PROP_ALPHA;  // opacities are all the same
constexpr DWORD kRowsScroll = PROP_Y | PROP_HEIGHT | PROP_ALPHA;
constexpr DWORD kRowsScrollCarrying = PROP_Y | PROP_HEIGHT;
constexpr INT kStaySelected = 0;
constexpr INT kSelectNext = 1;

/// Makes the current place the committed one, as the end of an animation does.
void SettleRow(CVisualGroup& row) noexcept {
  row.y.base = row.y.current;
  row.height.base = row.height.current;
  row.PropagateCurrent();
}

}  // namespace

void CScrollList::MoveUp() noexcept {
  Move(kUp, moveMode == 1);
}

void CScrollList::MoveDown() noexcept {
  Move(kDown, moveMode == 1);
}

bool CScrollList::IsAtEnd(const Way& way) const noexcept {
  return itemCount == 0 || selectedIndex == (way.step > 0 ? itemCount - 1 : 0);
}

/// How many rows of the view lie ahead of the selected one.
INT CScrollList::RowsAhead(const Way& way) const noexcept {
  return std::max(way.step > 0 ? visibleRows - 1 - selectedRow : selectedRow, 0);
}

void CScrollList::Move(const Way& way, bool carry) noexcept {
  const DWORD now = GetTickCount();
  if (IsAtEnd(way)) return;
  selectedIndex += way.step;
  if (RowsAhead(way) > 0) {
    selectedRow += way.step;
    CVisualGroup& target = *(selected->*way.ahead)->row;
    target.FinishAnimation(FINISH_ALL);
    highlightY = target.y.current;
    if (carry) {
      Swap(way, PROP_Y, now);
    } else {
      Rotate(way, kRowsStay, kSelectNext, now);
    }
  } else if (carry) {
    Swap(way, PROP_Y, now);
    Rotate(way, kRowsScrollCarrying, kStaySelected, now);
  } else {
    Rotate(way, kRowsScroll, kSelectNext, now);
  }
  UpdateScrollBar(now);
  Unexamined(MoveHighlight(now));
}

void CScrollList::SelectIndex(INT index) noexcept {
  index = std::min(std::max(index, 1), itemCount);
  const Way& way = index > selectedIndex ? kDown : kUp;
  const INT moves = (std::min(index, itemCount - 1) - selectedIndex) * way.step;
  constexpr bool kLeaveItems = false;
  if (moves > 1) SkipMoves(way, moves - 1);
  if (moves > 0) Move(way, kLeaveItems);
}

/// The row that many places ahead of another, or behind it; reached by the shorter way round the ring.
ListItem* CScrollList::Ahead(const Way& way, ListItem* item, INT places) const noexcept {
  const INT rows = itemCount + kSpacerCount;
  if (places > rows / 2) places -= rows;
  if (places < -rows / 2) places += rows;
  ListItem* ListItem::*const link = places > 0 ? way.ahead : way.behind;
  for (INT steps = std::abs(places); steps > 0; --steps) item = item->*link;
  return item;
}

/// Reaches directly what that many single moves leave behind for the next one to finish: first the selection goes to
/// the end of the view, then the rows scroll.
void CScrollList::SkipMoves(const Way& way, INT moves) noexcept {
  const DWORD now = GetTickCount();
  FinishItemAnimations();
  const INT inView = std::min(moves, RowsAhead(way));
  if (inView > 0) {
    selected = Ahead(way, selected, inView);
    highlightY = selected->row->y.current;
  }
  selectedRow += inView * way.step;
  selectedIndex += moves * way.step;
  selected = Ahead(way, selected, moves - inView);
  RotateSettledRows(way, moves - inView);
  UpdateScrollBar(now);
  Unexamined(MoveHighlight(now));
  firstItem->row->Invalidate(INVALIDATE_DONE);
}

/// Every row takes the place of the one that many rows behind it. The rows are at rest, so that a row which has its new
/// place still tells its old one by the committed values.
void CScrollList::RotateSettledRows(const Way& way, INT places) noexcept {
  const ListItem* from = Ahead(way, firstItem, -places);
  for (const ListItem& item : RingRange(firstItem)) {
    item.row->y.current = from->row->y.base;
    item.row->height.current = from->row->height.base;
    from = from->next;
  }
  for (const ListItem& item : RingRange(firstItem)) SettleRow(*item.row);
}
