#include "themes/catalog.h"

#include <shlobj.h>

#include <new>

#include "base/paths.h"
#include "themes/dom_walk.h"
#include "themes/file_search.h"
#include "themes/xml_reading.h"

namespace {

constexpr LPCWSTR LAYOUT_FILES = TEXT("*.home.xml");

/// Reads the title of every `home` element of the document, and tells whether there is one.
HRESULT ReadDocumentTitle(ThemeRecord& record, bool& isLayout) noexcept {
  return WalkElementsNamed(record.document.get(), HOME_ELEMENT, [&](IXMLDOMNode* home) {
    isLayout = true;
    return ReadThemeTitle(home, record.title);
  });
}

HRESULT AppendTheme(LPCWSTR path, LPCWSTR fileName, ThemeRecord*& themes) noexcept {
  std::unique_ptr<ThemeRecord> record(new (std::nothrow) ThemeRecord);
  if (!record) return E_OUTOFMEMORY;
  record->path.Assign(path);
  record->fileName.Assign(fileName);
  if (LoadXmlFile(path, record->document) != S_OK || !record->document) return S_OK;
  bool isLayout = false;
  RETURN_IF_FAILED(ReadDocumentTitle(*record, isLayout));
  if (isLayout) AppendToRing(themes, std::move(record));
  return S_OK;
}

}  // namespace

bool FindApplicationData(HWND window, FixedText<MAX_PATH>& folder) noexcept {
  return SHGetSpecialFolderPath(window, folder.units, CSIDL_APPDATA, FALSE) == TRUE;
}

HRESULT LoadThemeCatalog(LPCWSTR applicationData, ThemeRecord*& themes) noexcept {
  LongPath folder;
  ClearRing(themes);
  if (!JoinPath(folder, applicationData, THEME_FOLDER)) return S_OK;
  return VisitFiles(folder, LAYOUT_FILES,
                    [&](LPCWSTR path, LPCWSTR fileName) { return AppendTheme(path, fileName, themes); });
}
