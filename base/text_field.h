/// \file
/// Text of a fixed length: an array of UTF-16 code units with a terminating zero.
#pragma once

#include <strsafe.h>

/// Room for Capacity - 1 code units and the terminating zero; longer text is cut, never inside a surrogate pair.
template <std::size_t Capacity>
struct FixedText {
  WCHAR units[Capacity] = {};

  /// Copies the text; false when it had to be cut.
  bool Assign(LPCWSTR text) noexcept {
    units[0] = 0;
    return Append(text);
  }

  /// Appends the text; false when it had to be cut.
  bool Append(LPCWSTR text) noexcept {
    const bool whole = SUCCEEDED(StringCchCatW(units, Capacity, text));
    if (!whole) DropHalfPair();
    return whole;
  }

  bool empty() const noexcept { return units[0] == 0; }
  operator LPCWSTR() const noexcept { return units; }  // NOLINT(google-explicit-constructor): a text is read as one

  /// Ends a text that may fill all of `units` without a zero.
  void Terminate() noexcept {
    units[Capacity - 1] = 0;
    DropHalfPair();
  }

  /// Drops the half of a surrogate pair that a cut has left at the very end, also when the platform filled `units`.
  void DropHalfPair() noexcept {
    WCHAR& last = units[Capacity - 2];
    if (last >= 0xD800 && last <= 0xDBFF) last = 0;
  }
};

/// A text field of a record: at most 255 code units.
using TextField = FixedText<256>;
