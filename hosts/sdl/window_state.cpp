#include "hosts/sdl/window_state.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <sstream>
#include <utility>

#include "system/replacement.h"
#include "system/unique_fd.h"

namespace sdl {
namespace {

namespace fs = std::filesystem;

/// Much more than the state takes.
constexpr std::size_t kLargestFile = 4096;

/// px, beyond any desktop.
constexpr int kFarthest = 1'000'000;

constexpr char kHead[] = "quillmark-window 1";
constexpr char kPosition[] = "position";
constexpr char kScale[] = "scale";
constexpr char kScreen[] = "screen";

bool TakeLine(const std::string& line, WindowState& state) {
  std::istringstream words(line);
  std::string name;
  words >> name;
  if (name == kPosition) {
    SDL_Point& at = state.position.emplace();
    words >> at.x >> at.y;
    if (std::min(at.x, at.y) < -kFarthest || std::max(at.x, at.y) > kFarthest) return false;
  } else if (name == kScale) {
    words >> state.scale;
    if (state.scale < 0 || state.scale > kLargestScale) return false;
  } else if (name == kScreen) {
    std::string value;
    words >> value;
    const auto screen = OrientationByName(value);
    if (!screen) return false;
    state.screen = *screen;
  } else {
    return false;
  }
  return !words.fail() && (words >> std::ws).eof();
}

/// Nothing for what is no file of a believable size.
std::optional<std::string> ReadSmallFile(const fs::path& path) {
  const phone::UniqueFd file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  struct stat status = {};
  if (!file || fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  std::string text(kLargestFile + 1, '\0');
  text.resize(phone::ReadFully(file.get(), text.data(), text.size()));
  if (text.size() > kLargestFile) return std::nullopt;
  return text;
}

bool WriteWhole(const fs::path& path, const std::string& text) {
  std::error_code ignored;
  fs::create_directories(path.parent_path(), ignored);
  const std::string temporary = path.string() + ".writing-" + std::to_string(getpid());
  const phone::UniqueFd file(open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC, 0600));
  if (!file) return false;
  const bool written = phone::WriteFully(file.get(), text.data(), text.size()) == text.size() && fsync(file.get()) == 0;
  if (written && rename(temporary.c_str(), path.c_str()) == 0) return true;
  const int error = errno;
  unlink(temporary.c_str());
  errno = error;
  return false;
}

}  // namespace

bool operator==(const WindowState& a, const WindowState& b) {
  const auto same = [](const SDL_Point& one, const SDL_Point& other) { return one.x == other.x && one.y == other.y; };
  return a.position.has_value() == b.position.has_value() && (!a.position || same(*a.position, *b.position)) &&
         a.scale == b.scale && a.screen == b.screen;
}

std::optional<WindowState> ParseWindowState(std::string_view text) {
  std::istringstream lines{std::string(text)};
  std::string line;
  if (!std::getline(lines, line) || line != kHead) return std::nullopt;
  WindowState state;
  while (std::getline(lines, line))
    if (!TakeLine(line, state)) return std::nullopt;
  return state;
}

std::string FormatWindowState(const WindowState& state) {
  std::ostringstream text;
  text << kHead << "\n";
  if (state.position) text << kPosition << " " << state.position->x << " " << state.position->y << "\n";
  text << kScale << " " << state.scale << "\n" << kScreen << " " << NameOf(state.screen) << "\n";
  return text.str();
}

StateFile::StateFile(fs::path path) : path_(std::move(path)) {
  std::error_code error;
  first_ = fs::symlink_status(path_, error).type() == fs::file_type::not_found;
  const auto text = ReadSmallFile(path_);
  const auto state = text ? ParseWindowState(*text) : std::nullopt;
  if (!state) return;
  state_ = *state;
  stands_ = true;
}

std::string StateFile::Save(const WindowState& state) {
  if (failed_ || path_.empty() || (stands_ && state == state_)) return {};
  state_ = state;
  stands_ = WriteWhole(path_, FormatWindowState(state));
  failed_ = !stands_;
  return failed_ ? "The window's place cannot be remembered in " + path_.string() + ": " + std::strerror(errno)
                 : std::string();
}

}  // namespace sdl
