/// \file
/// What is done on the phone: lines of the scripted phone.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "faults/folder.h"

namespace faults {

struct Scenario {
  std::string name;
  std::vector<std::string> lines;
};

/// The scenario of a file: blank lines and comments are left out.
Scenario ReadScenario(const std::filesystem::path& file);
/// All scenarios of a folder, by name.
std::vector<Scenario> ReadScenarios(const std::filesystem::path& folder);

}  // namespace faults
