// Time and memory of many themes, plug-ins and favourites: what each of them costs beyond what a list has once, its
// pictures and its file, beside what each of a hundred costs.

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "base/status.h"
#include "support/compare.h"
#include "support/counted_calls.h"
#include "support/layouts.h"
#include "support/memory.h"
#include "support/program.h"
#include "themes/catalog.h"
#include "themes/favorites.h"
#include "themes/writer.h"
#include "themes/xml_reading.h"

namespace {

using namespace bench;

constexpr int kOne = 1;
constexpr int kFew = 100;
constexpr int kCounts[] = {kFew, 1'000, 10'000};
constexpr int kMostRepeats = 10;
constexpr double kTimeBound = 2;
constexpr double kMemoryBound = 1.1;

/// Folder names of the phone, by what they hold.
std::u16string Themes(int count) {
  const std::string digits = std::to_string(count);
  return u"\\Themes " + std::u16string(digits.begin(), digits.end());
}
std::u16string Plugins(int count) {
  const std::string digits = std::to_string(count);
  return u"\\Plugins " + std::u16string(digits.begin(), digits.end());
}
std::u16string Favorites(int count) {
  const std::string digits = std::to_string(count);
  return u"\\Favorites " + std::u16string(digits.begin(), digits.end());
}

const Phone& ThePhone() {
  static const std::unique_ptr<Phone> phone = [] {
    auto made = std::make_unique<Phone>();
    for (const int count : {kOne, kFew, 1'000, 10'000}) {
      const std::string digits = std::to_string(count);
      made->AddThemes("Themes " + digits, count, 8);
      made->AddLayout("Plugins " + digits, "One", LayoutOfPlugins("One", count));
      made->AddFavorites("Favorites " + digits, count);
    }
    return made;
  }();
  return *phone;
}

/// Something that there can be many of: how to have them, and how to be rid of them again.
struct Kind {
  const char* name;
  void (*have)(Program& program, int count);
  void (*drop)(Program& program);
};

void DropThemes(Program& program) {
  program.controller().themeList.reset();
  Unexamined(program.controller().ClearThemeRecords());
}

void HaveThemes(Program& program, int count) {
  program.ShowThemes(Themes(count).c_str());
}

void DropPlugins(Program& program) {
  program.controller().pluginList.reset();
  Unexamined(program.controller().ClearPluginRecords());
  DropThemes(program);
}

/// From the file to the editor, and saved.
void HavePlugins(Program& program, int count) {
  CAppController& controller = program.controller();
  const std::u16string folder = Plugins(count);
  Must(LoadThemeCatalog(folder.c_str(), controller.themeRecords));
  Must(ReadThemePlugins(*controller.themeRecords, controller.pluginRecords));
  Must(controller.BuildPluginList(program.window()));
  Must(WriteThemeFile(controller.themeRecords->document.get(), TEXT("Saved"), (folder + u"\\Saved.xml").c_str(),
                      controller.pluginList.get()));
}

void DropFavorites(Program& program) {
  program.controller().favoriteList.reset();
  Unexamined(program.controller().ClearFavoriteRecords());
}

void HaveFavorites(Program& program, int count) {
  CAppController& controller = program.controller();
  Must(LoadFavorites(Favorites(count).c_str(), controller.favoriteRecords));
  Must(controller.BuildFavoriteList(program.window()));
}

constexpr Kind kKinds[] = {{"themes", HaveThemes, DropThemes},
                           {"plug-ins", HavePlugins, DropPlugins},
                           {"favourites", HaveFavorites, DropFavorites}};

/// What it costs to have that many of a kind.
class Cost {
 public:
  Cost(const Kind& kind, int count) : kind_(kind), count_(count) {}

  /// Each time in fresh memory; few several times, because what is short is easily disturbed.
  void Measure(Program& program) {
    for (int i = 0; i < std::clamp(kMostRepeats * kFew / count_, 1, kMostRepeats); ++i) {
      Settle();
      const double before = Memory();
      times_.Add(Time([&] { kind_.have(program, count_); }));
      memory_ = Memory() - before;
      kind_.drop(program);
    }
  }
  double time() const { return times_.Best(); }
  double memory() const { return memory_; }
  int count() const { return count_; }

 private:
  const Kind& kind_;
  int count_;
  Samples times_;
  double memory_ = 0;
};

/// What each further one costs that one alone does not.
double Each(const Cost& many, const Cost& one, double (Cost::*what)() const) {
  return ((many.*what)() - (one.*what)()) / (many.count() - one.count());
}

void Growth(benchmark::State& state, const Kind& kind, int count, bool of_memory) {
  WithProgram(ThePhone().path(), [&](Program& program) {
    FlushForReal(false);
    DropThemes(program);
    for (const int warm : {kOne, kFew, count}) Cost(kind, warm).Measure(program);  // what is kept is there from now on
    Cost one(kind, kOne);
    Cost few(kind, kFew);
    Cost many(kind, count);
    for (auto _ : state) {
      for (Cost* const cost : {&one, &few, &many}) cost->Measure(program);
      state.SetIterationTime(many.time());
    }
    const auto ratio = [&](auto what) { return Each(many, one, what) / Each(few, one, what); };
    if (of_memory) return Report(state, ratio(&Cost::memory), kMemoryBound);
    Report(state, ratio(&Cost::time), kTimeBound);
  });
}

/// What each theme takes beyond its document, beside the sizes of what stands for it.
void ThemeMemory(benchmark::State& state) {
  constexpr int kThemes = 1'000;
  constexpr double kRecords = sizeof(ThemeRecord) + sizeof(ListItem) + sizeof(CVisualGroup) + sizeof(CTextVisual) +
                              sizeof(ChildNode<CTextVisual>);
  WithProgram(ThePhone().path(), [&](Program& program) {
    DropThemes(program);
    double documents = 0;
    double themes = 0;
    for (auto _ : state) {
      const double before = Memory();
      state.SetIterationTime(Time([&] { HaveThemes(program, kThemes); }));
      themes = Memory() - before;
      std::vector<ComPtr<IXMLDOMDocument>> loaded(kThemes);
      const double between = Memory();
      int number = 0;
      for (const ThemeRecord& theme : RingRange(program.controller().themeRecords))
        Must(LoadXmlFile(theme.path, loaded[number++]));
      documents = Memory() - between;
    }
    Report(state, (themes - documents) / kThemes / kRecords, 1.3);
  });
}

[[maybe_unused]] const bool registered = [] {
  AddRow("memory of a theme in list and catalog", 1, ThemeMemory);
  for (const Kind& kind : kKinds) {
    for (const int count : kCounts) {
      const std::string name = std::to_string(count) + " " + kind.name;
      AddRow("time of each of " + name, 7, [&kind, count](auto& state) { Growth(state, kind, count, false); });
      AddRow("memory of each of " + name, 1, [&kind, count](auto& state) { Growth(state, kind, count, true); });
    }
  }
  return true;
}();

}  // namespace

BENCHMARK_MAIN();
