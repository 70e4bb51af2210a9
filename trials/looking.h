/// \file
/// What the trials look at: every file, and what the program says.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "support/scripted_phone.h"

using Lines = std::vector<std::string>;

inline constexpr const char* kSaveFailed = "There was an error saving theme. Please try again";
inline constexpr const char* kOverwrite = "File allready exists. Do you want to overwrite?";
inline constexpr const char* kApply = "Do you want to apply saved theme?";
inline constexpr const char* kThemeNotDeleted = "Selected theme couldn't be deleted!";
inline constexpr const char* kFavouriteNotDeleted = "Selected plugin couldn't be deleted!";

/// What every file holds, by its path in the phone folder.
using Files = std::map<std::string, std::string>;

inline Files FilesOf(const PhoneFolder& folder) {
  Files files;
  for (const std::string& file : FilesBelow(folder.path())) files[file] = ReadFile(folder.path() / file);
  return files;
}
