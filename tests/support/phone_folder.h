/// \file
/// A phone folder of a test's own, gone with it.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "support/file_content.h"
#include "support/temporary_folder.h"

class PhoneFolder {
 public:
  /// An empty phone.
  PhoneFolder();

  const std::filesystem::path& path() const { return folder_.path; }
  /// The folder of the layouts, and the one of the favourites, on this machine.
  std::filesystem::path Home() const { return path() / "Application Data" / "Home"; }
  std::filesystem::path Plugins() const { return path() / "Program Files" / "Quillmark" / "Plugins"; }

  /// Adds NAME.home.xml with that title and plug-ins of these names.
  void AddLayout(const std::string& name, const std::string& title, const std::vector<std::string>& plugins) const;
  /// Adds a favourite by its stored layout.
  void AddFavorite(const std::string& name, std::u16string_view element, std::u16string_view clsid = u"") const;
  /// Puts NAME.home.xml in use.
  void UseLayout(const std::string& name) const;

 private:
  TemporaryFolder folder_;
};

/// The phone's path of a layout.
std::string LayoutPath(const std::string& name);

/// Every file below, relative to the folder, in order.
std::vector<std::string> FilesBelow(const std::filesystem::path& folder);
