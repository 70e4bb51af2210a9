/// \file
/// Pictures of the phone's screen, as files.
#pragma once

#include <filesystem>
#include <string>

#include "host.h"

namespace sdl {

/// The user's folder for pictures, by the desktop's settings; made when it is missing, else the home folder. Empty
/// without either.
std::filesystem::path PicturesFolder();

/// What was written, or why nothing was.
struct PictureResult {
  std::filesystem::path file;
  std::string error;  ///< empty: it was written
};

/// Writes the screen at its own size into a folder, under a name made from the local time that nothing has yet.
PictureResult WritePicture(const phone::ScreenImage& screen, const std::filesystem::path& folder);

/// The value of XDG_PICTURES_DIR in a user-dirs.dirs file; empty when it has none. Only "$HOME/..." and absolute paths
/// are values.
std::filesystem::path PicturesFolderOf(const std::string& user_dirs, const std::filesystem::path& home);

}  // namespace sdl
