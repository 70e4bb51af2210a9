#include <getopt.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <iostream>
#include <map>
#include <memory>
#include <thread>

#include "faults/lanes.h"
#include "faults/oracle.h"
#include "faults/survey.h"

namespace {

using namespace faults;

constexpr std::size_t kBatch = 200;
/// The start is the same in all scenarios; its faults are walked in this one.
constexpr std::string_view kStartScenario = "start";

constexpr const char* kUsage =
    "Usage: quillmark-faults [OPTION]...\n"
    "Plays every scenario once for each call that can fail, with that call failing.\n"
    "\n"
    "  --scenario NAME    only that one\n"
    "  --operation NAME   only calls of that operation\n"
    "  --call N           only that call, counted from 0\n"
    "  --every N          one fault in N\n"
    "  --jobs N           processes at a time (default: as many as there are processors)\n";

struct Choice {
  std::string scenario;
  std::optional<phone::Operation> operation;
  std::optional<std::uint64_t> call;
  std::size_t every = 1;
  unsigned jobs = std::max(1u, std::thread::hardware_concurrency());
};

/// A run to be made.
struct Run {
  const Scenario* scenario;
  std::size_t step;
  Fault fault;
};

/// What a process knows of the scenario it walks.
class Known {
 public:
  Known(const Files& files, const Scenario& scenario)
      : scenario_(scenario), stage_(files), clean_(stage_.PlayClean(scenario)) {}

  std::string Walk(const Run& run) {
    Expectation expected{clean_, run.step, {}};
    for (std::size_t step = run.step == 0 ? 0 : run.step - 1; step <= run.step + 1; ++step)
      if (const BrokenRun* const back = ReturnAfter(step)) expected.returns.push_back(back);
    return Judge(expected, run.fault, stage_.PlayBroken(scenario_, run.step, run.fault));
  }
  const CleanRun& clean() const { return clean_; }

 private:
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

std::string NameOf(const Run& run) {
  return "--scenario " + run.scenario->name + " --operation " + std::string(phone::OperationName(run.fault.operation)) +
         " --call " + std::to_string(run.fault.call);
}

void Report(const Run& run, const std::string& what) {
  const std::string line = run.step == 0 ? "the start" : run.scenario->lines[run.step - 1];
  const std::string text = NameOf(run) + " (" + line + "): " + what + "\n";
  if (write(STDOUT_FILENO, text.data(), text.size()) < 0) std::abort();
}

bool ParseChoice(int count, char** arguments, Choice& choice) {
  constexpr option options[] = {
      {"scenario", required_argument, nullptr, 's'}, {"operation", required_argument, nullptr, 'o'},
      {"call", required_argument, nullptr, 'c'},     {"every", required_argument, nullptr, 'e'},
      {"jobs", required_argument, nullptr, 'j'},     {nullptr, 0, nullptr, 0}};
  for (int letter; (letter = getopt_long(count, arguments, ":", options, nullptr)) != -1;) {
    if (letter == 's') choice.scenario = optarg;
    if (letter == 'o' && !(choice.operation = phone::OperationByName(optarg))) return false;
    if (letter == 'c') choice.call = std::strtoull(optarg, nullptr, 10);
    if (letter == 'e') choice.every = std::strtoull(optarg, nullptr, 10);
    if (letter == 'j') choice.jobs = static_cast<unsigned>(std::strtoul(optarg, nullptr, 10));
    if (letter == '?' || letter == ':') return false;
  }
  return optind == count && choice.every > 0 && choice.jobs > 0;
}

/// The runs that a scenario asks for, step by step.
void AddRuns(const Scenario& scenario, const Survey& survey, const Choice& choice, std::vector<Run>& runs) {
  for (std::size_t step = scenario.name == kStartScenario ? 0 : 1; step < survey.counts.size(); ++step) {
    for (std::size_t index = 0; index < phone::kOperationCount; ++index) {
      const auto operation = static_cast<phone::Operation>(index);
      if (choice.operation && *choice.operation != operation) continue;
      const std::uint64_t begin = step == 0 ? 0 : survey.counts[step - 1][index];
      for (std::uint64_t call = begin; call < survey.counts[step][index]; ++call)
        if (!choice.call || *choice.call == call) runs.push_back({&scenario, step, {operation, call}});
    }
  }
}

/// What no scenario presses.
std::size_t ReportUnpressed(const std::vector<Survey>& surveys) {
  std::set<std::string> left;
  for (const Survey& survey : surveys) left.insert(survey.offered.begin(), survey.offered.end());
  for (const Survey& survey : surveys)
    for (const std::string& pressed : survey.pressed) left.erase(pressed);
  for (const std::string& offer : left) std::cout << "no scenario presses this: " << offer << "\n";
  return left.size();
}

std::size_t WalkRuns(const Files& files, const std::vector<Run>& runs, unsigned jobs) {
  std::unique_ptr<Known> known;
  Work work;
  work.count = runs.size();
  work.batch_end = [&](std::size_t begin) {
    std::size_t end = begin;
    while (end < runs.size() && end < begin + kBatch && runs[end].scenario == runs[begin].scenario) ++end;
    return end;
  };
  work.prepare = [&](std::size_t begin) { known = std::make_unique<Known>(files, *runs[begin].scenario); };
  work.act = [&](std::size_t number) {
    const std::string complaint = known->Walk(runs[number]);
    if (!complaint.empty()) Report(runs[number], complaint);
    return complaint.empty();
  };
  work.report = [&](std::size_t number, const char* what) { Report(runs[number], what); };
  return DoInLanes(work, jobs);
}

}  // namespace

int main(int count, char** arguments) {
  Choice choice;
  if (!ParseChoice(count, arguments, choice)) {
    std::cerr << kUsage;
    return EXIT_FAILURE;
  }
  const Files files = ReadFiles(FAULTS_FOLDER "/phone");
  const std::vector<Scenario> scenarios = ReadScenarios(FAULTS_FOLDER "/scenarios");
  std::vector<Survey> surveys;
  std::vector<Run> runs;
  std::size_t found = 0;
  for (const Scenario& scenario : scenarios) {
    if (!choice.scenario.empty() && choice.scenario != scenario.name) continue;
    surveys.push_back(SurveyScenario(files, scenario));
    if (!surveys.back().refused.empty()) {
      std::cout << scenario.name << ": " << surveys.back().refused << "\n";
      ++found;
    }
    const std::size_t before = runs.size();
    AddRuns(scenario, surveys.back(), choice, runs);
    std::cout << scenario.name << ": " << runs.size() - before << " faults" << std::endl;
  }
  if (choice.scenario.empty()) found += ReportUnpressed(surveys);
  std::vector<Run> chosen;
  for (std::size_t i = 0; i < runs.size(); i += choice.every) chosen.push_back(runs[i]);
  const auto begin = std::chrono::steady_clock::now();
  found += WalkRuns(files, chosen, choice.jobs);
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
  std::printf("%zu faults walked, %.0f in a second; %zu findings\n", chosen.size(),
              static_cast<double>(chosen.size()) / taken.count(), found);
  return found == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
