#include "hosts/script/recorder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <stdexcept>
#include <system_error>

#include "hosts/program.h"

namespace script {
namespace {

std::string SystemMessage(int error) {
  return std::generic_category().message(error);
}

bool IsRegularFile(int descriptor) {
  struct stat status = {};
  return fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

/// A pipe or a device may be there already; a file may not.
phone::UniqueFd Make(const std::string& file) {
  constexpr mode_t permissions = 0666;
  phone::UniqueFd made(open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, permissions));
  std::error_code error;
  const bool is_there = !made && errno == EEXIST;
  if (is_there && std::filesystem::is_regular_file(file, error))
    throw std::runtime_error("the recording " + file + " is there already, and is not overwritten");
  if (is_there) made = phone::UniqueFd(open(file.c_str(), O_WRONLY | O_CLOEXEC));
  if (!made) throw std::runtime_error("the recording " + file + " cannot be made: " + SystemMessage(errno));
  return made;
}

/// As a shell reads it back.
std::string Quoted(const std::string& text) {
  std::string quoted = "'";
  for (const char unit : text) quoted += unit == '\'' ? std::string("'\\''") : std::string(1, unit);
  return quoted + "'";
}

/// A comment is one line.
std::string OneLine(std::string text) {
  for (char& unit : text)
    if (unit == '\n' || unit == '\r') unit = '?';
  return text;
}

std::string Heading(const phone::Options& options) {
  const std::string screen = std::to_string(options.client_width) + 'x' + std::to_string(options.client_height);
  const std::string folder = OneLine(Quoted(std::filesystem::absolute(options.folder).string()));
  return std::string("# Recorded by Quillmark ") + hosts::kVersion +
         ". To see the same frames again, give the phone folder (or a copy\n"
         "# of it) the files that it had at the beginning, and type\n"
         "#   quillmark-headless --tick " +
         std::to_string(kFirstTick) + " --screen " + screen + " --phone " + folder +
         " < THIS FILE\n"
         "trace off\n"
         "frames asked\n";
}

}  // namespace

Recorder::Recorder(const std::string& file, const phone::Options& options) : file_(file), descriptor_(Make(file)) {
  if (!Append(Heading(options))) {
    const std::string message = failure_;
    Remove();
    throw std::runtime_error(message);
  }
}

Recorder::~Recorder() {
  if (!happened_) Remove();
}

bool Recorder::Write(std::uint32_t tick, std::string_view command) {
  happened_ = true;
  if (!failure_.empty()) return true;
  std::string lines;
  // Wherever the clock stopped in between, it will stop again: at the program's own sleepers.
  if (const std::uint32_t passed = tick - tick_) {
    const std::string milliseconds = std::to_string(passed);
    lines = "wait " + milliseconds + ' ' + milliseconds + '\n';
  }
  tick_ = tick;
  return Append(lines.append(command) += '\n');
}

/// Pipes and devices were there before, and stay.
void Recorder::Remove() {
  if (IsRegularFile(descriptor_.get())) unlink(file_.c_str());
}

/// What is torn would not be understood.
void Recorder::DropFrom(std::int64_t end) {
  if (end < 0 || !IsRegularFile(descriptor_.get())) return;
  if (ftruncate(descriptor_.get(), end) != 0) failure_ += "; its last line is torn";
}

bool Recorder::Append(const std::string& lines) {
  const off_t end = lseek(descriptor_.get(), 0, SEEK_CUR);
  for (std::size_t written = 0; written < lines.size();) {
    const ssize_t length = write(descriptor_.get(), lines.data() + written, lines.size() - written);
    if (length < 0 && errno == EINTR) continue;
    if (length <= 0) {
      failure_ = "the recording " + file_ + " cannot be written: " + SystemMessage(errno);
      DropFrom(end);
      return false;
    }
    written += static_cast<std::size_t>(length);
  }
  return true;
}

}  // namespace script
