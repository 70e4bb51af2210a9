#include "system/files.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <new>

#include "system/faults.h"
#include "system/outside.h"
#include "system/replacement.h"
#include "system/text.h"
#include "system/volume.h"

namespace phone {

namespace {

DWORD Read(std::u16string_view path, std::vector<std::byte>& content) {
  UniqueFd file;
  if (const DWORD error = OpenForReading(path, file)) return error;
  struct stat status = {};
  if (fstat(file.get(), &status) != 0) return ERROR_READ_FAULT;
  if (status.st_size > kLargestFile) return ERROR_NOT_ENOUGH_MEMORY;
  content.resize(static_cast<std::size_t>(status.st_size));
  errno = 0;
  const std::size_t count = ReadFully(file.get(), content.data(), content.size());
  if (count < content.size() && errno != 0) return ERROR_READ_FAULT;
  content.resize(count);
  return ERROR_SUCCESS;
}

DWORD Write(std::u16string_view path, std::span<const std::byte> content, Writer writer) {
  FileReplacement replacement;
  if (const DWORD error = replacement.Begin(path)) return error;
  if (WriteFully(replacement.fd(), content.data(), content.size()) < content.size())
    return ErrorOf(errno, ERROR_WRITE_FAULT);
  return replacement.Commit(writer);
}

DWORD Rename(std::u16string_view path, std::u16string_view new_name) {
  if (!IsFileName(new_name)) return ERROR_INVALID_NAME;
  Place place;
  if (const DWORD error = LocateFile(path, place)) return error;
  if (place.read_only) return ERROR_ACCESS_DENIED;
  FoundName target;
  if (const DWORD error = FindName(place.folder.get(), new_name, target)) return error;
  if (target.kind != Kind::missing) return ERROR_ALREADY_EXISTS;
  const int folder = place.folder.get();
  if (renameat2(folder, place.found.disk_name.c_str(), folder, target.disk_name.c_str(), RENAME_NOREPLACE) != 0)
    return ErrorOf(errno, ERROR_WRITE_FAULT);
  ForgetListing(folder);
  return ERROR_SUCCESS;
}

DWORD Delete(std::u16string_view path) {
  Place place;
  if (const DWORD error = LocateFile(path, place)) return error;
  if (const DWORD error = CheckWritable(place)) return error;
  if (unlinkat(place.folder.get(), place.found.disk_name.c_str(), 0) != 0) return ErrorOf(errno, ERROR_ACCESS_DENIED);
  ForgetListing(place.folder.get());
  return ERROR_SUCCESS;
}

DWORD MakeFolder(std::u16string_view path) {
  Place place;
  if (const DWORD error = Locate(path, place)) return error;
  if (place.found.kind != Kind::missing) return ERROR_ALREADY_EXISTS;
  if (place.read_only) return ERROR_ACCESS_DENIED;
  if (mkdirat(place.folder.get(), place.found.disk_name.c_str(), 0777) != 0) return ErrorOf(errno, ERROR_ACCESS_DENIED);
  ForgetListing(place.folder.get());
  return ERROR_SUCCESS;
}

/// No exception leaves the phone's file system.
template <typename Action>
DWORD Guarded(Action action) noexcept {
  try {
    return action();
  } catch (...) {
    return ERROR_NOT_ENOUGH_MEMORY;
  }
}

/// For the entry points: true for success, else false and the last error.
template <typename Action>
BOOL Reported(Operation operation, Action action) noexcept {
  const DWORD error = FaultDue(operation) ? ERROR_GEN_FAILURE : Guarded(action);
  if (error == ERROR_SUCCESS) return TRUE;
  SetLastError(error);
  return FALSE;
}

/// The prefix and two numbers: nothing that a person would name a file.
bool IsStray(std::string_view name) {
  if (!name.starts_with(kTemporaryPrefix)) return false;
  name.remove_prefix(kTemporaryPrefix.size());
  return name.find_first_not_of("0123456789-") == std::string_view::npos;
}

}  // namespace

void RemoveStrayFiles() {
  namespace fs = std::filesystem;
  const fs::path folder = PhoneFolder();
  if (folder.empty()) return;
  std::error_code ignored;
  fs::recursive_directory_iterator at(folder, fs::directory_options::skip_permission_denied, ignored);
  while (at != fs::recursive_directory_iterator()) {
    const fs::directory_entry entry = *at;
    at.increment(ignored);
    if (IsStray(entry.path().filename().native()) && entry.symlink_status(ignored).type() == fs::file_type::regular)
      fs::remove(entry.path(), ignored);
  }
}

DWORD ReadWholeFile(std::u16string_view path, std::vector<std::byte>& content) {
  return Guarded([&] { return Read(path, content); });
}

DWORD WriteWholeFile(std::u16string_view path, std::span<const std::byte> content, Writer writer) {
  return Guarded([&] { return Write(path, content, writer); });
}

DWORD RenameFile(std::u16string_view path, std::u16string_view new_name) {
  return Guarded([&] { return Rename(path, new_name); });
}

}  // namespace phone

BOOL DeleteFileW(LPCWSTR path) {
  return phone::Reported(phone::Operation::DeleteFileW,
                         [path] { return path ? phone::Delete(path) : ERROR_INVALID_PARAMETER; });
}

BOOL CreateDirectoryW(LPCWSTR path, SECURITY_ATTRIBUTES*) {
  return phone::Reported(phone::Operation::CreateDirectoryW, [path] {
    const DWORD error = path ? phone::MakeFolder(path) : ERROR_INVALID_PARAMETER;
    const bool told = path && error != ERROR_SUCCESS && error != ERROR_ALREADY_EXISTS;
    if (told) phone::ReportOutcome(phone::Operation::CreateDirectoryW, path, error);
    return error;
  });
}
