/// \file
/// The program's list: a column of text rows, a selection bar that slides from row to row, a scroll thumb, and a move
/// mode in which the selected row is carried.
///
/// Rows stand in a ring behind four hidden spacer rows. The list has no viewport that shifts: every row group carries
/// its own geometry, and scrolling hands each row the geometry of its neighbour, so that the places rotate around the
/// ring while the items keep their order. The spacers hold the places outside the view: the row above it, two places to
/// the left of the screen, and the row below it.
///
/// Call order: SetInvalidateCallback, SetLayout, CreateScrollBar, CreateHighlights, AddItem for each item, then
/// SelectIndex if wanted, then UpdateScrollBar.
#pragma once

#include <memory>

#include "visuals/visual_group.h"

/// One row.
struct ListItem {
  LPVOID data = nullptr;  ///< the caller's record, not owned; null for a spacer
  INT value = 0;          ///< the caller's number
  std::unique_ptr<CVisualGroup> row;
  ListItem* next = nullptr;  ///< the row below
  ListItem* prev = nullptr;  ///< the row above
};

class CScrollList {
 public:
  CScrollList() noexcept = default;
  CScrollList(const CScrollList&) = delete;
  CScrollList& operator=(const CScrollList&) = delete;
  ~CScrollList();

  // --- Building and reading (scroll_list.cpp) ---

  /// Handed to every group that the list makes from now on.
  void SetInvalidateCallback(InvalidateProc callback, LPVOID context) noexcept;
  /// All but the number of rows in pixels; `newTop` is the y of the hidden row above the view.
  void SetLayout(INT newVisibleRows, INT newLeft, INT newTop, INT newRowWidth, INT newRowHeight) noexcept;
  /// Makes the scroll thumb. Without its picture it draws nothing.
  void CreateScrollBar(LPCWSTR imagePath) noexcept;
  /// Makes the selection bar and the bar of move mode; the first picture that fails to load ends it.
  void CreateHighlights(LPCWSTR imagePath, LPCWSTR moveImagePath) noexcept;
  /// Adds a row at the end; the first one is selected. E_OUTOFMEMORY leaves the list as it was.
  [[nodiscard]] HRESULT AddItem(LPCWSTR text, INT value, LPVOID data) noexcept;
  /// The selected item's record, or null.
  LPVOID GetSelectedData() const noexcept;
  INT GetCount() const noexcept;
  void BeginIteration() noexcept;
  /// 1 and the next item's record and number, in list order; 0 at the end.
  INT NextItem(LPVOID* data, INT* value) noexcept;
  void Draw(HDC dc) noexcept;
  /// Frees everything the list owns.
  void Destroy() noexcept;

  // --- Motions (list_motions.cpp, list_selection.cpp); each first completes the motions still running ---

  /// Selects the previous or next item, or carries the selected one there in move mode. Nothing happens at the ends.
  void MoveUp() noexcept;
  void MoveDown() noexcept;
  /// Moves the selection as repeated single moves would, of which only the last is seen; in move mode too it carries
  /// nothing. `index` counts from 0; below 1 it is taken as 1, and from the last item on it means the last item.
  void SelectIndex(INT index) noexcept;
  void ToggleMoveMode() noexcept;
  /// Removes the selected item and closes the gap; ends move mode.
  void RemoveSelected() noexcept;
  /// Shows, sizes and places the thumb, or hides it when everything fits in the view. `startTick` in milliseconds.
  void UpdateScrollBar(DWORD startTick) noexcept;

  void FinishItemAnimations() noexcept;
  /// Slides both bars to `highlightY`. E_OUTOFMEMORY without a selection or bar.
  [[nodiscard]] HRESULT MoveHighlight(DWORD startTick) noexcept;
  /// Every row takes the values in `mask` (PropertyId bits) of the row before it; 1 also selects the next row.
  void RotateForward(DWORD mask, INT advance, DWORD startTick) noexcept;
  /// The same with the row after it, and the previous row.
  void RotateBackward(DWORD mask, INT retreat, DWORD startTick) noexcept;
  /// The selected item and its neighbour exchange places.
  void SwapWithNext(DWORD mask, DWORD startTick) noexcept;
  void SwapWithPrevious(DWORD mask, DWORD startTick) noexcept;

  INT iterIndex = 0;
  ListItem* iterCursor = nullptr;
  ListItem* firstItem = nullptr;  ///< head of the ring, the first spacer; owns the ring
  ListItem* selected = nullptr;
  std::unique_ptr<CVisualGroup> highlight;
  std::unique_ptr<CVisualGroup> moveHighlight;
  INT highlightY = 0;     ///< px, where both bars travel to
  INT visibleRows = 0;    ///< rows in view
  INT rowHeight = 0;      ///< px
  INT rowWidth = 0;       ///< px
  INT left = 0;           ///< px
  INT top = 0;            ///< px, of the hidden row above the view
  INT selectedRow = 0;    ///< within the view, from 0
  INT selectedIndex = 0;  ///< among the items, from 0
  INT itemCount = 0;
  INT moveMode = 0;  ///< 1 while move mode is on
  InvalidateProc invalidateCallback = nullptr;
  LPVOID invalidateContext = nullptr;
  std::unique_ptr<CVisualGroup> scrollBar;

 private:
  struct Way;
  static const Way kDown;
  static const Way kUp;
  static constexpr INT kSpacerCount = 4;  ///< rows of the ring that are no items

  [[nodiscard]] HRESULT AddMissingSpacers() noexcept;
  void PlaceFirstHighlights(const CVisualGroup& row) noexcept;
  bool IsAtEnd(const Way& way) const noexcept;
  INT RowsAhead(const Way& way) const noexcept;
  void Move(const Way& way, bool carry) noexcept;
  ListItem* Ahead(const Way& way, ListItem* item, INT places) const noexcept;
  void SkipMoves(const Way& way, INT moves) noexcept;
  void RotateSettledRows(const Way& way, INT places) noexcept;
  void Rotate(const Way& way, DWORD mask, INT advance, DWORD startTick) noexcept;
  void Swap(const Way& way, DWORD mask, DWORD startTick) noexcept;
  void CloseGapFromAbove(DWORD startTick) noexcept;
  void CloseGapFromBelow(DWORD startTick) noexcept;
};
