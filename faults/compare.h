/// \file
/// Comparing what is seen with what is expected. Each comparison gives what differs in words, nothing when all is as it
/// may be; `allowed` is a set of outcomes.
#pragma once

#include <string>

#include "faults/outcomes.h"
#include "faults/sight.h"

namespace faults {

/// What the phone shows besides the program's picture.
std::string LookDifference(script::Reply seen, script::Reply expected, unsigned allowed);
/// The program's picture. What the screen showed `before` may be shown still by rows that were to move.
std::string FrameDifference(const Sight& seen, const Sight& expected, unsigned allowed, const Sight* before);
/// Every file must be that of one of the two moments, and there must be no other.
std::string FileDifference(const Files& seen, const Files* before, const Files& after);
/// All of it. `before` is null at the start.
std::string Difference(const Sight& seen, const Sight& expected, unsigned allowed, const Sight* before);

/// A frame in few words: what is drawn where.
std::string Summary(const script::Reply& frame);

}  // namespace faults
