#include "hosts/sdl/pictures.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fstream>
#include <sstream>
#include <vector>

#include "graphics/png.h"
#include "hosts/folders.h"
#include "system/replacement.h"
#include "system/unique_fd.h"

namespace sdl {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kSetting = "XDG_PICTURES_DIR=\"";
constexpr std::string_view kHome = "$HOME";
constexpr char kDefaultFolder[] = "Pictures";

std::string ReadText(const fs::path& path) {
  std::ostringstream text;
  text << std::ifstream(path).rdbuf();
  return text.str();
}

/// What stands between quotation marks, without the escapes of the shell.
std::string Unquoted(std::string_view text) {
  std::string value;
  for (std::size_t i = 0; i < text.size() && text[i] != '"'; ++i) {
    if (text[i] == '\\' && i + 1 < text.size()) ++i;
    value += text[i];
  }
  return value;
}

std::string LocalTime() {
  const std::time_t now = std::time(nullptr);
  std::tm local = {};
  localtime_r(&now, &local);
  char text[32] = "";
  std::strftime(text, sizeof text, "%Y-%m-%d-%H%M%S", &local);
  return text;
}

/// A new file under the name, or under the name with a number; nothing is ever overwritten.
phone::UniqueFd CreateFile(const fs::path& folder, const std::string& name, fs::path& file) {
  for (int number = 1;; ++number) {
    std::string numbered = name;
    if (number > 1) numbered.append("-").append(std::to_string(number));
    file = folder / (numbered + ".png");
    phone::UniqueFd created(open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    if (created || errno != EEXIST) return created;
  }
}

}  // namespace

fs::path PicturesFolderOf(const std::string& user_dirs, const fs::path& home) {
  std::istringstream lines(user_dirs);
  fs::path folder;
  for (std::string line; std::getline(lines, line);) {
    line.erase(0, line.find_first_not_of(" \t"));
    if (!line.starts_with(kSetting)) continue;
    const std::string value = Unquoted(std::string_view(line).substr(kSetting.size()));
    if (value.starts_with('/')) folder = value;
    if (value.starts_with(kHome)) folder = home.string() + value.substr(kHome.size());
  }
  return folder;
}

fs::path PicturesFolder() {
  const char* const home = std::getenv("HOME");
  if (!home || *home != '/') return {};
  fs::path folder =
      PicturesFolderOf(ReadText(hosts::UserFolder(hosts::UserFolderKind::config) / "user-dirs.dirs"), home);
  if (folder.empty()) folder = fs::path(home) / kDefaultFolder;
  std::error_code error;
  fs::create_directories(folder, error);
  return fs::is_directory(folder, error) ? folder : fs::path(home);
}

PictureResult WritePicture(const phone::ScreenImage& screen, const fs::path& folder) {
  if (folder.empty()) return {{}, "there is no folder for pictures"};
  std::vector<std::byte> bytes;
  if (!phone::EncodePng(screen, bytes)) return {{}, std::strerror(ENOMEM)};
  PictureResult result;
  const phone::UniqueFd file = CreateFile(folder, "quillmark-" + LocalTime(), result.file);
  if (!file) {
    result.error = std::strerror(errno);
  } else if (phone::WriteFully(file.get(), bytes.data(), bytes.size()) < bytes.size()) {
    result.error = std::strerror(errno);
    unlink(result.file.c_str());
  }
  return result;
}

}  // namespace sdl
