/// \file
/// What there is to walk in a scenario, found in a process of its own: no phone has run in the one that asks, so that
/// it can be forked.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "faults/runs.h"

namespace faults {

struct Survey {
  std::vector<Counts> counts;  ///< calls made until the end of each step
  std::set<std::string> offered;
  std::set<std::string> pressed;
  std::string refused;  ///< why the scenario cannot be played
};

Survey SurveyScenario(const Setting& setting, const Scenario& scenario);

}  // namespace faults
