#include "system/replacement.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <atomic>
#include <cerrno>

#include "system/faults.h"
#include "system/volume.h"

namespace phone {

namespace {

constexpr mode_t kNewFileMode = 0666;
constexpr mode_t kPermissions = 0777;

/// Tells apart what one process writes at the same time.
std::atomic<unsigned> temporary_count{0};

std::string TemporaryName() {
  return std::string(kTemporaryPrefix) + std::to_string(getpid()) + '-' + std::to_string(temporary_count++);
}

}  // namespace

DWORD FileReplacement::Begin(std::u16string_view path) {
  Place place;
  const DWORD error = LocateFile(path, place);
  if (error != ERROR_SUCCESS && error != ERROR_FILE_NOT_FOUND) return error;
  if (const DWORD refused = CheckWritable(place)) return refused;
  const bool exists = error == ERROR_SUCCESS;
  folder_ = std::move(place.folder);
  target_ = std::move(place.found.disk_name);
  if (const DWORD made = MakeTemporary(kNewFileMode)) return made;
  if (exists) fchmod(file_.get(), place.found.status.st_mode & kPermissions);
  return ERROR_SUCCESS;
}

DWORD FileReplacement::MakeTemporary(mode_t mode) {
  for (;;) {
    std::string name = TemporaryName();
    file_ = UniqueFd(openat(folder_.get(), name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode));
    if (file_) {
      temporary_ = std::move(name);
      return ERROR_SUCCESS;
    }
    if (errno != EEXIST) return ErrorOf(errno, ERROR_WRITE_FAULT);
  }
}

DWORD FileReplacement::Commit(Writer writer) {
  if (fsync(file_.get()) != 0) return ErrorOf(errno, ERROR_WRITE_FAULT);
  if (writer == Writer::program && FaultDue(Operation::rename)) return ERROR_GEN_FAILURE;
  if (renameat(folder_.get(), temporary_.c_str(), folder_.get(), target_.c_str()) != 0)
    return ErrorOf(errno, ERROR_WRITE_FAULT);
  temporary_.clear();
  ForgetListing(folder_.get());
  // The new content stands; where the disk cannot flush a folder, it has done what it can.
  fsync(folder_.get());
  return ERROR_SUCCESS;
}

void FileReplacement::Discard() {
  if (!temporary_.empty()) unlinkat(folder_.get(), temporary_.c_str(), 0);
}

std::size_t ReadFully(int fd, void* data, std::size_t size) {
  std::size_t done = 0;
  while (done < size) {
    const ssize_t count = read(fd, static_cast<std::byte*>(data) + done, size - done);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) break;
    done += static_cast<std::size_t>(count);
  }
  return done;
}

std::size_t WriteFully(int fd, const void* data, std::size_t size) {
  std::size_t done = 0;
  while (done < size) {
    const ssize_t count = write(fd, static_cast<const std::byte*>(data) + done, size - done);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) break;
    done += static_cast<std::size_t>(count);
  }
  return done;
}

}  // namespace phone
