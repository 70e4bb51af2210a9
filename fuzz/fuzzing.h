/// \file
/// What the fuzzers share: the check of what must hold, and a phone that stays on from one input to the next.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "support/temporary_folder.h"
#include "support/test_host.h"

/// One input. Called by the fuzzer as often as it likes, or by replay.cpp for the inputs that are kept.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzzing {

inline std::string_view TextOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

/// Cuts the first line off a text; all of it when it has no other.
std::string_view CutLine(std::string_view& text);

/// Ends the process, and with it the fuzzing, when something does not hold.
void Require(bool holds, const char* what);

/// A phone without a program: files, registry and components, in an empty folder of its own.
class Phone {
 public:
  /// The one of this process, switched on by the first call.
  static Phone& On();

  /// A file of the phone folder, by its path in it; without asking the phone.
  void Put(const std::string& path, std::string_view content) const;
  /// Its content; empty when it is not there.
  std::string Content(const std::string& path) const;
  void Remove(const std::string& path) const;

  const std::filesystem::path& folder() const { return folder_.path; }

 private:
  Phone();
  ~Phone();

  TemporaryFolder folder_;
  TestHost host_;
};

}  // namespace fuzzing
