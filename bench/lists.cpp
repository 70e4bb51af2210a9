// A list of many themes: building it, and moving about in it.

#include <memory>
#include <string>
#include <vector>

#include "animation/script.h"
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

/// Memory for a step and for three tracks, for every row of the list at the same time. A list keeps the tracks in the
/// step's own memory; as records of their own they would be these.
class StepMemory {
 public:
  void operator()() const {
    for (Row& row : rows_) {
      row.step = ::operator new(kStep);
      for (void*& track : row.tracks) track = ::operator new(sizeof(AnimTrack));
    }
    Use(rows_.front());
    for (Row& row : rows_) {
      for (void* track : row.tracks) ::operator delete(track);
      ::operator delete(row.step);
    }
  }

 private:
  struct Row {
    void* step;
    void* tracks[AnimStep::kRoom];
  };
  static constexpr std::size_t kStep = sizeof(AnimStep) - sizeof(AnimStep::room);
  mutable std::vector<Row> rows_ = std::vector<Row>(kThemes);
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
      return Time([&] { Must(controller.BuildThemeList(program.window())); });
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
  AddRow("building the list of 10,000, the last in use", 60, BuildingTheList);
  return true;
}();

}  // namespace

BENCHMARK_MAIN();
