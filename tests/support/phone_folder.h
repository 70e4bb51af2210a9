/// \file
/// A phone folder of a test's own, gone with it.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

class PhoneFolder {
 public:
  /// An empty phone.
  PhoneFolder();
  ~PhoneFolder();
  PhoneFolder(const PhoneFolder&) = delete;
  PhoneFolder& operator=(const PhoneFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }
  /// The folder of the layouts, and the one of the favourites, on this machine.
  std::filesystem::path Home() const { return path_ / "Application Data" / "Home"; }
  std::filesystem::path Plugins() const { return path_ / "Program Files" / "Quillmark" / "Plugins"; }

  /// Adds NAME.home.xml with that title and plug-ins of these names.
  void AddLayout(const std::string& name, const std::string& title, const std::vector<std::string>& plugins) const;
  /// Adds a favourite by its stored layout.
  void AddFavorite(const std::string& name, std::u16string_view element) const;
  /// Puts NAME.home.xml in use.
  void UseLayout(const std::string& name) const;

 private:
  std::filesystem::path path_;
};

/// The phone's path of a layout.
std::string LayoutPath(const std::string& name);

std::string ReadFile(const std::filesystem::path& file);
void WriteFile(const std::filesystem::path& file, std::string_view content);
/// Every file below, relative to the folder, in order.
std::vector<std::string> FilesBelow(const std::filesystem::path& folder);
