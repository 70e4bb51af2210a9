#include "faults/walk.h"

#include <unistd.h>

#include <cstdlib>
#include <map>
#include <memory>

#include "faults/lanes.h"
#include "faults/oracle.h"

namespace faults {
namespace {

/// Enough to make up for the runs that a process makes first.
constexpr std::size_t kBatch = 200;

/// What a process knows of the scenario it walks.
class Known {
 public:
  Known(const Setting& setting, const Scenario& scenario)
      : scenario_(scenario), stage_(setting), clean_(stage_.PlayClean(scenario)) {}

  std::string Walk(const Run& run) {
    Expectation expected{clean_, run.step, ConsentTo(run.step), {}};
    for (const std::size_t step : {run.step == 0 ? 0 : run.step - 1, run.step, expected.consent})
      if (const BrokenRun* const back = ReturnAfter(step)) expected.returns.push_back(back);
    return Judge(expected, run.fault, stage_.PlayBroken(scenario_, run.step, run.fault));
  }

 private:
  std::size_t ConsentTo(std::size_t step) const {
    const script::Reply& question = clean_.sights[step].box;
    if (question.is_null()) return step;
    for (std::size_t at = step; at < scenario_.lines.size(); ++at)
      if (clean_.sights[at].box == question && scenario_.lines[at] == "answer yes") return at + 1;
    return step;
  }

  const BrokenRun* ReturnAfter(std::size_t step) {
    if (step >= clean_.sights.size() || clean_.sights[step].look.is_null()) return nullptr;
    const auto [place, fresh] = returns_.try_emplace(step);
    if (fresh) place->second = stage_.PlayBroken(scenario_, step, std::nullopt);
    return &place->second;
  }

  const Scenario& scenario_;
  const Stage stage_;
  const CleanRun clean_;
  std::map<std::size_t, BrokenRun> returns_;
};

/// Names the run by the options that make it again.
void Report(const Run& run, const std::string& what) {
  const std::string line = run.step == 0 ? "the start" : run.scenario->lines[run.step - 1];
  const std::string text = "--scenario " + run.scenario->name + " --operation " +
                           std::string(phone::OperationName(run.fault.operation)) + " --call " +
                           std::to_string(run.fault.call) + " (" + line + "): " + what + "\n";
  if (write(STDOUT_FILENO, text.data(), text.size()) < 0) std::abort();
}

}  // namespace

std::size_t WalkRuns(const Setting& setting, const std::vector<Run>& runs, unsigned jobs) {
  std::unique_ptr<Known> known;
  Work work;
  work.count = runs.size();
  work.batch_end = [&](std::size_t begin) {
    std::size_t end = begin;
    while (end < runs.size() && end < begin + kBatch && runs[end].scenario == runs[begin].scenario) ++end;
    return end;
  };
  work.prepare = [&](std::size_t begin) { known = std::make_unique<Known>(setting, *runs[begin].scenario); };
  work.act = [&](std::size_t number) {
    const std::string complaint = known->Walk(runs[number]);
    if (!complaint.empty()) Report(runs[number], complaint);
    return complaint.empty();
  };
  work.report = [&](std::size_t number, const char* what) { Report(runs[number], what); };
  return DoInLanes(work, jobs);
}

}  // namespace faults
