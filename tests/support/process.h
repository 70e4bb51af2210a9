/// \file
/// Other programs, started and waited for.
#pragma once

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

/// Starts a program, looked for as a shell would; `redirect` says what becomes of its descriptors. Throws when it does
/// not start.
inline pid_t StartProgram(std::vector<std::string> words,
                          const std::function<void(posix_spawn_file_actions_t* actions)>& redirect) {
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  redirect(&actions);
  pid_t process = -1;
  const int error = posix_spawnp(&process, arguments[0], &actions, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (error) throw std::runtime_error(words[0] + " does not start");
  return process;
}

/// Reads nothing from, or writes nothing to, a descriptor of a program that is started.
inline void Silence(posix_spawn_file_actions_t* actions, int descriptor) {
  posix_spawn_file_actions_addopen(actions, descriptor, "/dev/null", O_RDWR, 0);
}

/// Waits for a program to end, and gives its exit status; 128 and more for a signal. Throws when there is no such
/// program.
inline int AwaitEnd(pid_t process) {
  int status = 0;
  while (waitpid(process, &status, 0) < 0)
    if (errno != EINTR) throw std::runtime_error("there is no program to wait for");
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}
