#include "system/folders.h"

#include <dirent.h>
#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <ctime>
#include <map>
#include <mutex>
#include <tuple>
#include <utility>

#include "system/names.h"
#include "system/text.h"

namespace phone {

namespace {

using std::chrono::nanoseconds;

constexpr std::size_t kMostListings = 16;

/// A folder that changed less than this before it was read may change again without its time telling. Times come with
/// the system's clock tick, or in whole seconds on some disks.
constexpr nanoseconds kFineTick = std::chrono::milliseconds(50);
constexpr nanoseconds kCoarseTick = std::chrono::seconds(3);

using FolderId = std::pair<dev_t, ino_t>;

nanoseconds TimeOf(const timespec& time) {
  return std::chrono::seconds(time.tv_sec) + nanoseconds(time.tv_nsec);
}

struct Stamp {
  nanoseconds modified{};
  nanoseconds changed{};
  bool operator==(const Stamp&) const = default;
};

struct KeptListing {
  Stamp stamp;
  std::shared_ptr<const Listing> listing;
};

std::mutex listings_mutex;
std::map<FolderId, KeptListing> listings;

Stamp StampOf(const struct stat& status) {
  return {TimeOf(status.st_mtim), TimeOf(status.st_ctim)};
}

/// True when a later change would show in the folder's times.
bool IsSettled(const Stamp& stamp) {
  timespec now = {};
  clock_gettime(CLOCK_REALTIME, &now);
  const bool coarse = stamp.changed.count() % std::nano::den == 0;
  return TimeOf(now) - stamp.changed > (coarse ? kCoarseTick : kFineTick);
}

Kind KindOfEntry(int folder, const dirent& entry) {
  if (entry.d_type == DT_REG) return Kind::file;
  if (entry.d_type == DT_DIR) return Kind::folder;
  if (entry.d_type != DT_UNKNOWN) return Kind::other;
  struct stat status = {};
  return fstatat(folder, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 ? KindOf(status) : Kind::other;
}

struct CloseDirectory {
  void operator()(DIR* directory) const { closedir(directory); }
};

/// False when not all of it could be read.
bool ReadFolder(int folder, Listing& entries) {
  // A descriptor of its own: reading moves the descriptor's position.
  const int fd = openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd < 0) return false;
  const std::unique_ptr<DIR, CloseDirectory> directory(fdopendir(fd));
  if (!directory) {
    ::close(fd);
    return false;
  }
  errno = 0;
  for (const dirent* entry; (entry = readdir(directory.get())); errno = 0) {
    auto name = ToUtf16(entry->d_name);
    if (!name || !IsFileName(*name)) continue;
    std::u16string folded = FoldCase(*name);
    entries.push_back({entry->d_name, std::move(*name), std::move(folded), KindOfEntry(folder, *entry)});
  }
  const bool whole = errno == 0;
  std::sort(entries.begin(), entries.end(), [](const FolderEntry& a, const FolderEntry& b) {
    return std::tie(a.folded, a.name) < std::tie(b.folded, b.name);
  });
  return whole;
}

}  // namespace

Kind KindOf(const struct stat& status) {
  if (S_ISREG(status.st_mode)) return Kind::file;
  return S_ISDIR(status.st_mode) ? Kind::folder : Kind::other;
}

std::shared_ptr<const Listing> ListFolder(int folder) {
  struct stat status = {};
  if (fstat(folder, &status) != 0) return std::make_shared<Listing>();
  const FolderId id(status.st_dev, status.st_ino);
  const Stamp stamp = StampOf(status);
  const std::lock_guard lock(listings_mutex);
  const auto kept = listings.find(id);
  if (kept != listings.end() && kept->second.stamp == stamp) return kept->second.listing;
  // Asked before reading: what changes while the folder is read falls behind this moment.
  const bool settled = IsSettled(stamp);
  const auto listing = std::make_shared<Listing>();
  if (ReadFolder(folder, *listing) && settled) {
    if (listings.size() >= kMostListings) listings.clear();
    listings.insert_or_assign(id, KeptListing{stamp, listing});
  }
  return listing;
}

void ForgetListing(int folder) {
  struct stat status = {};
  if (fstat(folder, &status) != 0) return;
  const std::lock_guard lock(listings_mutex);
  listings.erase({status.st_dev, status.st_ino});
}

void ForgetAllListings() {
  const std::lock_guard lock(listings_mutex);
  listings.clear();
}

DWORD FindName(int folder, std::u16string_view name, FoundName& found) {
  auto disk_name = ToUtf8(name);
  if (!disk_name) return ERROR_INVALID_NAME;
  found = {std::move(*disk_name), Kind::missing, {}};
  if (fstatat(folder, found.disk_name.c_str(), &found.status, AT_SYMLINK_NOFOLLOW) == 0) {
    found.kind = KindOf(found.status);
    return ERROR_SUCCESS;
  }
  if (errno != ENOENT) return ErrorOf(errno, ERROR_PATH_NOT_FOUND);
  const auto listing = ListFolder(folder);
  const std::u16string folded = FoldCase(name);
  const auto first = std::ranges::lower_bound(*listing, folded, {}, &FolderEntry::folded);
  const auto end = std::find_if(first, listing->end(), [&](const FolderEntry& each) { return each.folded != folded; });
  if (first == end) return ERROR_SUCCESS;
  const auto usable = std::find_if(first, end, [](const FolderEntry& each) { return each.kind != Kind::other; });
  const auto entry = usable != end ? usable : first;
  if (fstatat(folder, entry->disk_name.c_str(), &found.status, AT_SYMLINK_NOFOLLOW) != 0) return ERROR_SUCCESS;
  found.disk_name = entry->disk_name;
  found.kind = KindOf(found.status);
  return ERROR_SUCCESS;
}

DWORD ErrorOf(int error, DWORD otherwise) {
  switch (error) {
    case ENOENT: return ERROR_FILE_NOT_FOUND;
    case ENOTDIR: return ERROR_PATH_NOT_FOUND;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
    case ELOOP: return ERROR_ACCESS_DENIED;
    case EEXIST: return ERROR_ALREADY_EXISTS;
    case ENAMETOOLONG: return ERROR_FILENAME_EXCED_RANGE;
    case ENOSPC:
    case EDQUOT:
    case EFBIG: return ERROR_DISK_FULL;
    case ENOMEM:
    case EMFILE:
    case ENFILE: return ERROR_NOT_ENOUGH_MEMORY;
    default: return otherwise;
  }
}

UniqueFd OpenFolder(int parent, const char* name) {
  return UniqueFd(openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

}  // namespace phone
