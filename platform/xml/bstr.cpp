#include "xml/bstr.h"

#include <unicode/ustring.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>

#include "winerror.h"

namespace {

constexpr std::size_t kPrefix = sizeof(std::uint32_t);  // the length in bytes stands before the first code unit
constexpr std::size_t kMaxUnits = (std::numeric_limits<std::int32_t>::max() / sizeof(WCHAR)) - 4;

BSTR Allocate(std::size_t units) noexcept {
  if (units > kMaxUnits) return nullptr;
  auto* const block = static_cast<std::byte*>(std::malloc(kPrefix + (units + 1) * sizeof(WCHAR)));
  return block ? reinterpret_cast<BSTR>(block + kPrefix) : nullptr;
}

void Finish(BSTR text, std::size_t units) noexcept {
  const auto bytes = static_cast<std::uint32_t>(units * sizeof(WCHAR));
  std::memcpy(reinterpret_cast<std::byte*>(text) - kPrefix, &bytes, kPrefix);
  text[units] = 0;
}

}  // namespace

BSTR SysAllocString(const WCHAR* text) {
  if (!text) return nullptr;
  const std::size_t units = std::char_traits<WCHAR>::length(text);
  const BSTR copy = Allocate(units);
  if (!copy) return nullptr;
  std::memcpy(copy, text, units * sizeof(WCHAR));
  Finish(copy, units);
  return copy;
}

void SysFreeString(BSTR text) {
  if (text) std::free(reinterpret_cast<std::byte*>(text) - kPrefix);
}

UINT SysStringLen(BSTR text) {
  if (!text) return 0;
  std::uint32_t bytes = 0;
  std::memcpy(&bytes, reinterpret_cast<const std::byte*>(text) - kPrefix, kPrefix);
  return static_cast<UINT>(bytes / sizeof(WCHAR));
}

namespace phone {

BSTR MakeBstr(std::string_view utf8) noexcept {
  // No character takes more code units in UTF-16 than bytes in UTF-8.
  const BSTR text = Allocate(utf8.size());
  if (!text) return nullptr;
  std::int32_t units = 0;
  if (!utf8.empty()) {
    UErrorCode error = U_ZERO_ERROR;
    u_strFromUTF8WithSub(text, static_cast<std::int32_t>(utf8.size()), &units, utf8.data(),
                         static_cast<std::int32_t>(utf8.size()), 0xFFFD, nullptr, &error);
    if (U_FAILURE(error)) units = 0;
  }
  Finish(text, static_cast<std::size_t>(units));
  return text;
}

HRESULT GiveText(std::string_view utf8, BSTR* out) noexcept {
  *out = MakeBstr(utf8);
  return *out ? S_OK : E_OUTOFMEMORY;
}

}  // namespace phone
