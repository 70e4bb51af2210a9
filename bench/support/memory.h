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

}  // namespace bench
