/// \file
/// Runs a test's body as the program of a phone with a folder of its own.
#pragma once

#include <filesystem>
#include <functional>

#include "phone.h"
#include "support/temporary_folder.h"
#include "support/test_host.h"

/// Runs the body between the phone's switching on and off; it gets the host, whose clock it may set, and the phone
/// folder.
inline void OnPhone(const std::function<void(TestHost& host, const std::filesystem::path& folder)>& body) {
  static std::function<void()> program;
  TemporaryFolder folder;
  TestHost host;
  program = [&] { body(host, folder.path); };
  phone::Options options;
  options.folder = folder.path;
  options.program_data = folder.path;
  options.module = u"\\Program Files\\Test\\test.exe";
  phone::Run(host, options, [](HINSTANCE, HINSTANCE, LPWSTR, int) {
    program();
    return 0;
  });
}
