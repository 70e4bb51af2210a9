#include <algorithm>

#include "system/faults.h"
#include "system/text.h"
#include "windows/desktop.h"

using namespace phone;

namespace {

/// An icon group that holds at least one image.
bool IsIconGroup(Bytes content) {
  ByteReader reader(content);
  const std::optional<WORD> reserved = reader.Word();
  const std::optional<WORD> type = reader.Word();
  const std::optional<WORD> count = reader.Word();
  constexpr std::size_t kEntrySize = 14;
  return reserved == 0 && type == 1 && count > 0 && reader.Take(*count * kEntrySize).has_value();
}

/// The number of a resource name; nothing for a name that is text.
std::optional<WORD> NumberOf(LPCWSTR name) {
  const auto value = reinterpret_cast<std::uintptr_t>(name);
  if (value == 0 || value > 0xFFFF) return std::nullopt;
  return static_cast<WORD>(value);
}

}  // namespace

int LoadStringW(HINSTANCE, UINT id, LPWSTR buffer, int size) {
  if (FaultDue(Operation::LoadStringW)) return 0;
  if (!DesktopExists() || buffer == nullptr || size <= 0) return 0;
  *buffer = 0;
  return Guarded<int>(0, [&] {
    const std::u16string text = FindString(TheDesktop().resources, id).value_or(u"");
    const std::size_t length = CutLength(text, static_cast<std::size_t>(size) - 1);
    std::copy_n(text.data(), length, buffer);
    buffer[length] = 0;
    return static_cast<int>(length);
  });
}

HICON LoadIconW(HINSTANCE, LPCWSTR name) {
  const std::optional<WORD> number = NumberOf(name);
  if (!DesktopExists() || !number) return nullptr;
  const Resource* group = FindResource(TheDesktop().resources, kIconGroupType, *number);
  if (group == nullptr || !IsIconGroup(group->content)) return nullptr;
  return reinterpret_cast<HICON>(const_cast<WCHAR*>(name));
}
