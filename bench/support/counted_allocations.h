/// \file
/// Allocations, counted. A program that links this has its own allocator in front of the C library's, for every library
/// it loads.
#pragma once

#include <atomic>

namespace bench {

/// Counts anew; gives how many allocations there were since the last time.
int TakeAllocations();

}  // namespace bench
