/// \file
/// What the phone refuses, in words for the person.
#pragma once

#include <string>

#include "host.h"

namespace sdl {

/// A sentence with the name and the cause; empty for an outcome of which the person need not hear.
std::string WordsFor(const phone::Outcome& outcome);

}  // namespace sdl
