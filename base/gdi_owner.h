/// \file
/// Owners of what the graphics device interface hands out.
#pragma once

#include <windows.h>

#include <utility>

/// Owns one handle and frees it with the platform's call for its kind.
template <typename Handle, auto Free>
class GdiOwner {
 public:
  GdiOwner() noexcept = default;
  explicit GdiOwner(Handle handle) noexcept : handle_(handle) {}
  GdiOwner(GdiOwner&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
  GdiOwner& operator=(GdiOwner&& other) noexcept {
    if (this != &other) Reset(std::exchange(other.handle_, nullptr));
    return *this;
  }
  ~GdiOwner() { Reset(); }

  /// Frees what is owned and owns the new handle.
  void Reset(Handle handle = nullptr) noexcept {
    if (const Handle old = std::exchange(handle_, handle)) Free(old);
  }

  Handle get() const noexcept { return handle_; }
  explicit operator bool() const noexcept { return handle_ != nullptr; }

 private:
  Handle handle_ = nullptr;
};

using OwnedDC = GdiOwner<HDC, &DeleteDC>;
using OwnedBitmap = GdiOwner<HBITMAP, &DeleteObject>;
using OwnedFont = GdiOwner<HFONT, &DeleteObject>;
