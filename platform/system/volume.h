/// \file
/// Where the paths of the phone lie on this machine. Throws std::bad_alloc; errors are the platform's.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "system/folders.h"
#include "system/names.h"
#include "system/unique_fd.h"

namespace phone {

/// Where something of the phone lies on this machine, or would lie.
struct Place {
  UniqueFd folder;  ///< the folder that holds it
  FoundName found;
  std::filesystem::path path;  ///< on this machine
  bool read_only = false;      ///< among the program's artwork and pages
};

/// Finds a path's place; succeeds also for what is missing in a folder that is there. The root has no place:
/// ERROR_ACCESS_DENIED.
DWORD Locate(std::u16string_view path, Place& place);

/// The same for a file that is there: what is missing is ERROR_FILE_NOT_FOUND, what is no file ERROR_ACCESS_DENIED.
DWORD LocateFile(std::u16string_view path, Place& place);

/// Whether the phone may change what is in a place. This machine asks for no permission to a file itself when another
/// one takes its place or it is deleted, but who has taken the permission to write to it away meant it.
DWORD CheckWritable(const Place& place);

/// Opens a file that is there for reading, without ever waiting for it.
DWORD OpenForReading(std::u16string_view path, UniqueFd& file);

/// A folder of this machine that shows some of its entries as a folder of the phone.
struct FolderSource {
  UniqueFd folder;
  bool (*shows)(const FolderEntry& entry);
};

/// What a folder of the phone is made of: mostly one folder of this machine; the program's folder shows the artwork and
/// pages of the program's data besides what the phone folder holds.
DWORD OpenSources(const PhonePath& folder, std::vector<FolderSource>& sources);

}  // namespace phone
