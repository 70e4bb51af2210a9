// From the start of the process to the first frame, beside a program that only gets its text ready.

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/compare.h"
#include "support/layouts.h"

extern char** environ;

namespace {

using namespace bench;

constexpr int kStarts = 30;

/// Starts a program and waits until it says something: what it was told to say once it is ready.
class Started {
 public:
  explicit Started(std::vector<std::string> words) {
    int input[2];
    int output[2];
    if (pipe2(input, O_CLOEXEC) != 0 || pipe2(output, O_CLOEXEC) != 0) throw std::runtime_error("no pipes");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input[0], STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    // The first frame is painted before the first line of the script is read; the reply to that line says so.
    constexpr char kScript[] = "trace off\n";
    const bool told = write(input[1], kScript, sizeof kScript - 1) > 0;
    const int error = posix_spawn(&process_, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(input[0]);
    close(output[1]);
    input_ = input[1];
    output_ = output[0];
    if (error != 0 || !told) throw std::runtime_error("cannot start " + words[0]);
    char first = 0;
    if (read(output_, &first, 1) != 1) throw std::runtime_error("no word from " + words[0]);
  }
  Started(const Started&) = delete;
  Started& operator=(const Started&) = delete;
  ~Started() {
    close(input_);
    char block[4096];
    while (read(output_, block, sizeof block) > 0) continue;
    close(output_);
    waitpid(process_, nullptr, 0);
  }

 private:
  pid_t process_ = -1;
  int input_ = -1;
  int output_ = -1;
};

/// Here other processes are what is measured, and so the clock on the wall counts.
double TimeStart(const std::vector<std::string>& words) {
  using Clock = std::chrono::steady_clock;
  const Clock::time_point begin = Clock::now();
  const Started started(words);
  return std::chrono::duration<double>(Clock::now() - begin).count();
}

void Start(benchmark::State& state) {
  Phone phone;
  phone.AddThemes("Application Data", 20, 8);
  const std::vector<std::string> program = {HEADLESS_PROGRAM, "--phone", phone.path().string()};
  const std::vector<std::string> baseline = {BASELINE_PROGRAM};
  Samples program_times;
  Samples baseline_times;
  for (auto _ : state) {
    baseline_times.Add(TimeStart(baseline));
    const double time = TimeStart(program);
    program_times.Add(time);
    state.SetIterationTime(time);
  }
  Report(state, program_times.Median() / baseline_times.Median(), 1.5);
}

[[maybe_unused]] const bool registered = [] {
  AddRow("start to first frame, headless, 20 themes", kStarts, Start);
  return true;
}();

}  // namespace

BENCHMARK_MAIN();
