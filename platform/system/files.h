/// \file
/// The phone's file system: one folder of this machine, the phone folder. Paths are the phone's (UTF-16, backslashes).
/// Names match without regard to case; no path and no link leads out of the folder. Results are errors of the platform
/// (ERROR_SUCCESS, ERROR_FILE_NOT_FOUND, ...). Any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "windows.h"

namespace phone {

/// Mounts the phone folder, which is made when it is missing. `program_data` appears read-only as the artwork (GFX) and
/// pages (*.html) of the folder of `module`, the path of the program's module on the phone. Throws std::runtime_error
/// when the folder cannot be used.
void MountFiles(const std::filesystem::path& folder, const std::filesystem::path& program_data,
                std::u16string_view module);
void UnmountFiles();

/// Removes the temporary files that a killed process has left. Only for the process that is the running instance:
/// others may be writing.
void RemoveStrayFiles();

/// The largest file that the phone reads, in bytes: far beyond what it has memory for; a sparse file may claim any
/// size.
inline constexpr std::int64_t kLargestFile = 64 << 20;

inline constexpr std::u16string_view kApplicationData = u"\\Application Data";

/// The mounted phone folder on this machine, without links in its path; empty when none is mounted.
std::filesystem::path PhoneFolder();

/// Where an existing file of the phone lies on this machine.
std::optional<std::filesystem::path> HostPath(std::u16string_view path);

/// On whose behalf a file is written: what is made to fail fails for the program alone.
enum class Writer { program, host };

DWORD ReadWholeFile(std::u16string_view path, std::vector<std::byte>& content);
/// Writes a file whole or not at all: a temporary file beside it, flushed, renamed over it.
DWORD WriteWholeFile(std::u16string_view path, std::span<const std::byte> content, Writer writer);
/// Gives a file another name in its folder; ERROR_ALREADY_EXISTS when that is taken.
DWORD RenameFile(std::u16string_view path, std::u16string_view new_name);

}  // namespace phone
