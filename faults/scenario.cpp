#include "faults/scenario.h"

#include <algorithm>
#include <fstream>

namespace faults {

Scenario ReadScenario(const std::filesystem::path& file) {
  Scenario scenario{file.stem().string(), {}};
  std::ifstream stream(file);
  for (std::string line; std::getline(stream, line);)
    if (!line.empty() && line.front() != '#') scenario.lines.push_back(line);
  return scenario;
}

std::vector<Scenario> ReadScenarios(const std::filesystem::path& folder) {
  std::vector<Scenario> scenarios;
  for (const auto& entry : std::filesystem::directory_iterator(folder))
    if (entry.path().extension() == ".qm") scenarios.push_back(ReadScenario(entry.path()));
  std::ranges::sort(scenarios, {}, &Scenario::name);
  return scenarios;
}

}  // namespace faults
