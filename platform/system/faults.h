/// \file
/// The fallible operations of the platform: how often the program called each, and which calls are to fail.
///
/// Every entry point of the platform that is listed here begins with FaultDue. The phone's own parts never go through
/// those entry points, so that only the program's calls count. Any thread.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace phone {

// The formatter indents every line of this list further than the one before.
// clang-format off
#define PHONE_OPERATIONS(X) \
  X(RegisterClassW) X(CreateWindowExW) X(LoadStringW) X(SHCreateMenuBar) X(CreateCompatibleDC) \
  X(CreateCompatibleBitmap) X(CreateDIBSection) X(BitBlt) X(StretchBlt) X(AlphaBlend) X(CreateFontIndirectW) \
  X(GetModuleFileNameW) X(SHGetSpecialFolderPath) X(RegistryGetString) X(RegistrySetString) X(FindFirstFileW) \
  X(FindNextFileW) X(DeleteFileW) X(CreateDirectoryW) X(_wfopen) X(fread) X(fwrite) X(fclose) X(rename) \
  X(CoInitializeEx) X(CoCreateInstance) X(load) X(loadXML) X(save) X(get_childNodes) X(get_length) X(get_item) \
  X(get_nodeName) X(get_attributes) X(get_text) X(put_text) X(get_xml) X(get_firstChild) X(cloneNode) \
  X(appendChild) X(CreateImageFromFile) X(GetImageInfo) X(CreateBitmapFromImage) X(LockBits) X(CreateThread) \
  X(ShellExecuteEx)
// clang-format on

/// `Allocation` is `new` in scripts: an allocation of the program, made with std::nothrow.
enum class Operation : std::uint8_t {
#define PHONE_OPERATION(name) name,
  PHONE_OPERATIONS(PHONE_OPERATION)
#undef PHONE_OPERATION
      Allocation,
};

inline constexpr std::size_t kOperationCount = static_cast<std::size_t>(Operation::Allocation) + 1;

/// Counts a call of the program; true when this call is to fail.
bool FaultDue(Operation operation) noexcept;
/// The next `count` calls fail, after `after` that succeed; count 0 clears it.
void SetFault(Operation operation, std::uint64_t count, std::uint64_t after) noexcept;
std::uint64_t CallCount(Operation operation) noexcept;
/// Clears every count and fault.
void ResetFaults() noexcept;

/// The operation's name in scripts, and the way back.
std::string_view OperationName(Operation operation) noexcept;
std::optional<Operation> OperationByName(std::string_view name) noexcept;

}  // namespace phone
