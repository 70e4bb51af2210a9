#include "faults/oracle.h"

#include <algorithm>

#include "faults/compare.h"

namespace faults {
namespace {

using phone::Operation;

/// The notices, and what was open or shown before one may come.
struct Notice {
  const char* text;
  const char* question;    ///< the box before, or nothing
  const char* left_label;  ///< else the left soft key
};

constexpr Notice kNotices[] = {
    {"There was an error saving theme. Please try again", "File allready exists. Do you want to overwrite?", "Save"},
    {"Selected theme couldn't be deleted!", "Are you sure you want to delete this theme?", nullptr},
    {"Selected plugin couldn't be deleted!", "Are you sure you want to delete this plugin?", nullptr},
};

/// Calls of the step that tell of a list being built.
bool BuildsList(const Expectation& expected) {
  const auto calls = [&](Operation operation) {
    const auto index = static_cast<std::size_t>(operation);
    return expected.clean.counts[expected.step][index] -
           (expected.step == 0 ? 0 : expected.clean.counts[expected.step - 1][index]);
  };
  return calls(Operation::FindFirstFileW) + calls(Operation::cloneNode) + calls(Operation::loadXML) > 0;
}

bool MayNotice(const Sight& seen, const Sight& before) {
  for (const Notice& notice : kNotices) {
    if (seen.box["text"] != notice.text) continue;
    if (!before.box.is_null()) return before.box["text"] == notice.question;
    return notice.left_label && before.look["bar"]["left"] == notice.left_label;
  }
  return false;
}

/// The last moment before a step at which neither a menu nor a message box was open.
Sight GroundBefore(const Expectation& expected) {
  std::size_t at = expected.step - 1;
  const std::vector<Sight>& sights = expected.clean.sights;
  while (at > 0 && (!sights[at].box.is_null() || !sights[at].look["menu"].is_null())) --at;
  return sights[at];
}

std::string JudgeStep(const Expectation& expected, unsigned allowed, const BrokenRun& run) {
  const Sight* const before = expected.step > 0 ? &expected.clean.sights[expected.step - 1] : nullptr;
  const Sight& after = expected.clean.sights[expected.step];
  if (!BuildsList(expected)) allowed &= ~unsigned{kEndsEarly | kOneRowLess | kSelection};
  if (run.seen.look.is_null()) {
    const bool may_end = after.look.is_null() || (expected.step == 0 && (allowed & kNoStart));
    return may_end ? FileDifference(run.seen.files, before ? &before->files : nullptr, after.files)
                   : "the program has ended";
  }
  if (run.stopped) return allowed & kStopped ? "" : "there is no screen";
  if (after.look.is_null()) return "the program has not ended";
  if (before && (allowed & kNotice) && !run.seen.box.is_null() && run.seen.box != after.box &&
      MayNotice(run.seen, *before))
    return Difference(run.dismissed, GroundBefore(expected), kNothing, before);
  std::string difference = Difference(run.seen, after, allowed, before);
  if (difference.empty()) return difference;
  if (before && (allowed & kRefused)) {
    const std::string changed = Difference(run.seen, GroundBefore(expected), kNothing, before);
    if (changed.empty()) return {};
    difference += "; nor is all as before: " + changed;
  }
  if (expected.consent != expected.step && (allowed & kNoQuestion) &&
      Difference(run.seen, expected.clean.sights[expected.consent], kNothing, &after).empty())
    return {};
  return difference;
}

/// What one frame lacks the next one has; but the background, drawn once into its buffer, may lack what it lacks.
std::string JudgeNextFrame(const Expectation& expected, unsigned allowed, const BrokenRun& run) {
  if (!(allowed & kOnce) || run.seen.look.is_null() || !run.seen.box.is_null()) return {};
  const Sight& after = expected.clean.sights[expected.step];
  if (run.again.frame != after.frame) return "the next frame still shows" + Summary(run.again.frame);
  if (run.again.pixels != after.pixels && expected.step > 0) return "the next frame still looks otherwise";
  return {};
}

std::string JudgeReturn(const Expectation& expected, unsigned allowed, const BrokenRun& run) {
  if (!run.ending.refused.empty()) return "it does not answer: " + run.ending.refused;
  if (run.seen.look.is_null() || run.stopped) return {};
  // Pictures and fonts last as long as the program, and so does the buffer with the background, drawn in the first
  // frame; files of one moment may meet the registry of the other.
  unsigned allowed_home = allowed & (kUndrawn | kBlank | kOtherFont | kUntitled | kNotDone);
  if (expected.step == 0 && (allowed & kOnce)) allowed_home |= kUndrawn;
  if (allowed & kNotDone) allowed_home |= kSelection;
  std::string difference = "the list is not read afresh";
  for (const BrokenRun* const back : expected.returns) {
    const auto compare = [&](const Sight& seen, const Sight& wanted) {
      std::string found = LookDifference(seen.look, wanted.look, allowed_home);
      if (found.empty() && TextsOf(seen.frame) != TextsOf(wanted.frame))
        found = "the frame shows" + Summary(seen.frame);
      return found.empty() ? FrameDifference(seen, wanted, allowed_home, nullptr) : found;
    };
    difference = compare(run.home, back->home);
    if (difference.empty()) difference = compare(run.moved, back->moved);
    if (difference.empty()) return {};
  }
  return "back on the list, " + difference;
}

/// Whether the file comes to hold that in the clean run.
bool ComesLater(const Expectation& expected, const std::string& name, const std::string& content) {
  for (std::size_t step = expected.step; step < expected.clean.sights.size(); ++step) {
    const Files& files = expected.clean.sights[step].files;
    const auto found = files.find(name);
    if (found != files.end() && found->second == content) return true;
  }
  return false;
}

std::string JudgeEnd(const Expectation& expected, const BrokenRun& run) {
  if (run.ending.exit_code != 0) return "the exit code is " + std::to_string(run.ending.exit_code);
  if (run.ending.kernel_handles > 0) return std::to_string(run.ending.kernel_handles) + " handles are left open";
  if (run.ending.graphics_handles > expected.clean.ending.graphics_handles)
    return std::to_string(run.ending.graphics_handles - expected.clean.ending.graphics_handles) +
           " drawing objects are left";
  if (run.ending.open_files != expected.clean.ending.open_files) return "files are left open";
  // Nothing is written on the way back but by a worker that still applies a layout.
  for (const auto& [name, content] : run.files) {
    const auto at_step = run.seen.files.find(name);
    if (at_step != run.seen.files.end() && at_step->second == content) continue;
    const bool comes_later = name == "registry.reg" && ComesLater(expected, name, content);
    if (!comes_later) return "the file " + name + " has changed in the end";
  }
  return run.files.size() < run.seen.files.size() ? "a file is lost in the end" : "";
}

}  // namespace

std::string Judge(const Expectation& expected, const Fault& fault, const BrokenRun& run) {
  if (!run.came_due) return "the call was not made again: the run is not as the clean one";
  const unsigned allowed = OutcomesOf(fault.operation);
  std::string complaint = JudgeStep(expected, allowed, run);
  if (complaint.empty() && run.again.invalid) complaint = "the screen does not come to rest";
  if (complaint.empty()) complaint = JudgeNextFrame(expected, allowed, run);
  if (complaint.empty()) complaint = JudgeReturn(expected, allowed, run);
  return complaint.empty() ? JudgeEnd(expected, run) : complaint;
}

}  // namespace faults
