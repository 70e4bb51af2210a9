/// \file
/// Searching a folder for files.
#pragma once

#include <windows.h>

#include "base/paths.h"
#include "base/status.h"

/// Owns a running directory search.
class FileSearch {
 public:
  explicit FileSearch(HANDLE handle) noexcept : handle_(handle) {}
  FileSearch(const FileSearch&) = delete;
  FileSearch& operator=(const FileSearch&) = delete;
  ~FileSearch() {
    if (Started() && !Empty()) FindClose(handle_);
  }

  bool Started() const noexcept { return handle_ != nullptr; }
  bool Empty() const noexcept { return handle_ == INVALID_HANDLE_VALUE; }
  bool Next(WIN32_FIND_DATAW& found) const noexcept { return FindNextFileW(handle_, &found) != FALSE; }

 private:
  HANDLE handle_;
};

/// Visits, in the file system's order, every regular file of `folder` whose name matches
/// the pattern: visit(full path, bare name). A file whose path does not fit a text field is left out. A folder that is
/// missing or has no match is a success; E_OUTOFMEMORY when the search cannot be made at all. Ends with the first
/// failure of a visitor.
template <typename Visitor>
[[nodiscard]] HRESULT VisitFiles(LPCWSTR folder, LPCWSTR pattern, Visitor&& visit) noexcept {
  LongPath mask;
  if (!JoinPath(mask, folder, pattern)) return S_OK;
  WIN32_FIND_DATAW found = {};
  const FileSearch search(FindFirstFileW(mask, &found));
  if (!search.Started()) return E_OUTOFMEMORY;
  if (search.Empty()) return S_OK;
  do {
    TextField path;
    const bool isFile = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
    if (isFile && JoinPath(path, folder, found.cFileName)) RETURN_IF_FAILED(visit(path, found.cFileName));
  } while (search.Next(found));
  return S_OK;
}
