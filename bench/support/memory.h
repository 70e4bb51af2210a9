/// \file
/// What is allocated.
#pragma once

#include <malloc.h>

namespace bench {

/// Bytes that are allocated now, the allocator's own included.
inline double Memory() {
  const struct mallinfo2 info = mallinfo2();
  return static_cast<double>(info.uordblks) + static_cast<double>(info.hblkhd);
}

/// Gives back what is free, so that nobody pays for what others have left behind.
inline void Settle() {
  malloc_trim(0);
}

}  // namespace bench
