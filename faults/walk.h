/// \file
/// Walking faults: one run for each, many at a time.
#pragma once

#include <vector>

#include "faults/runs.h"

namespace faults {

/// A run to be made: a scenario until the end of the step in which a call fails.
struct Run {
  const Scenario* scenario;
  std::size_t step;
  Fault fault;
};

/// Makes the runs, in that many processes at a time, and writes what is found to the standard output. The runs of a
/// scenario stand together. Gives the number of findings.
std::size_t WalkRuns(const Setting& setting, const std::vector<Run>& runs, unsigned jobs);

}  // namespace faults
