/// \file
/// Sharing of the graphics room's objects. They belong to the user-interface thread, so that counting is plain.
#pragma once

#include <utility>

namespace phone {

/// What can be shared: it goes with its last Ref.
class Counted {
 public:
  Counted() = default;
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;
  virtual ~Counted() = default;

  int uses = 0;  ///< how many Refs hold it
};

template <typename T>
class Ref {
 public:
  Ref() = default;
  explicit Ref(T* object) noexcept : object_(object) { Add(); }
  Ref(const Ref& other) noexcept : object_(other.object_) { Add(); }
  Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  Ref& operator=(Ref other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~Ref() {
    if (object_ != nullptr && --object_->uses == 0) delete object_;
  }

  T* get() const noexcept { return object_; }
  T& operator*() const noexcept { return *object_; }
  T* operator->() const noexcept { return object_; }
  explicit operator bool() const noexcept { return object_ != nullptr; }

 private:
  void Add() noexcept {
    if (object_ != nullptr) ++object_->uses;
  }

  T* object_ = nullptr;
};

}  // namespace phone
