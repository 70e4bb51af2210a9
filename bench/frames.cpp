// Frames of the theme list, beside plain copies of memory and walks over memory.

#include <cstring>
#include <memory>

#include "support/compare.h"
#include "support/layouts.h"
#include "support/program.h"

namespace {

using namespace bench;

constexpr std::size_t kFrameBytes = std::size_t{240} * 278 * 4;
constexpr int kManyThemes = 10'000;
constexpr int kFewThemes = 20;
constexpr int kFrames = 400;
constexpr int kLongFrames = 200;

/// The phone that all frames are drawn on.
const Phone& ThePhone() {
  static const std::unique_ptr<Phone> phone = [] {
    auto made = std::make_unique<Phone>();
    made->AddThemes("Short", kFewThemes, 8);
    made->AddThemes("Long", kFewThemes, 25);
    made->AddThemes("Many", kManyThemes, 8);
    return made;
  }();
  return *phone;
}

/// Two copies of a client-sized frame.
class TwoCopies {
 public:
  void operator()() const {
    std::memcpy(second_.get(), first_.get(), kFrameBytes);
    Use(second_.get());
    std::memcpy(third_.get(), second_.get(), kFrameBytes);
    Use(third_.get());
  }

 private:
  static std::unique_ptr<char[]> Frame() { return std::make_unique<char[]>(kFrameBytes); }
  std::unique_ptr<char[]> first_ = Frame();
  std::unique_ptr<char[]> second_ = Frame();
  std::unique_ptr<char[]> third_ = Frame();
};

/// A ring of plain records of a row's, a group's and a text's size, allocated in the order in which a list allocates
/// its own.
class RecordRing {
 public:
  explicit RecordRing(int count) {
    Row* last = nullptr;
    for (int i = 0; i < count; ++i) {
      auto* const group = new Group;
      group->text = new Text;
      auto* const row = new Row;
      row->group = group;
      (last != nullptr ? last->next : first_) = row;
      last = row;
    }
    last->next = first_;
  }
  RecordRing(const RecordRing&) = delete;
  RecordRing& operator=(const RecordRing&) = delete;
  ~RecordRing() {
    const Row* row = first_;
    do {
      const Row* const next = row->next;
      delete row->group->text;
      delete row->group;
      delete row;
      row = next;
    } while (row != first_);
  }

  void operator()() const {
    int sum = 0;
    const Row* row = first_;
    do {
      sum += row->group->text->value;
      row = row->next;
    } while (row != first_);
    Use(sum);
  }

 private:
  template <typename Record, std::size_t used>
  struct Rest {
    char bytes[sizeof(Record) - used] = {};
  };
  struct Text {
    int value = 1;
    Rest<CTextVisual, sizeof(int)> rest;
  };
  struct Group {
    Text* text = nullptr;
    Rest<CVisualGroup, sizeof(void*)> rest;
  };
  struct Row {
    Row* next = nullptr;
    Group* group = nullptr;
    Rest<ListItem, 2 * sizeof(void*)> rest;
  };

  Row* first_ = nullptr;
};

/// Moments in the middle of a motion, one after the other.
class Middle {
 public:
  explicit Middle(Program& program) : program_(program), start_(program.tick()) {}
  void Next() {
    constexpr std::uint32_t kStep = 16;
    moment_ = moment_ >= 400 ? 100 : moment_ + kStep;
    program_.tick() = start_ + moment_;
  }

 private:
  Program& program_;
  std::uint32_t start_;
  std::uint32_t moment_ = 100;
};

void StartScroll(Program& program) {
  program.GoToViewsEnd();
  program.Press(VK_DOWN);
}

void FrameAtRest(benchmark::State& state, LPCWSTR themes, double bound) {
  WithProgram(ThePhone().path(), [&](Program& program) {
    program.ShowThemes(themes);
    program.Pass(1000);
    program.Frame();
    Compare(
        state, bound, 1, [&] { program.Frame(); }, TwoCopies());
  });
}

void FrameInScroll(benchmark::State& state) {
  WithProgram(ThePhone().path(), [&](Program& program) {
    program.ShowThemes(TEXT("\\Short"));
    StartScroll(program);
    Middle middle(program);
    const auto frame = [&] {
      middle.Next();
      program.Frame();
    };
    Compare(state, 6, 1, frame, TwoCopies());
  });
}

double BestFrame(Program& program, bool scrolling) {
  Samples times;
  Middle middle(program);
  for (int i = 0; i < kFrames; ++i) {
    if (scrolling) middle.Next();
    times.Add(Time([&] { program.Frame(); }));
  }
  return times.Best();
}

void Prepare(Program& program, LPCWSTR themes, bool scrolling) {
  program.ShowThemes(themes);
  if (scrolling) {
    StartScroll(program);
  } else {
    program.Pass(1000);
    program.Frame();
  }
}

/// What a row outside the view adds to a frame, beside the walk.
void OffscreenRow(benchmark::State& state, bool scrolling, double bound) {
  WithProgram(ThePhone().path(), [&](Program& program) {
    Prepare(program, TEXT("\\Short"), scrolling);
    const double few = BestFrame(program, scrolling);
    Prepare(program, TEXT("\\Many"), scrolling);
    Middle middle(program);
    const RecordRing walk(kManyThemes);
    Samples many;
    Samples walks;
    for (auto _ : state) {
      walks.Add(Time(walk));
      if (scrolling) middle.Next();
      const double time = Time([&] { program.Frame(); });
      many.Add(time);
      state.SetIterationTime(time);
    }
    const double row = (many.Best() - few) / (kManyThemes - kFewThemes);
    Report(state, row / (walks.Best() / kManyThemes), bound);
  });
}

[[maybe_unused]] const bool registered = [] {
  AddRow("frame at rest, titles of 8", kFrames, [](auto& state) { FrameAtRest(state, TEXT("\\Short"), 5); });
  AddRow("frame at rest, titles of 25", kFrames, [](auto& state) { FrameAtRest(state, TEXT("\\Long"), 7); });
  AddRow("frame in the middle of a scroll", kFrames, [](auto& state) { FrameInScroll(state); });
  AddRow("off-screen row, frame at rest", kLongFrames, [](auto& state) { OffscreenRow(state, false, 3); });
  AddRow("off-screen row, animated frame", kLongFrames, [](auto& state) { OffscreenRow(state, true, 5); });
  return true;
}();

}  // namespace

BENCHMARK_MAIN();
