#include "support/counted_calls.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <utility>

namespace bench {

namespace {

FileCalls calls;
bool flushes_are_real = false;

}  // namespace

FileCalls TakeFileCalls() {
  return std::exchange(calls, {});
}

void FlushForReal(bool real) {
  flushes_are_real = real;
}

}  // namespace bench

extern "C" {

ssize_t write(int fd, const void* data, size_t size) {
  ++bench::calls.writes;
  return syscall(SYS_write, fd, data, size);
}

int fsync(int fd) {
  ++bench::calls.flushes;
  return bench::flushes_are_real ? static_cast<int>(syscall(SYS_fsync, fd)) : 0;
}

int renameat(int from_folder, const char* from, int to_folder, const char* to) noexcept {
  ++bench::calls.renames;
  return static_cast<int>(syscall(SYS_renameat, from_folder, from, to_folder, to));
}

}  // extern "C"
