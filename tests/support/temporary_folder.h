/// \file
/// A folder of a test's own, gone with it.
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <string>
#include <system_error>

class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "quillmark-test-XXXXXX").string();
    if (!mkdtemp(name.data())) throw std::filesystem::filesystem_error("mkdtemp", {});
    path = name;
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }

  std::filesystem::path path;
};
