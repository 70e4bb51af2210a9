/// \file
/// A phone within this process that is worked by Hands, again and again.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "faults/hands.h"
#include "system/faults.h"

namespace faults {

/// Calls of each operation, by Operation.
using Counts = std::array<std::uint64_t, phone::kOperationCount>;
Counts CallCounts();

/// The call of an operation that is to fail, numbered from 0 at the program's start.
struct Fault {
  phone::Operation operation;
  std::uint64_t call;
};

/// How a run has ended.
struct Ending {
  int exit_code = 0;
  std::string refused;               ///< the line that was not understood or could not be done, and why
  std::size_t graphics_handles = 0;  ///< that were open when the program had ended, the phone's own included
  std::size_t kernel_handles = 0;
  std::size_t open_files = 0;  ///< of this process when the phone was off
};

/// Switches a phone on, has the program worked by the hands, and switches it off. When the hands are done the main
/// window is closed.
Ending Play(const std::filesystem::path& folder, const std::optional<Fault>& fault, Hands hands);

}  // namespace faults
