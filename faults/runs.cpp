#include "faults/runs.h"

#include <unistd.h>

#include <iterator>

#include "graphics/trace.h"
#include "phone.h"
#include "system/text.h"

namespace faults {
namespace {

using script::Reply;

/// Animations take at most half a second; the frame that ends one asks for another.
constexpr const char* kSettle[] = {"wait 600 600", "repaint"};

/// The screens by their captions; the last one has none.
constexpr const char* kScreens[] = {"Select Theme",  "Select Plugins",   "Save Theme",
                                    "Choose Plugin", "Add to favorites", "About"};

constexpr const char* kKeys[] = {"softkey left", "softkey right", "key action", "key up", "key down", "key back"};

/// More screens than the program ever has open behind each other.
constexpr int kDeepest = 4;

std::string CaptionOf(const Sight& sight) {
  for (const std::string& text : TextsOf(sight.frame))
    for (const char* const caption : kScreens)
      if (text == caption) return caption;
  return kScreens[std::size(kScreens) - 1];
}

/// What a person could press on the screen that is seen, each with the screen's name before it.
std::set<std::string> Offers(const Sight& sight) {
  const std::string screen = CaptionOf(sight) + ": ";
  std::set<std::string> offers;
  if (!sight.box.is_null()) {
    const std::string box = sight.box["text"].get<std::string>() + ' ';
    for (const Reply& button : sight.box["buttons"]) offers.insert(box + button.get<std::string>());
  } else if (!sight.look["menu"].is_null()) {
    for (const Reply& label : sight.look["menu"]) offers.insert(screen + "menu " + label.get<std::string>());
  } else {
    for (const char* const key : kKeys) offers.insert(screen + key);
  }
  return offers;
}

std::string PressedBy(const std::string& line, const Sight& before) {
  if (before.box.is_null()) return CaptionOf(before) + ": " + line;
  const std::string answer = line.substr(line.find(' ') + 1);
  const std::string button = answer == "yes" ? "Yes" : answer == "no" ? "No" : "OK";
  return before.box["text"].get<std::string>() + ' ' + button;
}

Hands PlayAll(const Scenario& scenario, const std::filesystem::path& folder, CleanRun& run) {
  for (std::size_t step = 0;; ++step) {
    for (const char* const line : kSettle) co_yield line;
    run.sights.push_back(LookAround(folder));
    run.counts.push_back(CallCounts());
    run.offered.merge(Offers(run.sights.back()));
    if (step == scenario.lines.size()) co_return;
    run.pressed.insert(PressedBy(scenario.lines[step], run.sights.back()));
    co_yield scenario.lines[step];
  }
}

std::string Dismissal(const Sight& sight) {
  return sight.box["buttons"].size() == 1 ? "answer ok" : "answer no";
}

Hands PlayAndReturn(const Scenario& scenario, std::size_t last_step, const std::filesystem::path& folder,
                    const std::optional<Fault>& fault, BrokenRun& run) {
  phone::EnableTrace(false);
  for (std::size_t step = 0; step < last_step; ++step) {
    for (const char* const line : kSettle) co_yield line;
    co_yield scenario.lines[step];
  }
  phone::EnableTrace(true);
  for (const char* const line : kSettle) co_yield line;
  run.came_due = fault && phone::CallCount(fault->operation) > fault->call;
  run.seen = run.dismissed = LookAround(folder);
  while (!run.dismissed.box.is_null()) {
    co_yield Dismissal(run.dismissed);
    for (const char* const line : kSettle) co_yield line;
    run.dismissed = LookAround(folder);
  }
  co_yield "repaint";
  run.again = LookAround(folder);

  run.stopped = last_step == 0 && TextsOf(run.again.frame).empty();
  if (run.stopped) co_return;
  co_yield "focus main";
  if (!run.again.look["menu"].is_null()) co_yield "key back";
  for (int depth = 0; depth < kDeepest && phone::Look().bar_right != u"Exit"; ++depth) {
    co_yield "softkey right";
    for (const char* const line : kSettle) co_yield line;
  }
  for (const char* const line : {"softkey left", "menu About", "softkey right"}) co_yield line;
  for (const char* const line : kSettle) co_yield line;
  run.home = LookAround(folder);
  co_yield "key down";
  for (const char* const line : kSettle) co_yield line;
  run.moved = LookAround(folder);
  co_yield "softkey right";
}

}  // namespace

std::set<std::string> EveryKeyOfEveryScreen() {
  std::set<std::string> keys;
  for (const char* const screen : kScreens)
    for (const char* const key : kKeys) keys.insert(std::string(screen) + ": " + key);
  return keys;
}

Stage::Stage(const Setting& setting) : files_(setting.files), folder_(setting.folder / std::to_string(getpid())) {}

CleanRun Stage::PlayClean(const Scenario& scenario) const {
  FillFolder(folder_, files_);
  CleanRun run;
  phone::EnableTrace(true);
  run.ending = Play(folder_, std::nullopt, PlayAll(scenario, folder_, run));
  // The last line may have ended the program.
  if (run.sights.size() == scenario.lines.size()) {
    run.sights.emplace_back().files = ReadFiles(folder_);
    run.counts.push_back(CallCounts());
  }
  if (run.sights.size() <= scenario.lines.size() && run.ending.refused.empty())
    run.ending.refused = "the program has ended early";
  return run;
}

BrokenRun Stage::PlayBroken(const Scenario& scenario, std::size_t last_step, const std::optional<Fault>& fault) const {
  FillFolder(folder_, files_);
  BrokenRun run;
  run.ending = Play(folder_, fault, PlayAndReturn(scenario, last_step, folder_, fault, run));
  run.files = ReadFiles(folder_);
  if (run.seen.look.is_null()) {
    run.came_due = fault && phone::CallCount(fault->operation) > fault->call;
    run.seen.files = run.files;
  }
  return run;
}

}  // namespace faults
