/// \file
/// The runs of a scenario: the one in which nothing fails, and those that leave it after a line.
///
/// Steps are numbered: 0 is the start of the program, n is line n. Each ends when its animations have ended and one
/// more frame was painted.
#pragma once

#include <set>
#include <string>

#include "faults/player.h"
#include "faults/scenario.h"
#include "faults/sight.h"

namespace faults {

/// The run in which nothing fails.
struct CleanRun {
  std::vector<Sight> sights;      ///< after each step; without a look once the program has ended
  std::vector<Counts> counts;     ///< calls made until then
  std::set<std::string> offered;  ///< the soft keys, menu items and keys of the screens that were shown
  std::set<std::string> pressed;  ///< those of them that were pressed
  Ending ending;
};

/// The soft keys and keys of all screens of the program, as `offered` names them.
std::set<std::string> EveryKeyOfEveryScreen();

/// A run that does not go on after a step but back to the list of themes, reads it afresh, moves in it and exits.
struct BrokenRun {
  Sight seen;             ///< after the step; without a look when the program has ended
  Sight dismissed;        ///< the same when the message box, if there was one, has been answered OK or No
  Sight again;            ///< the same after another frame
  Sight home;             ///< the list read afresh
  Sight moved;            ///< after Down
  bool stopped = false;   ///< the program's set-up has ended early: there is no screen to leave, only the window
  bool came_due = false;  ///< the fault has happened in time
  Files files;            ///< when the phone was off
  Ending ending;
};

/// What all runs have in common.
struct Setting {
  Files files;                   ///< that the phone begins with
  std::filesystem::path folder;  ///< where each process has a phone folder of its own
};

/// Plays scenarios in this process.
class Stage {
 public:
  explicit Stage(const Setting& setting);

  CleanRun PlayClean(const Scenario& scenario) const;
  BrokenRun PlayBroken(const Scenario& scenario, std::size_t last_step, const std::optional<Fault>& fault) const;

 private:
  const Files& files_;
  const std::filesystem::path folder_;
};

}  // namespace faults
