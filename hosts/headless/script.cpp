#include "hosts/headless/script.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <iterator>

namespace headless {

Script::Script(int input) : input_(input), wake_(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {}

Script::~Script() {
  if (wake_ >= 0) close(wake_);
}

Script::Event Script::Next(std::string& line, int watched) {
  while (!TakeLine(line)) {
    if (ended_) return Event::end;
    pollfd waiting[] = {{input_, POLLIN, 0}, {wake_, POLLIN, 0}, {watched, POLLIN, 0}};
    if (poll(waiting, std::size(waiting), -1) < 0 && errno != EINTR) {
      ended_ = true;
      continue;
    }
    if (Woken() || waiting[2].revents) return Event::woken;
    if (waiting[0].revents) Fill();
  }
  return Event::line;
}

void Script::Wake() {
  constexpr std::uint64_t once = 1;
  // A full counter is a wake that stands already.
  if (write(wake_, &once, sizeof once) < 0) return;
}

bool Script::Woken() {
  std::uint64_t times = 0;
  return read(wake_, &times, sizeof times) > 0;
}

void Script::Fill() {
  char block[65536];
  const ssize_t length = read(input_, block, sizeof block);
  if (length > 0) {
    buffer_.erase(0, taken_);
    taken_ = 0;
    buffer_.append(block, static_cast<std::size_t>(length));
  } else if (length == 0 || errno != EINTR) {
    ended_ = true;
  }
}

/// A last line need not have an end.
bool Script::TakeLine(std::string& line) {
  const std::size_t end = buffer_.find('\n', taken_);
  if (end == std::string::npos && (!ended_ || taken_ == buffer_.size())) return false;
  line = buffer_.substr(taken_, end - taken_);
  taken_ = end == std::string::npos ? buffer_.size() : end + 1;
  ++line_number_;
  return true;
}

}  // namespace headless
