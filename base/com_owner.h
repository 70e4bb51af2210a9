/// \file
/// Owners of what the component object model hands out.
#pragma once

#include <oleauto.h>

#include <utility>

/// Owns one reference to a component.
template <typename Interface>
class ComPtr {
 public:
  ComPtr() noexcept = default;
  ComPtr(ComPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  ComPtr& operator=(ComPtr&& other) noexcept {
    if (this != &other) {
      Reset();
      object_ = std::exchange(other.object_, nullptr);
    }
    return *this;
  }
  ~ComPtr() { Reset(); }

  void Reset() noexcept {
    if (Interface* const object = std::exchange(object_, nullptr)) object->Release();
  }

  /// For a call that gives an object: empties the owner first.
  [[nodiscard]] Interface** Receive() noexcept {
    Reset();
    return &object_;
  }

  Interface* get() const noexcept { return object_; }
  Interface* operator->() const noexcept { return object_; }
  explicit operator bool() const noexcept { return object_ != nullptr; }

 private:
  Interface* object_ = nullptr;
};

/// Owns a counted string.
class Bstr {
 public:
  Bstr() noexcept = default;
  explicit Bstr(LPCWSTR text) noexcept : text_(SysAllocString(text)) {}
  Bstr(Bstr&& other) noexcept : text_(std::exchange(other.text_, nullptr)) {}
  Bstr& operator=(Bstr&& other) noexcept {
    std::swap(text_, other.text_);
    return *this;
  }
  ~Bstr() { SysFreeString(text_); }

  /// For a call that gives a string: empties the owner first.
  [[nodiscard]] BSTR* Receive() noexcept {
    SysFreeString(std::exchange(text_, nullptr));
    return &text_;
  }

  BSTR get() const noexcept { return text_; }
  /// The text, empty when there is none.
  LPCWSTR text() const noexcept { return text_ ? text_ : TEXT(""); }
  UINT length() const noexcept { return SysStringLen(text_); }
  explicit operator bool() const noexcept { return text_ != nullptr; }

 private:
  BSTR text_ = nullptr;
};

/// A text variant that borrows the string.
inline VARIANT TextVariant(const Bstr& text) noexcept {
  VARIANT variant = {};
  variant.vt = VT_BSTR;
  variant.bstrVal = text.get();
  return variant;
}
