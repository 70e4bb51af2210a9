#include "system/volume.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <mutex>
#include <span>
#include <stdexcept>

#include "system/faults.h"
#include "system/files.h"
#include "system/text.h"

namespace phone {

namespace {

constexpr std::u16string_view kArtworkFolder = u"GFX";
constexpr std::u16string_view kPageExtension = u".html";

struct Volume {
  std::filesystem::path folder;
  std::filesystem::path program_data;
  UniqueFd root;
  UniqueFd data;
  std::u16string module;
  PhonePath program_folder;  ///< elements of `module`
};

std::mutex volume_mutex;
std::shared_ptr<const Volume> volume;

std::shared_ptr<const Volume> CurrentVolume() {
  const std::lock_guard lock(volume_mutex);
  return volume;
}

using Elements = std::span<const std::u16string_view>;

/// Where a walk along a path begins, and the elements it has to go.
struct Walk {
  int folder;
  const std::filesystem::path& path;
  Elements elements;
  bool read_only;
};

bool IsProgramData(std::u16string_view name) {
  if (name.size() > kPageExtension.size() &&
      CompareFolded(name.substr(name.size() - kPageExtension.size()), kPageExtension) == 0)
    return true;
  return CompareFolded(name, kArtworkFolder) == 0;
}

bool ShowsAll(const FolderEntry&) {
  return true;
}
bool ShowsProgramData(const FolderEntry& entry) {
  return IsProgramData(entry.name);
}
bool ShowsOwnFiles(const FolderEntry& entry) {
  return !IsProgramData(entry.name);
}

bool BeginsWith(Elements path, Elements beginning) {
  return path.size() >= beginning.size() &&
         std::equal(beginning.begin(), beginning.end(), path.begin(),
                    [](std::u16string_view a, std::u16string_view b) { return CompareFolded(a, b) == 0; });
}

Walk BeginWalk(const Volume& mounted, Elements elements) {
  const Elements program = mounted.program_folder.elements;
  if (elements.size() > program.size() && BeginsWith(elements, program) && IsProgramData(elements[program.size()]))
    return {mounted.data.get(), mounted.program_data, elements.subspan(program.size()), true};
  return {mounted.root.get(), mounted.folder, elements, false};
}

/// Why a folder on the way could not be opened: what is no folder, or is gone, is a path that does not lead anywhere.
DWORD FolderError() {
  return errno == ENOENT ? ERROR_PATH_NOT_FOUND : ErrorOf(errno, ERROR_PATH_NOT_FOUND);
}

/// Goes along all elements; the last one's folder stays open in `place`.
DWORD WalkTo(const Walk& walk, Place& place) {
  place.folder = UniqueFd(fcntl(walk.folder, F_DUPFD_CLOEXEC, 0));
  place.path = walk.path;
  place.read_only = walk.read_only;
  if (!place.folder) return ERROR_PATH_NOT_FOUND;
  for (std::size_t i = 0; i < walk.elements.size(); ++i) {
    if (i > 0) {
      if (place.found.kind != Kind::folder) return ERROR_PATH_NOT_FOUND;
      place.folder = OpenFolder(place.folder.get(), place.found.disk_name.c_str());
      if (!place.folder) return FolderError();
    }
    if (const DWORD error = FindName(place.folder.get(), walk.elements[i], place.found)) return error;
    place.path /= place.found.disk_name;
  }
  return ERROR_SUCCESS;
}

/// Makes a folder of the phone and those above it, as far as they are missing. That the phone folder cannot be written
/// to is no error: it can be read.
void MakeFolders(const Volume& mounted, Elements elements) {
  for (std::size_t count = 1; count <= elements.size(); ++count) {
    Place place;
    if (WalkTo({mounted.root.get(), mounted.folder, elements.first(count), false}, place) != ERROR_SUCCESS) return;
    if (place.found.kind == Kind::missing) mkdirat(place.folder.get(), place.found.disk_name.c_str(), 0777);
  }
}

}  // namespace

void MountFiles(const std::filesystem::path& folder, const std::filesystem::path& program_data,
                std::u16string_view module) {
  std::filesystem::create_directories(folder);
  auto mounted = std::make_shared<Volume>();
  mounted->folder = std::filesystem::canonical(folder);
  mounted->program_data = program_data;
  mounted->root = UniqueFd(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!mounted->root) throw std::runtime_error("the phone folder cannot be opened: " + folder.string());
  mounted->data = UniqueFd(open(program_data.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  mounted->module = module;
  if (ParsePath(mounted->module, mounted->program_folder) != ERROR_SUCCESS || mounted->program_folder.elements.empty())
    throw std::runtime_error("the program's module has no path on the phone");
  mounted->program_folder.elements.pop_back();
  ForgetAllListings();
  MakeFolders(*mounted, mounted->program_folder.elements);
  const std::u16string_view data_folder = kApplicationData.substr(1);
  MakeFolders(*mounted, Elements(&data_folder, 1));
  const std::lock_guard lock(volume_mutex);
  volume = std::move(mounted);
}

void UnmountFiles() {
  ForgetAllListings();
  const std::lock_guard lock(volume_mutex);
  volume.reset();
}

std::filesystem::path PhoneFolder() {
  const auto mounted = CurrentVolume();
  return mounted ? mounted->folder : std::filesystem::path();
}

DWORD Locate(std::u16string_view path, Place& place) {
  const auto mounted = CurrentVolume();
  if (!mounted) return ERROR_PATH_NOT_FOUND;
  PhonePath parsed;
  if (const DWORD error = ParsePath(path, parsed)) return error;
  if (parsed.elements.empty()) return ERROR_ACCESS_DENIED;
  return WalkTo(BeginWalk(*mounted, parsed.elements), place);
}

DWORD LocateFile(std::u16string_view path, Place& place) {
  if (path.ends_with(u'\\')) return ERROR_INVALID_NAME;
  if (const DWORD error = Locate(path, place)) return error;
  if (place.found.kind == Kind::missing) return ERROR_FILE_NOT_FOUND;
  return place.found.kind == Kind::file ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
}

DWORD CheckWritable(const Place& place) {
  if (place.read_only) return ERROR_ACCESS_DENIED;
  if (place.found.kind == Kind::missing) return ERROR_SUCCESS;
  const int allowed = faccessat(place.folder.get(), place.found.disk_name.c_str(), W_OK, AT_EACCESS);
  return allowed == 0 ? ERROR_SUCCESS : ErrorOf(errno, ERROR_ACCESS_DENIED);
}

DWORD OpenForReading(std::u16string_view path, UniqueFd& file) {
  Place place;
  if (const DWORD error = LocateFile(path, place)) return error;
  file = UniqueFd(openat(place.folder.get(), place.found.disk_name.c_str(),
                         O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  if (!file) return ErrorOf(errno, ERROR_READ_FAULT);
  // What lay there may have been exchanged since it was looked at.
  struct stat status = {};
  return fstat(file.get(), &status) == 0 && KindOf(status) == Kind::file ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
}

DWORD OpenSources(const PhonePath& folder, std::vector<FolderSource>& sources) {
  const auto mounted = CurrentVolume();
  if (!mounted) return ERROR_PATH_NOT_FOUND;
  const Walk walk = BeginWalk(*mounted, folder.elements);
  Place place;
  if (const DWORD error = WalkTo(walk, place)) return error;
  UniqueFd opened =
      walk.elements.empty() ? std::move(place.folder) : OpenFolder(place.folder.get(), place.found.disk_name.c_str());
  if (!opened) return FolderError();
  const Elements program = mounted->program_folder.elements;
  const bool is_program_folder = folder.elements.size() == program.size() && BeginsWith(folder.elements, program);
  sources.push_back({std::move(opened), is_program_folder ? ShowsOwnFiles : ShowsAll});
  UniqueFd data(is_program_folder ? fcntl(mounted->data.get(), F_DUPFD_CLOEXEC, 0) : -1);
  if (data) sources.push_back({std::move(data), ShowsProgramData});
  return ERROR_SUCCESS;
}

std::optional<std::filesystem::path> HostPath(std::u16string_view path) {
  Place place;
  if (LocateFile(path, place) != ERROR_SUCCESS) return std::nullopt;
  return std::move(place.path);
}

}  // namespace phone

DWORD GetModuleFileNameW(HMODULE, LPWSTR path, DWORD size) {
  if (phone::FaultDue(phone::Operation::GetModuleFileNameW)) {
    SetLastError(ERROR_GEN_FAILURE);
    return 0;
  }
  const auto mounted = phone::CurrentVolume();
  if (!path || size == 0 || !mounted) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return 0;
  }
  // A path that was cut would lead elsewhere.
  if (mounted->module.size() >= size) {
    path[0] = u'\0';
    SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return 0;
  }
  path[mounted->module.copy(path, size - 1)] = u'\0';
  return static_cast<DWORD>(mounted->module.size());
}
