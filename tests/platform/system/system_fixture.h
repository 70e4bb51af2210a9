/// \file
/// A phone without windows: a phone folder of its own, a clock that moves when told, and the program's threads.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <span>
#include <string>
#include <string_view>

#include "support/file_content.h"
#include "support/temporary_folder.h"
#include "support/test_host.h"
#include "system/faults.h"
#include "system/files.h"
#include "system/handles.h"
#include "system/outside.h"
#include "system/scheduler.h"

class SystemTest : public testing::Test {
 protected:
  SystemTest() {
    std::filesystem::create_directories(base / "data/GFX");
    Mount();
    phone::ResetOutside(host);
    phone::ResetFaults();
    phone::StartScheduler(host, false);
  }

  ~SystemTest() override {
    phone::JoinThreads();
    phone::StopScheduler();
    phone::LeaveHost();
    phone::UnmountFiles();
    phone::ResetFaults();
  }

  void Mount() { phone::MountFiles(folder, base / "data", u"\\Program Files\\App\\app.exe"); }

  /// The file's content, "(none)" for a file that is not there.
  static std::string Content(const std::filesystem::path& path) {
    return std::filesystem::exists(path) ? ReadFile(path) : "(none)";
  }

  static DWORD Write(std::u16string_view path, std::string_view content) {
    return phone::WriteWholeFile(path, std::as_bytes(std::span(content)), phone::Writer::program);
  }

  /// How many entries a folder of this machine has, stray files included.
  static std::ptrdiff_t CountIn(const std::filesystem::path& path) {
    return std::distance(std::filesystem::directory_iterator(path), {});
  }

  TemporaryFolder temporary;
  std::filesystem::path base = temporary.path;
  std::filesystem::path folder = base / "phone";  ///< the phone folder
  TestHost host;
};
