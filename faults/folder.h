/// \file
/// The phone folders of the runs.
#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace faults {

/// Every file below a folder by its path in it: the content.
using Files = std::map<std::string, std::string>;
Files ReadFiles(const std::filesystem::path& folder);

/// Makes a folder hold these files and nothing else.
void FillFolder(const std::filesystem::path& folder, const Files& files);

/// A folder for phone folders, in memory where the machine has such a place, gone with this.
class WorkFolder {
 public:
  WorkFolder();
  ~WorkFolder();
  WorkFolder(const WorkFolder&) = delete;
  WorkFolder& operator=(const WorkFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace faults
