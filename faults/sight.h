/// \file
/// What can be seen of the phone at one moment.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "faults/folder.h"
#include "hosts/script/reply.h"

namespace faults {

struct Sight {
  script::Reply look;        ///< what a person sees besides the program's picture; null once the program has ended
  script::Reply box;         ///< the open message box, or null
  script::Reply work;        ///< the cursor, and whether the worker runs
  script::Reply outside;     ///< what the program has done so far, by kind
  script::Reply frame;       ///< the calls that drew the last frame, without the names of device contexts
  std::uint32_t pixels = 0;  ///< checksum of the whole screen
  bool invalid = false;      ///< something waits to be painted
  Files files;
};

/// Looks at the running program.
Sight LookAround(const std::filesystem::path& folder);

/// The texts that a frame shows, in drawing order, without the empty ones.
std::vector<std::string> TextsOf(const script::Reply& frame);
/// The pictures that a frame shows, in drawing order.
std::vector<std::string> PicturesOf(const script::Reply& frame);

}  // namespace faults
