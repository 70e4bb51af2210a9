/// \file
/// The phone folder of the runs.
#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace faults {

/// Every file below a folder by its path in it: the content.
using Files = std::map<std::string, std::string>;
Files ReadFiles(const std::filesystem::path& folder);

/// A phone folder in memory where the machine has such a place, gone with this.
class WorkFolder {
 public:
  WorkFolder();
  ~WorkFolder();
  WorkFolder(const WorkFolder&) = delete;
  WorkFolder& operator=(const WorkFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }
  /// Makes the folder hold these files and nothing else.
  void Fill(const Files& files) const;

 private:
  std::filesystem::path path_;
};

}  // namespace faults
