/// \file
/// The registry: a file at the top of the phone folder, held in memory while the phone is on.
#include <cstring>
#include <mutex>

#include "regext.h"
#include "system/faults.h"
#include "system/files.h"
#include "system/outside.h"
#include "system/registry_file.h"
#include "system/text.h"

namespace phone {

namespace {

constexpr std::u16string_view kFilePath = u"\\registry.reg";
constexpr std::u16string_view kKeptName = u"registry.reg.kept";
constexpr int kMostKept = 1000;

std::mutex registry_mutex;
RegistryFile registry;
/// What stopped the file from being read: nothing may be written over it then.
DWORD registry_error = ERROR_SUCCESS;

std::optional<std::u16string> Decode(const std::vector<std::byte>& content) {
  const bool is_utf16 = content.size() >= 2 && content[0] == std::byte{0xFF} && content[1] == std::byte{0xFE};
  if (!is_utf16) return ToUtf16({reinterpret_cast<const char*>(content.data()), content.size()});
  if (content.size() % 2 != 0) return std::nullopt;
  std::u16string text(content.size() / 2, u'\0');
  for (std::size_t i = 0; i < text.size(); ++i)
    text[i] = static_cast<char16_t>(std::to_integer<unsigned>(content[2 * i]) |
                                    std::to_integer<unsigned>(content[2 * i + 1]) << 8);
  // What cannot be written again is not understood.
  return ToUtf8(text) ? std::optional(text) : std::nullopt;
}

/// Gives a file that is not understood another name, so that a new one can be written.
DWORD KeepAside() {
  for (int number = 1; number <= kMostKept; ++number) {
    std::u16string name(kKeptName);
    if (number > 1) name += *ToUtf16('.' + std::to_string(number));
    const DWORD error = RenameFile(kFilePath, name);
    if (error != ERROR_ALREADY_EXISTS) return error;
  }
  return ERROR_ALREADY_EXISTS;
}

DWORD ReadRegistry() {
  registry = RegistryFile();
  std::vector<std::byte> content;
  const DWORD error = ReadWholeFile(kFilePath, content);
  if (error != ERROR_SUCCESS) return error == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : error;
  const auto text = Decode(content);
  auto parsed = text ? RegistryFile::Parse(*text) : std::nullopt;
  if (!parsed) return KeepAside();
  registry = std::move(*parsed);
  return ERROR_SUCCESS;
}

/// Changes a copy, writes it, and takes it over only then.
template <typename Change>
DWORD Write(Change change) {
  if (registry_error != ERROR_SUCCESS) return registry_error;
  RegistryFile changed = registry;
  if (!change(changed)) return ERROR_INVALID_PARAMETER;
  const auto text = ToUtf8(changed.Text());
  if (!text) return ERROR_INVALID_PARAMETER;
  const DWORD error = WriteWholeFile(kFilePath, std::as_bytes(std::span(*text)));
  if (error == ERROR_SUCCESS) registry = std::move(changed);
  return error;
}

DWORD SetValue(std::u16string_view key, std::u16string_view value, std::u16string_view text) {
  const std::lock_guard lock(registry_mutex);
  return Write([&](RegistryFile& file) { return file.Set(key, value, text); });
}

std::u16string_view NameOf(LPCWSTR value) {
  return value ? std::u16string_view(value) : std::u16string_view();
}

HRESULT GetString(LPCWSTR key, LPCWSTR value, LPWSTR text, UINT size) {
  const auto found = RegistryGet(std::u16string(key), std::u16string(NameOf(value)));
  if (!found) return HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND);
  const std::size_t length = CutLength(*found, size - 1);
  found->copy(text, length);
  text[length] = u'\0';
  return S_OK;
}

HRESULT SetString(LPCWSTR key, LPCWSTR value, LPCWSTR text) {
  RegistryWrite write{CurrentHost().TickCount(), key, std::u16string(NameOf(value)), text};
  if (const DWORD error = SetValue(write.key, write.value, write.text)) return HRESULT_FROM_WIN32(error);
  RecordRegistryWrite(write);
  return S_OK;
}

}  // namespace

void LoadRegistry() {
  const std::lock_guard lock(registry_mutex);
  registry_error = ReadRegistry();
}

std::optional<std::u16string> RegistryGet(const std::u16string& key, const std::u16string& value) {
  const std::lock_guard lock(registry_mutex);
  return registry.Get(key, value);
}

bool RegistrySet(const std::u16string& key, const std::u16string& value, const std::u16string& text) {
  return SetValue(key, value, text) == ERROR_SUCCESS;
}

bool RegistryDelete(const std::u16string& key, const std::u16string& value) {
  const std::lock_guard lock(registry_mutex);
  return Write([&](RegistryFile& file) { return file.Delete(key, value); }) == ERROR_SUCCESS;
}

}  // namespace phone

HRESULT RegistryGetString(HKEY root, LPCWSTR key, LPCWSTR value, LPWSTR text, UINT size) {
  if (phone::FaultDue(phone::Operation::RegistryGetString)) return E_FAIL;
  if (root != HKEY_CURRENT_USER || !key || !text || size == 0) return E_INVALIDARG;
  try {
    return phone::GetString(key, value, text, size);
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

HRESULT RegistrySetString(HKEY root, LPCWSTR key, LPCWSTR value, LPCWSTR text) {
  if (phone::FaultDue(phone::Operation::RegistrySetString)) return E_FAIL;
  if (root != HKEY_CURRENT_USER || !key || !text) return E_INVALIDARG;
  try {
    return phone::SetString(key, value, text);
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}
