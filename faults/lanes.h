/// \file
/// Doing many things in processes of their own, so that one that crashes, hangs or leaks is found and the others go on.
#pragma once

#include <cstddef>
#include <functional>

namespace faults {

/// A row of things to do, numbered from 0, in batches: each batch is done in a process.
struct Work {
  std::size_t count = 0;
  /// Where the batch that begins at a number ends at the latest.
  std::function<std::size_t(std::size_t begin)> batch_end;
  /// Done first in each process.
  std::function<void(std::size_t begin)> prepare;
  /// Does one; false when something was found, which it has reported.
  std::function<bool(std::size_t number)> act;
  /// Reports what became of the process that did that one.
  std::function<void(std::size_t number, const char* what)> report;
};

/// Does it all in that many processes at a time. Gives the number of findings.
std::size_t DoInLanes(const Work& work, unsigned lanes);

}  // namespace faults
