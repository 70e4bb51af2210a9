/// \file
/// The options of the scripted phone.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "hosts/program.h"
#include "hosts/script/command.h"

namespace headless {

struct CommandLine {
  hosts::Settings settings;
  std::uint32_t tick = 1000;          ///< the clock's first value
  std::vector<script::Fault> faults;  ///< what is to fail while the program starts
  bool help = false;
  bool version = false;
};

extern const char* const kUsage;

/// False when it is not understood; `error` says why.
bool ParseCommandLine(int count, char** arguments, CommandLine& result, std::string& error);

}  // namespace headless
