/// \file
/// The registry: a file at the top of the phone folder, held in memory while the phone is on. A person may edit the
/// file meanwhile: reading notices a file that has changed, and writing changes what is in the file then.
#include <mutex>
#include <tuple>

#include "regext.h"
#include "system/faults.h"
#include "system/files.h"
#include "system/instance.h"
#include "system/outside.h"
#include "system/registry_file.h"
#include "system/text.h"
#include "system/volume.h"

namespace phone {

namespace {

constexpr std::u16string_view kFilePath = u"\\registry.reg";
constexpr std::u16string_view kKeptName = u"registry.reg.kept";
constexpr int kMostKept = 1000;

/// Tells one state of the file from another: which file, its size, and when it was changed. Zeros for a missing file.
using Stamp = std::tuple<ino_t, off_t, time_t, long>;

std::mutex registry_mutex;
/// What was understood last.
RegistryFile registry;
/// The file that was read last, understood or not.
Stamp registry_stamp;

Stamp CurrentStamp() {
  Place place;
  if (LocateFile(kFilePath, place) != ERROR_SUCCESS) return {};
  const struct stat& status = place.found.status;
  return {status.st_ino, status.st_size, status.st_ctim.tv_sec, status.st_ctim.tv_nsec};
}

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

/// Takes over what is in the file; what is in memory stays when the file cannot be read or is not understood, which is
/// ERROR_INVALID_DATA.
DWORD ReadRegistry() {
  // Looked at first: a change made while the file is read shows later.
  const Stamp stamp = CurrentStamp();
  std::vector<std::byte> content;
  const DWORD error = ReadWholeFile(kFilePath, content);
  if (error != ERROR_SUCCESS && error != ERROR_FILE_NOT_FOUND) return error;
  registry_stamp = stamp;
  const auto text = Decode(content);
  auto parsed = text ? RegistryFile::Parse(*text) : std::nullopt;
  if (!parsed) return ERROR_INVALID_DATA;
  registry = std::move(*parsed);
  return ERROR_SUCCESS;
}

/// The registry for reading: what cannot be read now is as it was.
const RegistryFile& CurrentRegistry() {
  if (CurrentStamp() != registry_stamp) ReadRegistry();
  return registry;
}

/// Changes a copy of what is in the file, writes it, and takes it over only then. A file that is not understood is not
/// written over.
template <typename Change>
DWORD Write(Writer writer, Change change) {
  if (const DWORD error = ReadRegistry()) return error;
  RegistryFile changed = registry;
  if (!change(changed)) return ERROR_INVALID_PARAMETER;
  const auto text = ToUtf8(changed.Text());
  if (!text) return ERROR_INVALID_PARAMETER;
  const DWORD error = WriteWholeFile(kFilePath, std::as_bytes(std::span(*text)), writer);
  if (error == ERROR_SUCCESS) registry = std::move(changed);
  return error;
}

DWORD SetValue(Writer writer, std::u16string_view key, std::u16string_view value, std::u16string_view text) {
  const std::lock_guard lock(registry_mutex);
  return Write(writer, [&](RegistryFile& file) { return file.Set(key, value, text); });
}

std::u16string_view NameOf(LPCWSTR value) {
  return value ? std::u16string_view(value) : std::u16string_view();
}

HRESULT GetString(LPCWSTR key, LPCWSTR value, LPWSTR text, UINT size) {
  const auto found = RegistryGet(std::u16string(key), std::u16string(NameOf(value)));
  if (!found) {
    ReportOutcome(Operation::RegistryGetString, NameOf(value), ERROR_FILE_NOT_FOUND);
    return HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND);
  }
  const std::size_t length = CutLength(*found, size - 1);
  found->copy(text, length);
  text[length] = u'\0';
  return S_OK;
}

HRESULT SetString(LPCWSTR key, LPCWSTR value, LPCWSTR text) {
  RegistryWrite write{CurrentTick(), key, std::u16string(NameOf(value)), text};
  if (const DWORD error = SetValue(Writer::program, write.key, write.value, write.text)) {
    ReportOutcome(Operation::RegistrySetString, write.value, error);
    return HRESULT_FROM_WIN32(error);
  }
  RecordRegistryWrite(write);
  return S_OK;
}

}  // namespace

void LoadRegistry() {
  const std::lock_guard lock(registry_mutex);
  registry = RegistryFile();
  // Another process that runs on this folder is not robbed of its file.
  if (ReadRegistry() == ERROR_INVALID_DATA && InstanceClaimed()) KeepAside();
}

std::optional<std::u16string> RegistryGet(const std::u16string& key, const std::u16string& value) {
  const std::lock_guard lock(registry_mutex);
  return CurrentRegistry().Get(key, value);
}

bool RegistrySet(const std::u16string& key, const std::u16string& value, const std::u16string& text) {
  return SetValue(Writer::host, key, value, text) == ERROR_SUCCESS;
}

bool RegistryDelete(const std::u16string& key, const std::u16string& value) {
  const std::lock_guard lock(registry_mutex);
  return Write(Writer::host, [&](RegistryFile& file) { return file.Delete(key, value); }) == ERROR_SUCCESS;
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
