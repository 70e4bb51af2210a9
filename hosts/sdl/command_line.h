/// \file
/// The command line of the desktop program.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "hosts/sdl/geometry.h"

namespace sdl {

struct CommandLine {
  std::filesystem::path phone;        ///< empty: the default one
  std::optional<Orientation> screen;  ///< nothing: what is remembered
  std::optional<int> scale;           ///< nothing: what is remembered
  std::filesystem::path record;       ///< the script to write; empty: none
  std::filesystem::path replay;       ///< the script to play; empty: none
  bool help = false;
  bool version = false;
};

/// Reads a command line. False when it is not understood; `error` then tells what is right. May change the order of
/// the arguments.
bool ParseCommandLine(int count, char** arguments, CommandLine& result, std::string& error);

/// What --help tells.
std::string HelpText();

}  // namespace sdl
