// A list of many themes: building it, and moving about in it.

#include <memory>
#include <string>
#include <vector>

#include "animation/script.h"
#include "base/status.h"
#include "phone.h"
#include "support/compare.h"
#include "support/layouts.h"
#include "support/program.h"

namespace {

using namespace bench;

constexpr int kThemes = 10'000;
constexpr LPCWSTR kFolder = TEXT("\\Many");

const Phone& ThePhone() {
  static const std::unique_ptr<Phone> phone = [] {
    auto made = std::make_unique<Phone>();
    made->AddThemes("Many", kThemes, 8);
    return made;
  }();
  return *phone;
}

/// Memory for a step and its three tracks, which lie in it, for every row of the list at the same time.
class StepMemory {
 public:
  void operator()() const {
    for (void*& step : steps_) step = ::operator new(sizeof(AnimStep));
    Use(steps_.front());
    for (void* step : steps_) ::operator delete(step);
  }

 private:
  mutable std::vector<void*> steps_ = std::vector<void*>(kThemes);
};

void ScrollingDown(benchmark::State& state) {
  WithProgram(ThePhone().path(), [&](Program& program) {
    program.ShowThemes(kFolder);
    program.GoToViewsEnd();
    const auto down = [&] {
      program.Pass(100);
      program.Press(VK_DOWN);
    };
    Compare(state, 2, 1, down, StepMemory());
  });
}

void UseTheme(const ThemeRecord& theme) {
  phone::RegistrySet(u"ControlPanel\\Home", u"Scheme", std::u16string(LPCWSTR{theme.path}));
}

void BuildingTheList(benchmark::State& state) {
  WithProgram(ThePhone().path(), [&](Program& program) {
    program.ShowThemes(kFolder);
    CAppController& controller = program.controller();
    const auto build = [&](const ThemeRecord& in_use) {
      UseTheme(in_use);
      controller.themeList.reset();
      return Time([&] { Unexamined(controller.BuildThemeList(program.window())); });
    };
    Samples with_last;
    Samples with_first;
    for (auto _ : state) {
      with_first.Add(build(*controller.themeRecords));
      const double time = build(*controller.themeRecords->prev);
      with_last.Add(time);
      state.SetIterationTime(time);
    }
    Report(state, with_last.Best() / with_first.Best(), 1.5);
  });
}

[[maybe_unused]] const bool registered = [] {
  AddRow("one Down that scrolls a list of 10,000", 100, ScrollingDown);
  AddRow("building the list of 10,000, the last in use", 15, BuildingTheList);
  return true;
}();

}  // namespace

BENCHMARK_MAIN();
