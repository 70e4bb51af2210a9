#include "hosts/sdl/watcher.h"

#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <utility>

namespace sdl {

Watcher::Watcher(std::function<void(int)> readable)
    : readable_(std::move(readable)), poll_(epoll_create1(EPOLL_CLOEXEC)), stop_(eventfd(0, EFD_CLOEXEC)) {
  Watch(stop_);
  thread_ = std::thread([this] { Run(); });
}

Watcher::~Watcher() {
  constexpr std::uint64_t once = 1;
  if (write(stop_, &once, sizeof once) == sizeof once) thread_.join();
  close(stop_);
  close(poll_);
}

void Watcher::Watch(int descriptor) {
  epoll_event event = {};
  event.events = EPOLLIN | EPOLLONESHOT;
  event.data.fd = descriptor;
  if (epoll_ctl(poll_, EPOLL_CTL_MOD, descriptor, &event) != 0 && errno == ENOENT)
    epoll_ctl(poll_, EPOLL_CTL_ADD, descriptor, &event);
}

void Watcher::Run() {
  while (true) {
    epoll_event event = {};
    const int count = epoll_wait(poll_, &event, 1, -1);
    if (count < 0 && errno != EINTR) return;
    if (count < 1) continue;
    if (event.data.fd == stop_) return;
    readable_(event.data.fd);
  }
}

}  // namespace sdl
