#include "hosts/folders.h"

#include <fcntl.h>
#include <strings.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <system_error>

namespace hosts {
namespace {

namespace fs = std::filesystem;

struct UserFolderRow {
  const char* variable;
  const char* below_home;  ///< where it is when the variable names none
};

/// By UserFolderKind.
constexpr UserFolderRow kUserFolders[] = {
    {"XDG_DATA_HOME", ".local/share"},
    {"XDG_STATE_HOME", ".local/state"},
    {"XDG_CONFIG_HOME", ".config"},
};

/// What the top folder of a phone's file system has, in any case of its letters.
constexpr const char* kTopOfAPhone[] = {
    "Application Data", "Documents and Settings", "My Documents", "Program Files", "Storage Card", "Temp", "Windows",
    "registry.reg"};

/// A folder of the installed data, found from where this executable lies; nothing when it is not installed.
fs::path Installed(const char* name) {
  std::error_code error;
  const fs::path executable = fs::read_symlink("/proc/self/exe", error);
  if (error) return {};
  fs::path folder = (executable.parent_path() / QUILLMARK_DATA_FROM_PROGRAMS / name).lexically_normal();
  return fs::is_directory(folder, error) ? folder : fs::path();
}

fs::path InstalledOr(const char* name, const char* built) {
  fs::path folder = Installed(name);
  return folder.empty() ? fs::path(built) : folder;
}

/// Holds a folder for one process at a time, until it goes.
class FolderLock {
 public:
  explicit FolderLock(const fs::path& folder) : descriptor_(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    if (descriptor_ < 0 || flock(descriptor_, LOCK_EX) != 0) {
      const std::system_error failure(errno, std::generic_category(), folder.string());
      Close();
      throw failure;
    }
  }
  ~FolderLock() { Close(); }
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;

  /// Brings what was written on its file system to the disk.
  void Flush() const { syncfs(descriptor_); }

 private:
  void Close() {
    if (descriptor_ >= 0) close(descriptor_);
  }

  int descriptor_;
};

/// Installed data may be read-only; the user's copy is for writing.
void MakeWritable(const fs::path& folder) {
  constexpr auto add = fs::perm_options::add;
  fs::permissions(folder, fs::perms::owner_all, add);
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
    const fs::perms wanted =
        entry.is_directory() ? fs::perms::owner_all : fs::perms::owner_read | fs::perms::owner_write;
    fs::permissions(entry, wanted, add);
  }
}

/// A copy that was interrupted never has the phone's name: it gets it last, when all of it is on the disk.
void CopySamplePhone(const fs::path& target) {
  const FolderLock lock(target.parent_path());
  if (fs::exists(target)) return;
  const fs::path unfinished = target.parent_path() / (target.filename().string() + ".unfinished");
  fs::remove_all(unfinished);
  fs::copy(InstalledOr("phone", QUILLMARK_SOURCE_PHONE), unfinished, fs::copy_options::recursive);
  MakeWritable(unfinished);
  lock.Flush();
  fs::rename(unfinished, target);
}

}  // namespace

fs::path ProgramFolder() {
  return InstalledOr("program", QUILLMARK_BUILT_PROGRAM_FOLDER);
}

fs::path UserFolder(UserFolderKind kind) {
  const UserFolderRow& row = kUserFolders[static_cast<std::size_t>(kind)];
  // Relative values are to be ignored.
  if (const char* const folder = std::getenv(row.variable); folder && *folder == '/') return folder;
  const char* const home = std::getenv("HOME");
  return home && *home == '/' ? fs::path(home) / row.below_home : fs::path();
}

fs::path DefaultPhoneFolder() {
  const fs::path data = UserFolder(UserFolderKind::data);
  if (data.empty()) throw std::runtime_error("neither XDG_DATA_HOME nor HOME names a folder");
  const fs::path folder = data / "quillmark";
  fs::create_directories(folder);
  fs::path phone = folder / "phone";
  if (!fs::exists(phone)) CopySamplePhone(phone);
  return phone;
}

bool IsForeignFolder(const fs::path& folder) {
  std::error_code error;
  bool has_files = false;
  for (fs::directory_iterator at(folder, error); !error && at != fs::directory_iterator(); at.increment(error)) {
    const std::string name = at->path().filename().string();
    const auto is_name = [&](const char* known) { return strcasecmp(known, name.c_str()) == 0; };
    if (std::ranges::any_of(kTopOfAPhone, is_name)) return false;
    has_files = true;
  }
  return has_files;
}

bool MakePhoneFolder(const fs::path& folder) {
  std::error_code error;
  if (fs::is_directory(folder, error)) return false;
  fs::create_directories(folder, error);
  if (error) throw std::runtime_error("the phone folder " + folder.string() + " cannot be made: " + error.message());
  return true;
}

}  // namespace hosts
