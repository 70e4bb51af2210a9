#include "small_disk.h"

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <vector>

#include "support/file_content.h"

namespace {

constexpr const char* kFiller = "filler";
constexpr const char* kOptions = "size=1m,nr_inodes=1000";

/// A view of the file systems for this process alone; without the superuser's rights, as a user who has them inside.
bool LeaveCommonFileSystems() {
  const uid_t user = geteuid();
  const gid_t group = getegid();
  if (unshare(CLONE_NEWNS | (user == 0 ? 0 : CLONE_NEWUSER)) != 0) return false;
  if (user != 0) {
    WriteFile("/proc/self/setgroups", "deny");
    WriteFile("/proc/self/uid_map", "0 " + std::to_string(user) + " 1");
    WriteFile("/proc/self/gid_map", "0 " + std::to_string(group) + " 1");
  }
  return mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

void Require(bool done, const char* what) {
  if (!done) throw std::runtime_error(std::string(what) + ": " + std::strerror(errno));
}

}  // namespace

SmallDisk::SmallDisk() {
  if (!LeaveCommonFileSystems() || mount("none", folder_.path.c_str(), "tmpfs", 0, kOptions) != 0)
    refusal_ = std::string("this machine lets nobody mount a disk here: ") + std::strerror(errno);
}

SmallDisk::~SmallDisk() {
  if (refusal_.empty()) umount2(folder_.path.c_str(), MNT_DETACH);
}

void SmallDisk::Fill(int pages_left) const {
  Empty();
  const int file = open((path() / kFiller).c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
  Require(file >= 0, "the filler");
  const auto page = static_cast<std::size_t>(getpagesize());
  const std::vector<char> data(page);
  off_t size = 0;
  ssize_t written = 0;
  while ((written = write(file, data.data(), page)) > 0) size += written;
  const off_t kept = size - pages_left * static_cast<off_t>(page);
  const bool done = ftruncate(file, kept) == 0;
  close(file);
  Require(done && kept > 0, "filling the disk");
}

void SmallDisk::Empty() const {
  std::filesystem::remove(path() / kFiller);
  Remount(0, kOptions);
}

void SmallDisk::AllowNoMoreFiles() const {
  std::size_t used = 1;  // the disk's own folder
  for (const auto& entry : std::filesystem::recursive_directory_iterator(path())) used += entry.exists() ? 1 : 0;
  Remount(0, "nr_inodes=" + std::to_string(used));
}

void SmallDisk::SetReadOnly(bool read_only) const {
  Remount(read_only ? MS_RDONLY : 0, kOptions);
}

void SmallDisk::Remount(unsigned long flags, const std::string& options) const {
  Require(mount("none", path().c_str(), "tmpfs", MS_REMOUNT | flags, options.c_str()) == 0, "remounting the disk");
}
