/// \file
/// Which outcomes of a failed call are explained by it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "faults/runs.h"

namespace faults {

/// What is expected of a run with a fault in one step.
struct Expectation {
  const CleanRun& clean;
  std::size_t step;
  /// The step that answers the question the step leads to with Yes; the step itself when there is no such thing.
  std::size_t consent;
  /// Runs without a fault that went back after the step before, the step and the consent, where the program still runs.
  std::vector<const BrokenRun*> returns;
};

/// What is wrong with the run; empty when everything is as the failed call explains.
std::string Judge(const Expectation& expected, const Fault& fault, const BrokenRun& run);

}  // namespace faults
