#include "hosts/sdl/document.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace sdl {
namespace {

constexpr char kOpener[] = "xdg-open";

/// The viewer gets a process group of its own, so that what interrupts this program in a terminal leaves it alone.
int Spawn(const std::string& document) {
  std::string opener = kOpener;
  std::string page = document;
  char* const arguments[] = {opener.data(), page.data(), nullptr};
  posix_spawn_file_actions_t actions;
  posix_spawnattr_t attributes;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawnattr_init(&attributes);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
  pid_t process = -1;
  const int error = posix_spawnp(&process, kOpener, &actions, &attributes, arguments, environ);
  posix_spawnattr_destroy(&attributes);
  posix_spawn_file_actions_destroy(&actions);
  return error ? -1 : process;
}

}  // namespace

std::optional<Viewer> Viewer::Open(const std::string& document) {
  // What looks like an option would not be taken for a page.
  if (document.empty() || document.front() == '-') return std::nullopt;
  const int process = Spawn(document);
  if (process < 0) return std::nullopt;
  return Viewer(process, static_cast<int>(syscall(SYS_pidfd_open, process, 0)), document);
}

bool Viewer::Finish() {
  int status = 0;
  const bool known = waitpid(process_, &status, 0) == process_;
  if (descriptor_ >= 0) close(descriptor_);
  return known && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace sdl
