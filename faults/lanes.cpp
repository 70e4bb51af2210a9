#include "faults/lanes.h"

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <new>
#include <vector>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif

namespace faults {
namespace {

constexpr unsigned kPatience = 60;  // seconds for one thing, on a machine that is busy otherwise
constexpr int kLeaked = 99;         // exit status of a batch

/// What all processes see.
struct Shared {
  std::atomic<std::size_t> next{0};  ///< the first thing that nobody has begun
  std::atomic<std::size_t> found{0};
};

struct Lane {
  const Work& work;
  Shared& shared;
  std::atomic<std::size_t>& current;  ///< what the lane's process is doing
};

template <typename T>
T* MakeShared(std::size_t count) {
  void* const memory = mmap(nullptr, count * sizeof(T), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) throw std::bad_alloc();
  T* const objects = static_cast<T*>(memory);
  for (std::size_t i = 0; i < count; ++i) new (objects + i) T;
  return objects;
}

bool HasLeaked() {
#if defined(__SANITIZE_ADDRESS__)
  return __lsan_do_recoverable_leak_check() != 0;
#else
  return false;
#endif
}

/// The process of a batch. What it shares with its parent's buffers is nobody's to flush.
[[noreturn]] void DoBatch(const Lane& lane, std::size_t begin, std::size_t end) {
  lane.current = begin;
  alarm(kPatience);
  lane.work.prepare(begin);
  for (std::size_t number = begin; number < end; ++number) {
    lane.current = number;
    alarm(kPatience);
    if (!lane.work.act(number)) ++lane.shared.found;
  }
  alarm(kPatience);
  _exit(HasLeaked() ? kLeaked : EXIT_SUCCESS);
}

/// Does [begin, end) in as many processes as it takes to find out which ones crash or leak.
void DoRange(const Lane& lane, std::size_t begin, std::size_t end) {
  if (begin == end) return;
  const pid_t process = fork();
  if (process == 0) DoBatch(lane, begin, end);
  int status = 0;
  if (process < 0 || waitpid(process, &status, 0) != process) std::abort();
  if (WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS) return;
  const std::size_t at = lane.current;
  if (WIFEXITED(status) && WEXITSTATUS(status) == kLeaked) {
    const std::size_t middle = begin + (end - begin) / 2;
    if (middle > begin) {
      DoRange(lane, begin, middle);
      return DoRange(lane, middle, end);
    }
    lane.work.report(at, "memory is leaked");
  } else {
    lane.work.report(at, WIFSIGNALED(status) && WTERMSIG(status) == SIGALRM ? "it hangs" : "it crashes");
  }
  ++lane.shared.found;
  // What came before the crash was not looked at for leaks; its findings were counted.
  DoRange(lane, at + 1, end);
}

[[noreturn]] void RunLane(const Lane& lane) {
  std::size_t begin = lane.shared.next;
  while (begin < lane.work.count) {
    const std::size_t end = lane.work.batch_end(begin);
    // On failure `begin` is what another lane has left.
    if (!lane.shared.next.compare_exchange_weak(begin, end)) continue;
    DoRange(lane, begin, end);
    begin = lane.shared.next;
  }
  _exit(EXIT_SUCCESS);
}

}  // namespace

std::size_t DoInLanes(const Work& work, unsigned lanes) {
  Shared* const shared = MakeShared<Shared>(1);
  auto* const current = MakeShared<std::atomic<std::size_t>>(lanes);
  std::vector<pid_t> processes;
  for (unsigned lane = 0; lane < lanes; ++lane) {
    const pid_t process = fork();
    if (process == 0) RunLane({work, *shared, current[lane]});
    if (process < 0) std::abort();
    processes.push_back(process);
  }
  std::size_t lost = 0;
  for (const pid_t process : processes) {
    int status = 0;
    waitpid(process, &status, 0);
    if (status != 0) ++lost;
  }
  return shared->found + lost;
}

}  // namespace faults
