#include "faults/oracle.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <map>

namespace faults {
namespace {

using phone::Operation;
using script::Reply;

// --- What a failed call may lead to ---

/// Besides the screen being the one that the step leads to anyway.
enum Outcome : unsigned {
  kNothing = 0,
  kRefused = 1 << 0,     ///< the step is not taken: everything is as before it
  kNotice = 1 << 1,      ///< the program says that it could not save or delete; after OK everything is as before
  kUndrawn = 1 << 2,     ///< pictures are missing
  kOtherFont = 1 << 3,   ///< a text has another font
  kOnce = 1 << 4,        ///< a frame lacks something, or is not shown; the next one is as it should be
  kFewerRows = 1 << 5,   ///< a list that the step builds has fewer rows, or rows whose text could not be had
  kMisplaced = 1 << 6,   ///< rows or bars stay where they were: a motion without memory is left out
  kNotDone = 1 << 7,     ///< what the step does to the outside is left out, wholly or from some point on
  kNoQuestion = 1 << 8,  ///< a file that cannot be opened counts as missing: nobody is asked before it is replaced
  kNoFields = 1 << 9,    ///< a form lacks fields, and still shows those of the form before
  kNoStart = 1 << 10,    ///< the program ends at once
  kStopped = 1 << 11,    ///< the window's set-up ends early
  kUntitled = 1 << 12,   ///< the window has no title
  kBlank = 1 << 13,      ///< a picture has its place, but nothing is in it
};

/// Reading a document: left out of a list, not added, not saved.
constexpr unsigned kReading = kFewerRows | kRefused | kNotice;

unsigned OutcomesOf(Operation operation) {
  switch (operation) {
    case Operation::LoadStringW: return kNoStart | kUntitled;
    case Operation::RegisterClassW: return kNoStart;
    case Operation::CreateWindowExW: return kNoStart | kNoFields;
    case Operation::SHCreateMenuBar: return kStopped;
    case Operation::CreateCompatibleDC:
    case Operation::CreateCompatibleBitmap:
    case Operation::BitBlt:
    case Operation::StretchBlt:
    case Operation::AlphaBlend: return kOnce;
    case Operation::CreateFontIndirectW: return kOtherFont;
    case Operation::CreateDIBSection:
    case Operation::CreateImageFromFile:
    case Operation::GetImageInfo: return kUndrawn;
    case Operation::CreateBitmapFromImage:
    case Operation::LockBits: return kUndrawn | kBlank;
    case Operation::GetModuleFileNameW: return kUndrawn | kFewerRows | kRefused | kNotDone;
    case Operation::SHGetSpecialFolderPath: return kFewerRows | kRefused;
    case Operation::RegistryGetString: return kFewerRows | kNotDone;
    case Operation::RegistrySetString:
    case Operation::CreateThread:
    case Operation::ShellExecuteEx: return kNotDone;
    case Operation::rename: return kNotDone | kRefused | kNotice;
    case Operation::FindFirstFileW:
    case Operation::FindNextFileW: return kFewerRows;
    case Operation::DeleteFileW: return kNotice;
    case Operation::CreateDirectoryW: return kNothing;
    case Operation::_wfopen: return kRefused | kFewerRows | kNoQuestion;
    case Operation::fread: return kRefused | kFewerRows;
    case Operation::fwrite:
    case Operation::fclose: return kRefused;
    case Operation::CoInitializeEx:
    case Operation::CoCreateInstance: return kUndrawn | kReading;
    case Operation::save:
    case Operation::appendChild: return kNotice;
    case Operation::get_xml: return kRefused;
    case Operation::put_text: return kRefused | kNotice;
    case Operation::load: return kFewerRows;
    case Operation::loadXML:
    case Operation::get_firstChild: return kRefused | kFewerRows;
    case Operation::get_childNodes:
    case Operation::get_length:
    case Operation::get_item:
    case Operation::get_nodeName:
    case Operation::get_attributes:
    case Operation::get_text:
    case Operation::cloneNode: return kReading;
    case Operation::Allocation: return kStopped | kUndrawn | kFewerRows | kMisplaced | kRefused | kNotice | kNotDone;
  }
  return kNothing;
}

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

constexpr const char* kUnknownText = "Unknow";

// --- Comparing ---

/// Whether a sequence can be had by leaving things out of another one.
template <typename Sequence, typename Equal>
bool IsThinned(const Sequence& thinned, const Sequence& whole, Equal equal) {
  auto at = whole.begin();
  for (const auto& element : thinned) {
    at = std::find_if(at, whole.end(), [&](const auto& candidate) { return equal(element, candidate); });
    if (at == whole.end()) return false;
    ++at;
  }
  return true;
}

template <typename Sequence>
bool IsThinned(const Sequence& thinned, const Sequence& whole) {
  return IsThinned(thinned, whole, [](const auto& a, const auto& b) { return a == b; });
}

/// Whether everything in one sequence is in the other, wherever.
bool IsAmong(std::vector<std::string> some, std::vector<std::string> all) {
  std::ranges::sort(some);
  std::ranges::sort(all);
  const auto repeated = std::ranges::unique(some);
  some.erase(repeated.begin(), repeated.end());
  return std::ranges::includes(all, some);
}

Reply Without(Reply call, std::initializer_list<const char*> names) {
  for (const char* const name : names) call.erase(name);
  return call;
}

bool IsBegun(const Reply& part, const Reply& whole) {
  if (part.size() > whole.size()) return false;
  return std::equal(part.begin(), part.end(), whole.begin());
}

/// Whether of what the step does to the outside, kind by kind, a beginning was done.
bool IsPartlyDone(const Reply& before, const Reply& seen, const Reply& after) {
  for (const auto& [kind, done] : seen.items())
    if (!IsBegun(done, after[kind]) || (!before.is_null() && !IsBegun(before[kind], done))) return false;
  return true;
}

/// A list's selection bars and scroll thumb, which an unfinished list shows as they were made.
bool IsListArtwork(const Reply& call) {
  constexpr int bar_height = 27;  // px
  constexpr int thumb_width = 5;  // px
  return call.contains("picture") && (call["h"] == bar_height || call["w"] == thumb_width);
}

Reply WithoutListArtwork(const Reply& frame) {
  Reply rest = Reply::array();
  for (const Reply& call : frame)
    if (!IsListArtwork(call)) rest.push_back(call);
  return rest;
}

std::string Summary(const Reply& frame) {
  std::string summary;
  for (const Reply& call : frame) {
    summary += ' ' + call.value("text", call.value("picture", "-"));
    summary += call.contains("rect") ? call["rect"].dump() : Reply({call["x"], call["y"], call["w"], call["h"]}).dump();
  }
  return summary;
}

/// Builds a message once something differs.
std::string FrameDifference(const Sight& seen, const Sight& expected, unsigned allowed, const Sight* before) {
  const Reply& drawn = seen.frame;
  const Reply& wanted = expected.frame;
  if (drawn == wanted || (allowed & kOnce)) return {};
  if ((allowed & kUndrawn) && IsThinned(drawn, wanted)) return {};
  const auto same_but_for_font = [](const Reply& a, const Reply& b) {
    return Without(a, {"face", "size", "weight"}) == Without(b, {"face", "size", "weight"});
  };
  if ((allowed & kOtherFont) && std::equal(drawn.begin(), drawn.end(), wanted.begin(), wanted.end(), same_but_for_font))
    return {};
  const auto same_place = [](const Reply& a, const Reply& b) {
    return Without(a, {"picture"}) == Without(b, {"picture"});
  };
  if ((allowed & kBlank) && IsThinned(drawn, wanted, same_place)) return {};
  const bool pictures_fit = IsAmong(PicturesOf(WithoutListArtwork(drawn)), PicturesOf(wanted));
  const auto same_text = [](const std::string& a, const std::string& b) { return a == b || a == kUnknownText; };
  if ((allowed & kFewerRows) && pictures_fit && IsThinned(TextsOf(drawn), TextsOf(wanted), same_text)) return {};
  if ((allowed & kMisplaced) && pictures_fit) {
    std::vector<std::string> texts = TextsOf(wanted);
    if (before)
      for (const std::string& text : TextsOf(before->frame)) texts.push_back(text);
    if (IsAmong(TextsOf(drawn), texts)) return {};
  }
  return "the frame shows" + Summary(drawn) + " instead of" + Summary(wanted);
}

/// A form without some of its fields still has everything else.
void DropFields(Reply& look) {
  for (const char* const name : {"edits", "focus", "windows"}) look.erase(name);
}

std::string LookDifference(Reply seen, Reply expected, unsigned allowed) {
  if ((allowed & kNoFields) && seen["edits"].size() < expected["edits"].size() + 1) {
    DropFields(seen);
    DropFields(expected);
  }
  if ((allowed & kUntitled) && seen["title"] == "") seen["title"] = expected["title"];
  if (seen == expected) return {};
  return "the phone shows " + seen.dump() + " instead of " + expected.dump();
}

/// Every file is that of one of two moments, and there is no other.
std::string FileDifference(const Files& seen, const Files* before, const Files& after) {
  const auto holds = [](const Files* files, const std::string& name, const std::string& content) {
    const auto found = files ? files->find(name) : Files::const_iterator();
    return files && found != files->end() && found->second == content;
  };
  for (const auto& [name, content] : seen)
    if (!holds(before, name, content) && !holds(&after, name, content))
      return "the file " + name + " is neither old nor new";
  for (const auto& [name, content] : after)
    if (!seen.contains(name) && (!before || before->contains(name))) return "the file " + name + " is lost";
  return {};
}

std::string Difference(const Sight& seen, const Sight& expected, unsigned allowed, const Sight* before) {
  if (seen.box != expected.box) return "the message box is " + seen.box.dump() + " instead of " + expected.box.dump();
  std::string difference = LookDifference(seen.look, expected.look, allowed);
  if (!difference.empty()) return difference;
  difference = FrameDifference(seen, expected, allowed, before);
  if (!difference.empty()) return difference;
  const Reply nothing;
  const bool done = seen.outside == expected.outside && seen.work == expected.work;
  if (!done &&
      (!(allowed & kNotDone) || !IsPartlyDone(before ? before->outside : nothing, seen.outside, expected.outside)))
    return "done to the outside: " + seen.outside.dump() + seen.work.dump() + " instead of " + expected.outside.dump() +
           expected.work.dump();
  return FileDifference(seen.files, before ? &before->files : nullptr, expected.files);
}

// --- The rules ---

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
  if (!BuildsList(expected)) allowed &= ~kFewerRows;
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
  if (before && (allowed & kRefused) && Difference(run.seen, GroundBefore(expected), kNothing, before).empty())
    return {};
  const bool asks = !after.box.is_null() && expected.step + 1 < expected.clean.sights.size();
  if (asks && (allowed & kNoQuestion) &&
      Difference(run.seen, expected.clean.sights[expected.step + 1], kNothing, &after).empty())
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
  // Pictures and fonts last as long as the program; files of one moment may meet the registry of the other.
  const unsigned lasting = allowed & (kUndrawn | kBlank | kOtherFont | kUntitled | kNotDone);
  const unsigned allowed_home = lasting | (lasting & kNotDone ? kFewerRows : kNothing);
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

std::string JudgeEnd(const Expectation& expected, const BrokenRun& run) {
  if (run.ending.exit_code != 0) return "the exit code is " + std::to_string(run.ending.exit_code);
  if (run.ending.kernel_handles > 0) return std::to_string(run.ending.kernel_handles) + " handles are left open";
  if (run.ending.graphics_handles > expected.clean.ending.graphics_handles)
    return std::to_string(run.ending.graphics_handles - expected.clean.ending.graphics_handles) +
           " drawing objects are left";
  // Nothing is written on the way back but by a worker that still applies a layout.
  for (const auto& [name, content] : run.files) {
    const auto at_step = run.seen.files.find(name);
    if (at_step != run.seen.files.end() && at_step->second == content) continue;
    const bool comes_later = std::any_of(
        expected.clean.sights.begin() + static_cast<std::ptrdiff_t>(expected.step), expected.clean.sights.end(),
        [&](const Sight& sight) { return sight.files.contains(name) && sight.files.at(name) == content; });
    if (name != "registry.reg" || !comes_later) return "the file " + name + " has changed in the end";
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
