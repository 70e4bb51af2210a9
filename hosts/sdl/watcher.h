/// \file
/// Waits for file descriptors beside SDL, which waits for its own events only.
#pragma once

#include <functional>
#include <thread>

namespace sdl {

class Watcher {
 public:
  /// `readable` is called with a descriptor that has become readable, on the watcher's own thread.
  explicit Watcher(std::function<void(int)> readable);
  ~Watcher();
  Watcher(const Watcher&) = delete;
  Watcher& operator=(const Watcher&) = delete;

  /// Tells once when the descriptor is readable; to be told again, watch it again. Any thread.
  void Watch(int descriptor);

 private:
  void Run();

  std::function<void(int)> readable_;
  int poll_;
  int stop_;
  std::thread thread_;
};

}  // namespace sdl
