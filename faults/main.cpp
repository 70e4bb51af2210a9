#include <getopt.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <thread>

#include "faults/survey.h"
#include "faults/walk.h"

namespace {

using namespace faults;

/// The start is the same in all scenarios; its faults are walked in this one.
constexpr std::string_view kStartScenario = "start";

constexpr const char* kUsage =
    "Usage: quillmark-faults [OPTION]...\n"
    "Plays scenarios once for each call that can fail, with that call failing.\n"
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

/// What is to be walked, and whether all of the program is pressed by it.
class Plan {
 public:
  explicit Plan(const Choice& choice) : choice_(choice), left_(EveryKeyOfEveryScreen()) {}

  void Add(const Scenario& scenario, const Survey& survey) {
    if (!survey.refused.empty()) {
      std::cout << scenario.name << ": " << survey.refused << "\n";
      ++found_;
    }
    left_.insert(survey.offered.begin(), survey.offered.end());
    pressed_.insert(survey.pressed.begin(), survey.pressed.end());
    const std::size_t before = runs_.size();
    for (std::size_t step = scenario.name == kStartScenario ? 0 : 1; step < survey.counts.size(); ++step)
      for (std::size_t index = 0; index < phone::kOperationCount; ++index)
        AddCalls(scenario, step, index, step == 0 ? 0 : survey.counts[step - 1][index], survey.counts[step][index]);
    std::cout << scenario.name << ": " << runs_.size() - before << " faults" << std::endl;
  }

  const std::vector<Run>& runs() const { return runs_; }

  /// What was found without walking: scenarios that cannot be played, and what none of them presses.
  std::size_t Findings() {
    if (!choice_.scenario.empty()) return found_;
    for (const std::string& pressed : pressed_) left_.erase(pressed);
    for (const std::string& offer : left_) std::cout << "no scenario presses this: " << offer << "\n";
    return found_ + left_.size();
  }

 private:
  void AddCalls(const Scenario& scenario, std::size_t step, std::size_t index, std::uint64_t begin, std::uint64_t end) {
    const auto operation = static_cast<phone::Operation>(index);
    if (choice_.operation && *choice_.operation != operation) return;
    for (std::uint64_t call = begin; call < end; ++call) {
      if (choice_.call && *choice_.call != call) continue;
      if (seen_++ % choice_.every == 0) runs_.push_back({&scenario, step, {operation, call}});
    }
  }

  const Choice& choice_;
  std::set<std::string> left_;  ///< offered, and not yet pressed once Findings was asked for
  std::set<std::string> pressed_;
  std::vector<Run> runs_;
  std::size_t seen_ = 0;
  std::size_t found_ = 0;
};

}  // namespace

int main(int count, char** arguments) {
  Choice choice;
  if (!ParseChoice(count, arguments, choice)) {
    std::cerr << kUsage;
    return EXIT_FAILURE;
  }
  const WorkFolder folder;
  const Setting setting{ReadFiles(FAULTS_FOLDER "/phone"), folder.path()};
  const std::vector<Scenario> scenarios = ReadScenarios(FAULTS_FOLDER "/scenarios");
  Plan plan(choice);
  for (const Scenario& scenario : scenarios)
    if (choice.scenario.empty() || choice.scenario == scenario.name)
      plan.Add(scenario, SurveyScenario(setting, scenario));
  std::size_t found = plan.Findings();
  const auto begin = std::chrono::steady_clock::now();
  found += WalkRuns(setting, plan.runs(), choice.jobs);
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
  const std::size_t walked = plan.runs().size();
  std::printf("%zu faults walked, %.0f in a second; %zu findings\n", walked,
              static_cast<double>(walked) / taken.count(), found);
  return found == 0 && walked > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
