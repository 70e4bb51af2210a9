/// \file
/// What a line of the script asks for, and the state of affairs while it is carried out.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "hosts/script/time.h"
#include "phone.h"

namespace script {

/// Fields stand in the order in which they were put in.
using Reply = nlohmann::ordered_json;

/// How the program has ended, and the last look at the phone.
struct Ending {
  int exit_code;
  phone::State state;
};

struct Execution;

/// A part of a command after which the phone runs until nothing is left to do, painting at most once.
using Step = std::function<void(Execution&)>;

/// A command being carried out.
struct Execution {
  ManualClock& clock;
  Frames& frames;
  const std::optional<Ending>& ending;
  std::deque<Step> steps;  ///< still to be done; a step may add more
  std::string error;       ///< why the command could not be done; empty when it could
};

/// What a command does when the program has ended.
enum class AfterEnd {
  refused,
  remembered,  ///< it tells what the phone was like at the end
  in_files,    ///< it works on the phone's files
};

struct Command {
  std::deque<Step> steps;
  /// Adds to the reply once the steps are done; may fail, too.
  std::function<void(Execution&, Reply&)> report;
  AfterEnd after_end = AfterEnd::refused;
  bool reply_only = false;  ///< is there for its reply
};

/// True for a blank line and for a comment.
bool SaysNothing(std::string_view line);
/// Understands a line that says something; nothing when it cannot be understood.
std::optional<Command> ParseCommand(std::string_view line);

/// Asks for an operation to fail as in `OPERATION COUNT AFTER`.
struct Fault {
  std::string_view operation;  ///< its name in scripts
  std::uint64_t count = 1;
  std::uint64_t after = 0;
};

/// False when there is no such operation.
bool Inject(const Fault& fault);

}  // namespace script
