/// \file
/// Folders of this machine as the phone sees them, and their listings, which are kept while nothing changed.
#pragma once

#include <sys/stat.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "system/unique_fd.h"
#include "windows.h"

namespace phone {

enum class Kind {
  missing,
  file,
  folder,
  other,  ///< a link, a device: nothing that the phone can use, but its name is taken
};

Kind KindOf(const struct stat& status);

struct FolderEntry {
  std::string disk_name;  ///< UTF-8
  std::u16string name;
  std::u16string folded;
  Kind kind = Kind::other;
};

/// In the order of case-folded names, names that differ only in case by their exact spelling: all whose names the phone
/// can hold.
using Listing = std::vector<FolderEntry>;

/// The listing of an open folder. Throws std::bad_alloc; an unreadable folder lists nothing.
std::shared_ptr<const Listing> ListFolder(int folder);
/// Forgets the listing of a folder whose content the phone has changed: its times need not show it.
void ForgetListing(int folder);
void ForgetAllListings();

/// A name as it is spelled on this machine, and what lies under it.
struct FoundName {
  std::string disk_name;
  Kind kind = Kind::missing;
  struct stat status = {};
};

/// Looks a name up in an open folder: the exact spelling, else the first that differs only in case, files and folders
/// before what the phone cannot use. A name that is missing is found as it is spelled here.
DWORD FindName(int folder, std::u16string_view name, FoundName& found);

/// The platform's error for an errno; `otherwise` for one without a counterpart.
DWORD ErrorOf(int error, DWORD otherwise);

/// Opens a folder inside an open folder; never through a link.
UniqueFd OpenFolder(int parent, const char* name);

}  // namespace phone
