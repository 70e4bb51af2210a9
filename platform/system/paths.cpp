/// \file
/// The path helpers and special folders of shlwapi.h and shlobj.h.
#include <string_view>

#include "shlobj.h"
#include "shlwapi.h"
#include "system/faults.h"
#include "system/files.h"

namespace {

/// Where the last element of a path begins.
std::size_t LastElement(std::u16string_view path) {
  const std::size_t separator = path.rfind(u'\\');
  return separator == std::u16string_view::npos ? 0 : separator + 1;
}

}  // namespace

BOOL SHGetSpecialFolderPath(HWND, LPWSTR path, int folder, BOOL) {
  if (phone::FaultDue(phone::Operation::SHGetSpecialFolderPath)) return FALSE;
  if (!path || folder != CSIDL_APPDATA) return FALSE;
  path[phone::kApplicationData.copy(path, MAX_PATH - 1)] = u'\0';
  return TRUE;
}

BOOL PathRemoveFileSpecW(LPWSTR path) {
  if (!path || !*path) return FALSE;
  const std::size_t element = LastElement(path);
  // The root keeps its separator: it would not be a path without it.
  const std::size_t length = element > 1 ? element - 1 : element;
  const bool cut = path[length] != u'\0';
  path[length] = u'\0';
  return cut;
}

void PathRemoveExtensionW(LPWSTR path) {
  if (!path) return;
  const std::u16string_view text(path);
  const std::size_t dot = text.rfind(u'.');
  if (dot != std::u16string_view::npos && dot >= LastElement(text)) path[dot] = u'\0';
}
