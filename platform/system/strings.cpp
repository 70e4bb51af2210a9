/// \file
/// Text and arithmetic of winbase.h, bounded copies of strsafe.h.
#include <string_view>

#include "strsafe.h"
#include "system/text.h"
#include "windows.h"

namespace {

std::u16string_view ViewOf(LPCWSTR text) {
  return text ? std::u16string_view(text) : std::u16string_view();
}

/// Copies what fits, and never half of a surrogate pair.
HRESULT CopyBounded(LPWSTR destination, std::size_t size, std::u16string_view source) {
  const std::size_t length = phone::CutLength(source, size - 1);
  source.substr(0, length).copy(destination, length);
  destination[length] = u'\0';
  return length == source.size() ? S_OK : STRSAFE_E_INSUFFICIENT_BUFFER;
}

}  // namespace

int MulDiv(int number, int numerator, int denominator) {
  if (denominator == 0) return -1;
  const std::int64_t product = static_cast<std::int64_t>(number) * numerator;
  const bool negative = (product < 0) != (denominator < 0);
  const std::int64_t dividend = product < 0 ? -product : product;
  const std::int64_t divisor = denominator < 0 ? -static_cast<std::int64_t>(denominator) : denominator;
  const std::int64_t rounded = (dividend + divisor / 2) / divisor;
  const std::int64_t result = negative ? -rounded : rounded;
  return result == static_cast<int>(result) ? static_cast<int>(result) : -1;
}

int lstrlenW(LPCWSTR text) {
  return static_cast<int>(ViewOf(text).size());
}

int lstrcmpiW(LPCWSTR a, LPCWSTR b) {
  return phone::CompareFoldedText(a ? a : u"", b ? b : u"");
}

HRESULT StringCchCopyW(LPWSTR destination, std::size_t size, LPCWSTR source) {
  if (!destination || size == 0 || !source) return STRSAFE_E_INVALID_PARAMETER;
  return CopyBounded(destination, size, source);
}

HRESULT StringCchCatW(LPWSTR destination, std::size_t size, LPCWSTR source) {
  if (!destination || size == 0 || !source) return STRSAFE_E_INVALID_PARAMETER;
  std::size_t length = 0;
  while (length < size && destination[length] != u'\0') ++length;
  if (length == size) return STRSAFE_E_INVALID_PARAMETER;
  return CopyBounded(destination + length, size - length, source);
}
