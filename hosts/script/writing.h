/// \file
/// Commands for what hands have done to the phone.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "windows/input.h"

namespace script {

/// The lines of a script that hand the same input over.
std::vector<std::string> CommandsFor(const std::deque<phone::Input>& input);

}  // namespace script
