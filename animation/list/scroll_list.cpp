#include "animation/list/scroll_list.h"

#include <new>
#include <utility>

#include "base/ring.h"
#include "base/status.h"

namespace {

constexpr INT kOffScreen = 240;   // px to the left of the rows
constexpr INT kTextIndent = 5;    // px
constexpr INT kRowFontSize = 12;  // points
constexpr COLORREF kRowTextColor = 0xFFFFFF;
constexpr INT kScrollBarGap = 2;    // px right of the rows
constexpr INT kScrollBarWidth = 5;  // px
constexpr DWORD kPlainTag = 1;      // of the bars and the thumb

struct RowPlace {
  INT x;
  INT y;
  INT height;
  INT width;
};

/// A row that cannot have its text has none.
void AddRowText(CVisualGroup& row, const RowPlace& place, INT indent, LPCWSTR text) noexcept {
  std::unique_ptr<CTextVisual> visual(new (std::nothrow) CTextVisual);
  if (!visual) return;
  visual->SetPosition(indent, 0);
  visual->SetSize(place.height, place.width);
  visual->SetFormat(TEXT_FORMAT, kRowFontSize);
  visual->SetText(text);
  visual->SetTransparent(1);
  visual->SetColor(kRowTextColor);
  visual->SetFontFace(TEXT("Verdana"));
  if (SUCCEEDED(row.AddText(visual.get(), ANCHOR_SCALE))) static_cast<void>(visual.release());
}

/// A row with its text, or null.
std::unique_ptr<CVisualGroup> MakeRow(DWORD tag, const RowPlace& place, INT indent, LPCWSTR text) noexcept {
  std::unique_ptr<CVisualGroup> row(new (std::nothrow) CVisualGroup(tag, place.x, place.y, place.height, place.width));
  if (!row) return nullptr;
  AddRowText(*row, place, indent, text);
  row->SetGroupAlpha(ALPHA_OPAQUE);
  return row;
}

std::unique_ptr<CImageVisual> MakeImage(INT height, INT width) noexcept {
  std::unique_ptr<CImageVisual> image(new (std::nothrow) CImageVisual);
  if (!image) return nullptr;
  image->SetPosition(0, 0);
  image->SetSize(height, width);
  return image;
}

HRESULT GiveImage(CVisualGroup& group, std::unique_ptr<CImageVisual> image) noexcept {
  RETURN_IF_FAILED(group.AddImage(image.get(), ANCHOR_SCALE));
  static_cast<void>(image.release());
  return S_OK;
}

/// Makes a selection bar; fails when it stays without its picture.
HRESULT MakeHighlight(std::unique_ptr<CVisualGroup>& bar, INT height, INT width, LPCWSTR imagePath) noexcept {
  bar.reset(new (std::nothrow) CVisualGroup(kPlainTag, 0, 0, height, width));
  if (!bar) return E_OUTOFMEMORY;
  std::unique_ptr<CImageVisual> image = MakeImage(height, width);
  if (!image) return E_OUTOFMEMORY;
  RETURN_IF_FAILED(image->Load(imagePath));
  return GiveImage(*bar, std::move(image));
}

}  // namespace

CScrollList::~CScrollList() {
  Destroy();
}

void CScrollList::SetInvalidateCallback(InvalidateProc callback, LPVOID context) noexcept {
  invalidateCallback = callback;
  invalidateContext = context;
}

void CScrollList::SetLayout(INT newVisibleRows, INT newLeft, INT newTop, INT newRowWidth, INT newRowHeight) noexcept {
  visibleRows = newVisibleRows;
  left = newLeft;
  top = newTop;
  rowWidth = newRowWidth;
  rowHeight = newRowHeight;
}

void CScrollList::CreateScrollBar(LPCWSTR imagePath) noexcept {
  const INT height = rowHeight * visibleRows;
  scrollBar.reset(new (std::nothrow) CVisualGroup(kPlainTag, left + rowWidth + kScrollBarGap, top + rowHeight, height,
                                                  kScrollBarWidth));
  if (!scrollBar) return;
  if (std::unique_ptr<CImageVisual> image = MakeImage(height, kScrollBarWidth)) {
    Unexamined(image->Load(imagePath));
    Unexamined(GiveImage(*scrollBar, std::move(image)));
  }
  scrollBar->SetInvalidateCallback(invalidateCallback, invalidateContext);
}

void CScrollList::CreateHighlights(LPCWSTR imagePath, LPCWSTR moveImagePath) noexcept {
  if (FAILED(MakeHighlight(highlight, rowHeight, rowWidth, imagePath))) return;
  if (FAILED(MakeHighlight(moveHighlight, rowHeight, rowWidth, moveImagePath))) return;
  // The other bar always moves together with this one, whose frames serve both.
  highlight->SetInvalidateCallback(invalidateCallback, invalidateContext);
}

/// Spacers go in first; an attempt that ran out of memory is completed by the next one.
HRESULT CScrollList::AddMissingSpacers() noexcept {
  const RowPlace places[kSpacerCount] = {
      {left, top + (visibleRows + 1) * rowHeight, rowHeight, rowWidth},
      {left - kOffScreen, top + (visibleRows + 2) * rowHeight, 1, rowWidth},
      {left - kOffScreen, top, 1, rowWidth},
      {left, top, rowHeight, rowWidth},
  };
  INT present = 0;
  for ([[maybe_unused]] const ListItem& spacer : RingRange(firstItem)) ++present;
  for (INT index = present; index < kSpacerCount; ++index) {
    std::unique_ptr<ListItem> spacer(new (std::nothrow) ListItem);
    if (!spacer) return E_OUTOFMEMORY;
    spacer->row = MakeRow(static_cast<DWORD>(index + 1), places[index], 0, TEXT(""));
    if (!spacer->row) return E_OUTOFMEMORY;
    spacer->row->SetInvalidateCallback(invalidateCallback, invalidateContext);
    AppendToRing(firstItem, std::move(spacer));
    if (!selected) selected = firstItem;
  }
  return S_OK;
}

HRESULT CScrollList::AddItem(LPCWSTR text, INT value, LPVOID data) noexcept {
  INT y = top + rowHeight;
  if (itemCount == 0) {
    RETURN_IF_FAILED(AddMissingSpacers());
  } else {
    CVisualGroup& last = *firstItem->prev->row;
    last.FinishAnimation(FINISH_ALL);
    y = last.y.current + rowHeight;
  }

  std::unique_ptr<CVisualGroup> row =
      MakeRow(static_cast<DWORD>(itemCount + 1), {left, y, rowHeight, rowWidth}, kTextIndent, text);
  if (!row) return E_OUTOFMEMORY;
  std::unique_ptr<ListItem> item(new (std::nothrow) ListItem);
  if (!item) return E_OUTOFMEMORY;
  item->data = data;
  item->value = value;
  item->row = std::move(row);
  item->row->SetInvalidateCallback(invalidateCallback, invalidateContext);
  AppendToRing(firstItem, std::move(item));
  ++itemCount;

  if (itemCount == 1) {
    selected = firstItem->prev;
    PlaceFirstHighlights(*selected->row);
  }
  return S_OK;
}

void CScrollList::PlaceFirstHighlights(const CVisualGroup& row) noexcept {
  highlightY = row.y.current;
  const auto place = [&row](CVisualGroup* bar, INT opacity) {
    if (!bar) return;
    bar->FinishAnimation(FINISH_ALL);
    bar->SetGroupAlpha(opacity);
    bar->MoveTo(row.x.current, row.y.current);
  };
  place(moveHighlight.get(), ALPHA_TRANSPARENT);
  place(highlight.get(), ALPHA_OPAQUE);
}

LPVOID CScrollList::GetSelectedData() const noexcept {
  return selected ? selected->data : nullptr;
}

INT CScrollList::GetCount() const noexcept {
  return itemCount;
}

void CScrollList::BeginIteration() noexcept {
  iterIndex = 0;
  iterCursor = firstItem;
  for (INT spacer = 0; spacer < kSpacerCount && iterCursor; ++spacer) iterCursor = iterCursor->next;
}

INT CScrollList::NextItem(LPVOID* data, INT* value) noexcept {
  if (iterIndex >= itemCount || !iterCursor) return 0;
  *data = iterCursor->data;
  *value = iterCursor->value;
  ++iterIndex;
  iterCursor = iterCursor->next;
  return 1;
}

void CScrollList::Draw(HDC dc) noexcept {
  if (moveHighlight) moveHighlight->Draw(dc, VALUE_ABSOLUTE);
  if (highlight) highlight->Draw(dc, VALUE_ABSOLUTE);
  for (const ListItem& item : RingRange(firstItem)) item.row->Draw(dc, VALUE_ABSOLUTE);
  if (scrollBar) scrollBar->Draw(dc, VALUE_ABSOLUTE);
}

void CScrollList::Destroy() noexcept {
  ClearRing(firstItem);
  selected = iterCursor = nullptr;
  itemCount = selectedIndex = selectedRow = 0;
  scrollBar.reset();
  highlight.reset();
  moveHighlight.reset();
}
