#include "support/compare.h"

#include <time.h>

#include <algorithm>

namespace bench {

double ProcessorTime() {
  timespec time = {};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

double Samples::Best() const {
  return *std::min_element(times_.begin(), times_.end());
}

double Samples::Median() const {
  std::vector<double> sorted = times_;
  std::sort(sorted.begin(), sorted.end());
  const std::size_t middle = sorted.size() / 2;
  return sorted.size() % 2 != 0 ? sorted[middle] : (sorted[middle - 1] + sorted[middle]) / 2;
}

void Report(benchmark::State& state, double ratio, double bound) {
  state.counters["ratio"] = ratio;
  state.counters["bound"] = bound;
}

void AddRow(const std::string& name, int iterations, std::function<void(benchmark::State&)> measure) {
  benchmark::RegisterBenchmark(name.c_str(), std::move(measure))
      ->Iterations(iterations)
      ->UseManualTime()
      ->Unit(benchmark::kMicrosecond);
}

}  // namespace bench
