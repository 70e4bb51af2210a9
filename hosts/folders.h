/// \file
/// Where the program's data and the user's phone lie on this machine.
#pragma once

#include <filesystem>

namespace hosts {

/// The folder with the program's artwork and pages: the installed one, else the one in the build.
std::filesystem::path ProgramFolder();

enum class UserFolderKind { data, state, config };

/// The user's folder of that kind, by the XDG base directory rules; empty when neither its variable nor HOME names one.
std::filesystem::path UserFolder(UserFolderKind kind);

/// The user's own phone folder, in the XDG data folder; made as a copy of the sample phone when it is not there yet.
/// Throws std::runtime_error (std::filesystem::filesystem_error included) when it cannot be made.
std::filesystem::path DefaultPhoneFolder();

/// True for a folder that has files and none of what a phone's has at its top: a mistyped name, most likely.
bool IsForeignFolder(const std::filesystem::path& folder);

/// Makes an empty phone folder where there is none, as of a name that nobody has used, or has mistyped; true when it
/// has. Throws std::runtime_error when it cannot.
bool MakePhoneFolder(const std::filesystem::path& folder);

}  // namespace hosts
