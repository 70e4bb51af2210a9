/// \file
/// Searching folders.
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <tuple>

#include "system/faults.h"
#include "system/handles.h"
#include "system/text.h"
#include "system/volume.h"

namespace phone {

namespace {

/// Where file times count from: 1601, in units of 100 nanoseconds.
constexpr std::int64_t kSecondsBefore1970 = 11'644'473'600;
constexpr std::int64_t kUnitsPerSecond = 10'000'000;

struct Match {
  std::u16string folded;
  std::u16string name;
  bool is_folder;
  std::uint64_t size;
  std::uint64_t created;
  std::uint64_t accessed;
  std::uint64_t written;
};

/// A search in progress: all that matched when it began.
struct Search : KernelObject {
  std::vector<Match> matches;
  std::size_t next = 0;
};

std::uint64_t UnitsOf(const timespec& time) {
  return static_cast<std::uint64_t>((time.tv_sec + kSecondsBefore1970) * kUnitsPerSecond + time.tv_nsec / 100);
}

FILETIME FileTimeOf(std::uint64_t units) {
  return {static_cast<DWORD>(units), static_cast<DWORD>(units >> 32)};
}

Match MakeMatch(int folder, const FolderEntry& entry) {
  struct stat status = {};
  fstatat(folder, entry.disk_name.c_str(), &status, AT_SYMLINK_NOFOLLOW);
  const bool is_folder = entry.kind == Kind::folder;
  const std::uint64_t size = is_folder ? 0 : static_cast<std::uint64_t>(status.st_size);
  return {entry.folded,           entry.name, is_folder, size, UnitsOf(status.st_ctim), UnitsOf(status.st_atim),
          UnitsOf(status.st_mtim)};
}

DWORD FindMatches(const PhonePath& folder, std::u16string_view pattern, std::vector<Match>& matches) {
  std::vector<FolderSource> sources;
  if (const DWORD error = OpenSources(folder, sources)) return error;
  const std::u16string folded = FoldCase(pattern);
  for (const FolderSource& source : sources) {
    const auto listing = ListFolder(source.folder.get());
    for (const FolderEntry& entry : *listing)
      if (entry.kind != Kind::other && source.shows(entry) && MatchesPattern(entry.folded, folded))
        matches.push_back(MakeMatch(source.folder.get(), entry));
  }
  if (sources.size() > 1)
    std::sort(matches.begin(), matches.end(),
              [](const Match& a, const Match& b) { return std::tie(a.folded, a.name) < std::tie(b.folded, b.name); });
  return matches.empty() ? ERROR_FILE_NOT_FOUND : ERROR_SUCCESS;
}

void Describe(const Match& match, WIN32_FIND_DATAW& found) {
  found = {};
  found.dwFileAttributes = match.is_folder ? FILE_ATTRIBUTE_DIRECTORY : FILE_ATTRIBUTE_NORMAL;
  found.ftCreationTime = FileTimeOf(match.created);
  found.ftLastAccessTime = FileTimeOf(match.accessed);
  found.ftLastWriteTime = FileTimeOf(match.written);
  found.nFileSizeHigh = static_cast<DWORD>(match.size >> 32);
  found.nFileSizeLow = static_cast<DWORD>(match.size);
  match.name.copy(found.cFileName, MAX_PATH - 1);
}

HANDLE BeginSearch(LPCWSTR path, WIN32_FIND_DATAW* found) {
  PhonePath folder;
  std::u16string_view pattern;
  if (const DWORD error = ParsePattern(path, folder, pattern)) {
    SetLastError(error);
    return nullptr;
  }
  const auto search = std::make_shared<Search>();
  if (const DWORD error = FindMatches(folder, pattern, search->matches)) {
    SetLastError(error);
    return INVALID_HANDLE_VALUE;
  }
  const HANDLE handle = AddHandle(search);
  Describe(search->matches[search->next++], *found);
  return handle;
}

BOOL Fail(DWORD error) {
  SetLastError(error);
  return FALSE;
}

}  // namespace

}  // namespace phone

HANDLE FindFirstFileW(LPCWSTR pattern, WIN32_FIND_DATAW* found) {
  DWORD error = ERROR_INVALID_PARAMETER;
  if (phone::FaultDue(phone::Operation::FindFirstFileW)) {
    error = ERROR_GEN_FAILURE;
  } else if (pattern && found) {
    try {
      return phone::BeginSearch(pattern, found);
    } catch (...) {
      error = ERROR_NOT_ENOUGH_MEMORY;
    }
  }
  SetLastError(error);
  return nullptr;
}

BOOL FindNextFileW(HANDLE search, WIN32_FIND_DATAW* found) {
  if (phone::FaultDue(phone::Operation::FindNextFileW)) return phone::Fail(ERROR_GEN_FAILURE);
  const auto object = phone::ObjectAs<phone::Search>(search);
  if (!object) return phone::Fail(ERROR_INVALID_HANDLE);
  if (!found) return phone::Fail(ERROR_INVALID_PARAMETER);
  if (object->next == object->matches.size()) return phone::Fail(ERROR_NO_MORE_FILES);
  phone::Describe(object->matches[object->next++], *found);
  return TRUE;
}

BOOL FindClose(HANDLE search) {
  if (phone::ObjectAs<phone::Search>(search) && phone::RemoveHandle(search)) return TRUE;
  return phone::Fail(ERROR_INVALID_HANDLE);
}
