/// \file
/// What is done to a phone, written down as a coroutine: it yields lines of the scripted phone, and between them it
/// looks at what came of the line before.
#pragma once

#include <coroutine>
#include <exception>
#include <string>
#include <utility>

namespace faults {

class Hands {
 public:
  struct promise_type {
    std::string line;

    Hands get_return_object() { return Hands(std::coroutine_handle<promise_type>::from_promise(*this)); }
    std::suspend_always initial_suspend() noexcept { return {}; }
    std::suspend_always final_suspend() noexcept { return {}; }
    std::suspend_always yield_value(std::string next) {
      line = std::move(next);
      return {};
    }
    void return_void() {}
    void unhandled_exception() { std::terminate(); }
  };

  Hands(Hands&& other) noexcept : coroutine_(std::exchange(other.coroutine_, nullptr)) {}
  ~Hands() {
    if (coroutine_) coroutine_.destroy();
  }

  /// Goes on to the next line; false at the end.
  bool Next() {
    coroutine_.resume();
    return !coroutine_.done();
  }
  const std::string& Line() const { return coroutine_.promise().line; }

 private:
  explicit Hands(std::coroutine_handle<promise_type> coroutine) : coroutine_(coroutine) {}

  std::coroutine_handle<promise_type> coroutine_;
};

}  // namespace faults
