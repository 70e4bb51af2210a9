// Layout files, read and written, beside libxml2 doing the same.

#include <fcntl.h>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "support/compare.h"
#include "support/counted_calls.h"
#include "support/layouts.h"
#include "support/memory.h"
#include "support/program.h"
#include "themes/catalog.h"
#include "themes/writer.h"
#include "themes/xml_reading.h"

namespace {

using namespace bench;

constexpr int kFiles = 2'000;
constexpr std::size_t kFileSize = 8'000;
constexpr int kPlugins = 1'000;
constexpr LPCWSTR kFolder = TEXT("\\Eight");

struct FreeDocument {
  void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};
using Document = std::unique_ptr<xmlDoc, FreeDocument>;

/// The phone of these measurements, and where its layouts lie on this machine.
struct Files {
  Files() {
    for (int number = 0; number < kFiles; ++number)
      layouts.push_back(
          phone.AddLayout("Eight", std::to_string(100000 + number), LayoutOfSize(Title(number, 8), kFileSize)));
    large = phone.AddLayout("Large", "Large", LayoutOfPlugins("Large", kPlugins));
  }

  Phone phone;
  std::vector<std::filesystem::path> layouts;
  std::filesystem::path large;
};

const Files& TheFiles() {
  static const Files files;
  return files;
}

std::vector<Document> ReadTrees() {
  std::vector<Document> trees;
  trees.reserve(kFiles);
  for (const auto& file : TheFiles().layouts) trees.emplace_back(xmlReadFile(file.c_str(), nullptr, XML_PARSE_NONET));
  return trees;
}

void Catalog(benchmark::State& state) {
  WithProgram(TheFiles().phone.path(), [&](Program&) {
    ThemeRecord* themes = nullptr;
    Samples catalog_times;
    Samples tree_times;
    for (auto _ : state) {
      std::vector<Document> trees;
      Settle();
      tree_times.Add(Time([&] { trees = ReadTrees(); }));
      trees.clear();
      Settle();
      const double time = Time([&] { Must(LoadThemeCatalog(kFolder, themes)); });
      ClearRing(themes);
      catalog_times.Add(time);
      state.SetIterationTime(time);
    }
    Report(state, catalog_times.Best() / tree_times.Best(), 1.25);
  });
}

void CatalogMemory(benchmark::State& state) {
  WithProgram(TheFiles().phone.path(), [&](Program&) {
    ThemeRecord* themes = nullptr;
    double ratio = 0;
    for (auto _ : state) {
      const double before = Memory();
      std::vector<Document> trees = ReadTrees();
      const double in_trees = Memory() - before;
      trees.clear();
      trees.shrink_to_fit();
      const double between = Memory();
      state.SetIterationTime(Time([&] { Must(LoadThemeCatalog(kFolder, themes)); }));
      ratio = (Memory() - between) / in_trees;
      ClearRing(themes);
    }
    Report(state, ratio, 1.3);
  });
}

/// A theme open in the editor.
struct OpenTheme {
  explicit OpenTheme(Program& program) : controller(program.controller()) {
    Must(LoadThemeCatalog(TEXT("\\Large"), controller.themeRecords));
    Must(controller.BuildThemeList(program.window()));
    Must(ReadThemePlugins(*controller.themeRecords, controller.pluginRecords));
    Must(controller.BuildPluginList(program.window()));
  }

  void Save() const {
    Must(WriteThemeFile(controller.themeRecords->document.get(), TEXT("Large"), TEXT("\\Large\\Home\\Copy.home.xml"),
                        controller.pluginList.get()));
  }

  CAppController& controller;
};

/// What libxml2 needs for the same: a copy of the document, its text, and a new file in the place of the old one.
class BareCopy {
 public:
  BareCopy() : document_(xmlReadFile(TheFiles().large.c_str(), nullptr, XML_PARSE_NONET)) {}

  void Save() const {
    const Document copy(xmlCopyDoc(document_.get(), /*recursive=*/1));
    xmlChar* text = nullptr;
    int size = 0;
    xmlDocDumpMemory(copy.get(), &text, &size);
    Write(text, static_cast<std::size_t>(size));
    xmlFree(text);
  }

 private:
  static void Write(const xmlChar* text, std::size_t size) {
    const std::filesystem::path home = TheFiles().large.parent_path();
    const int folder = open(home.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const int file = openat(folder, "bare.tmp", O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    Use(write(file, text, size));
    fsync(file);
    renameat(folder, "bare.tmp", folder, "Bare.home.xml");
    fsync(folder);
    close(file);
    close(folder);
  }

  Document document_;
};

void Writing(benchmark::State& state) {
  WithProgram(TheFiles().phone.path(), [&](Program& program) {
    const OpenTheme theme(program);
    const BareCopy bare;
    FlushForReal(false);
    Compare(
        state, 1.5, 1, [&] { theme.Save(); }, [&] { bare.Save(); });
  });
}

/// Writes, flushes and renames of a save, beside those of the bare one.
void WritingCalls(benchmark::State& state) {
  WithProgram(TheFiles().phone.path(), [&](Program& program) {
    const OpenTheme theme(program);
    const BareCopy bare;
    FlushForReal(true);
    FileCalls bare_calls;
    FileCalls calls;
    for (auto _ : state) {
      TakeFileCalls();
      bare.Save();
      bare_calls = TakeFileCalls();
      state.SetIterationTime(Time([&] { theme.Save(); }));
      calls = TakeFileCalls();
    }
    state.counters["writes"] = calls.writes;
    state.counters["flushes"] = calls.flushes;
    state.counters["renames"] = calls.renames;
    const auto ratio = [](int ours, int theirs) { return static_cast<double>(ours) / theirs; };
    Report(state,
           std::max({ratio(calls.writes, bare_calls.writes), ratio(calls.flushes, bare_calls.flushes),
                     ratio(calls.renames, bare_calls.renames)}),
           1);
  });
}

[[maybe_unused]] const bool registered = [] {
  AddRow("LoadThemeCatalog, 2,000 files of 8 kB, time", 9, Catalog);
  AddRow("LoadThemeCatalog, 2,000 files of 8 kB, memory", 1, CatalogMemory);
  AddRow("WriteThemeFile, 1,000 plug-ins, without the flush", 40, Writing);
  AddRow("WriteThemeFile, writes, flushes and renames", 1, WritingCalls);
  return true;
}();

}  // namespace

BENCHMARK_MAIN();
