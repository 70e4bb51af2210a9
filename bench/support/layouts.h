/// \file
/// Phone folders full of files.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "support/temporary_folder.h"

namespace bench {

/// A text of just that many characters that begins with the number.
std::string Title(int number, std::size_t length);

/// A layout of at least that many bytes: a title, and as many plug-ins as it takes.
std::string LayoutOfSize(const std::string& title, std::size_t bytes);
/// A layout with that many plug-ins.
std::string LayoutOfPlugins(const std::string& title, int plugins);

/// A phone with one layout. What is measured lies in application-data folders of its own beside it.
class Phone {
 public:
  Phone();

  const std::filesystem::path& path() const { return folder_.path; }
  /// Adds an application-data folder with that many layouts of one plug-in each.
  void AddThemes(const std::string& folder, int count, std::size_t title_length);
  /// Adds one layout to such a folder; gives its place on this machine.
  std::filesystem::path AddLayout(const std::string& folder, const std::string& name, const std::string& content);
  /// Adds a folder with that many favourites.
  void AddFavorites(const std::string& folder, int count);
  /// Puts a layout in use, by its path on the phone with doubled separators.
  void Use(const std::string& path);

 private:
  TemporaryFolder folder_;
};

}  // namespace bench
