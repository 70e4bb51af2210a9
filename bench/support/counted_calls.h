/// \file
/// The calls with which files are written, counted. A program that links this has its own versions of them in the place
/// of the C library's, for every library it loads.
#pragma once

namespace bench {

struct FileCalls {
  int writes = 0;
  int flushes = 0;
  int renames = 0;
};

/// Counts anew; gives what was counted since the last time.
FileCalls TakeFileCalls();

/// Whether a flush reaches the disk, or is counted only.
void FlushForReal(bool real);

}  // namespace bench
