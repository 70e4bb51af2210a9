/// \file
/// Measuring something beside its bare baseline: both in turn, in the same run, so that what the machine does meanwhile
/// meets both alike. What counts is the ratio, not the time.
#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <string>
#include <vector>

namespace bench {

/// Times of one thing, in seconds.
class Samples {
 public:
  void Add(double seconds) { times_.push_back(seconds); }
  double Best() const;
  double Median() const;

 private:
  std::vector<double> times_;
};

/// What this thread has taken of the processor so far, in seconds: while it waits for the processor, nothing.
double ProcessorTime();

/// Runs it that often; the seconds of one run.
template <typename Action>
double Time(const Action& action, int repeats = 1) {
  const double begin = ProcessorTime();
  for (int i = 0; i < repeats; ++i) action();
  return (ProcessorTime() - begin) / repeats;
}

/// The row's entry in the table: a ratio and what it may be at most.
void Report(benchmark::State& state, double ratio, double bound);

/// Times both in turn, as often as the benchmark iterates, and reports the best of the one over the best of the other.
/// `repeats` is how often each is run for one sample: short ones need several to be seen by the clock.
template <typename Subject, typename Baseline>
void Compare(benchmark::State& state, double bound, int repeats, const Subject& subject, const Baseline& baseline) {
  Samples subject_times;
  Samples baseline_times;
  for (auto _ : state) {
    baseline_times.Add(Time(baseline, repeats));
    const double time = Time(subject, repeats);
    subject_times.Add(time);
    state.SetIterationTime(time);
  }
  Report(state, subject_times.Best() / baseline_times.Best(), bound);
}

/// A row of the table: what is measured, how often, and how.
void AddRow(const std::string& name, int iterations, std::function<void(benchmark::State&)> measure);

/// Something that the compiler must take for used.
template <typename Value>
void Use(Value&& value) {
  benchmark::DoNotOptimize(value);
}

}  // namespace bench
