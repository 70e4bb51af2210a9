#include "screens/list_building.h"

#include <new>
#include <string_view>

#include "base/paths.h"
#include "themes/apply.h"

namespace {

/// The arguments of CScrollList::SetLayout, all but the number of rows in pixels.
struct ListGeometry {
  INT visibleRows;
  INT left;
  INT top;
  INT rowWidth;
  INT rowHeight;
};

constexpr ListGeometry PORTRAIT = {8, 11, 10, 220, 27};
constexpr ListGeometry LANDSCAPE = {5, 11, 10, 300, 27};
constexpr INT NOT_FOUND = -1;

/// The path of a picture; when it does not fit it is cut, and the picture does not load.
TextField ArtworkPath(LPCWSTR programFolder, LPCWSTR file) noexcept {
  TextField path;
  [[maybe_unused]] const bool whole = JoinPath(path, programFolder, file);
  return path;
}

void SelectNothingElse(CScrollList&) noexcept {}

/// Selects the theme that the phone uses. The first one is selected already.
void SelectThemeInUse(CScrollList& list, ThemeRecord* themes) noexcept {
  TextField inUse;
  if (FAILED(ReadScheme(inUse))) inUse.Assign(TEXT("none"));
  INT index = 0;
  INT found = NOT_FOUND;
  for (const ThemeRecord& theme : RingRange(themes)) {
    if (lstrcmpiW(theme.path, inUse) == 0) {
      // A disk may hold names that differ only in case; then the exact spelling is meant, else the first.
      const bool exact = std::basic_string_view<WCHAR>(theme.path) == LPCWSTR{inUse};
      if (exact || found == NOT_FOUND) found = index;
      if (exact) break;
    }
    ++index;
  }
  if (found > 0 && found < list.GetCount()) list.SelectIndex(found);
}

}  // namespace

HRESULT CreateScreenList(CAppController& controller, HWND window, std::unique_ptr<CScrollList>& slot) noexcept {
  slot.reset(new (std::nothrow) CScrollList);
  if (!slot) return E_OUTOFMEMORY;
  const ListGeometry& geometry = controller.landscape ? LANDSCAPE : PORTRAIT;
  slot->SetInvalidateCallback(InvalidateCallback, window);
  slot->SetLayout(geometry.visibleRows, geometry.left, geometry.top, geometry.rowWidth, geometry.rowHeight);
  const TextField folder = ProgramFolder(controller.instance);
  slot->CreateScrollBar(ArtworkPath(folder, TEXT("GFX\\pScroll.png")));
  slot->CreateHighlights(ArtworkPath(folder, TEXT("GFX\\pItem.png")),
                         ArtworkPath(folder, TEXT("GFX\\pItemSelect.png")));
  return S_OK;
}

HRESULT CAppController::BuildThemeList(HWND window) noexcept {
  return BuildList(*this, window, themeList, themeRecords, &ThemeRecord::title,
                   [this](CScrollList& list) { SelectThemeInUse(list, themeRecords); });
}

HRESULT CAppController::BuildPluginList(HWND window) noexcept {
  return BuildList(*this, window, pluginList, pluginRecords, &PluginRecord::name, SelectNothingElse);
}

HRESULT CAppController::BuildFavoriteList(HWND window) noexcept {
  return BuildList(*this, window, favoriteList, favoriteRecords, &PluginRecord::name, SelectNothingElse);
}
