#include "faults/compare.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>

namespace faults {
namespace {

using script::Reply;

constexpr const char* kUnknownText = "Unknow";

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
  some.erase(std::unique(some.begin(), some.end()), some.end());
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

/// Whether a list's rows are there as far as the failed call lets them be.
bool RowsFit(const std::vector<std::string>& seen, const std::vector<std::string>& expected, unsigned allowed) {
  std::size_t gaps = 0;
  auto at = seen.begin();
  for (const std::string& text : expected) {
    if (at == seen.end()) break;
    if (*at == text || *at == kUnknownText) {
      ++at;
    } else {
      ++gaps;
    }
  }
  if (at != seen.end()) return false;
  const std::size_t missing = expected.size() - seen.size();
  return missing == 0 || (missing == 1 && (allowed & kOneRowLess)) || (gaps <= 1 && (allowed & kEndsEarly));
}

/// The texts of a list screen end with its caption.
bool ListFits(const Reply& drawn, const Reply& wanted, unsigned allowed) {
  std::vector<std::string> seen = TextsOf(drawn);
  std::vector<std::string> expected = TextsOf(wanted);
  if (seen.empty() || expected.empty() || seen.back() != expected.back()) return false;
  seen.pop_back();
  expected.pop_back();
  return RowsFit(seen, expected, allowed);
}

/// Nothing is shown that was not there before or is there afterwards.
bool IsRearranged(const Reply& drawn, const Reply& wanted, const Sight* before) {
  std::vector<std::string> texts = TextsOf(wanted);
  if (before)
    for (const std::string& text : TextsOf(before->frame)) texts.push_back(text);
  return IsAmong(TextsOf(drawn), texts);
}

bool FrameFits(const Reply& drawn, const Reply& wanted, unsigned allowed, const Sight* before) {
  const auto same_but_for_font = [](const Reply& a, const Reply& b) {
    return Without(a, {"face", "size", "weight"}) == Without(b, {"face", "size", "weight"});
  };
  const auto same_place = [](const Reply& a, const Reply& b) {
    return Without(a, {"picture"}) == Without(b, {"picture"});
  };
  if (drawn == wanted || (allowed & kOnce)) return true;
  if ((allowed & kUndrawn) && IsThinned(drawn, wanted)) return true;
  if ((allowed & kBlank) && IsThinned(drawn, wanted, same_place)) return true;
  if (allowed & kOtherFont)
    return std::equal(drawn.begin(), drawn.end(), wanted.begin(), wanted.end(), same_but_for_font);
  if (!IsAmong(PicturesOf(WithoutListArtwork(drawn)), PicturesOf(wanted))) return false;
  if ((allowed & (kEndsEarly | kOneRowLess | kSelection)) && ListFits(drawn, wanted, allowed)) return true;
  return (allowed & kMisplaced) && IsRearranged(drawn, wanted, before);
}

/// A form without some of its fields still has everything else.
void DropFields(Reply& look) {
  for (const char* const name : {"edits", "focus", "windows"}) look.erase(name);
}

}  // namespace

std::string LookDifference(Reply seen, Reply expected, unsigned allowed) {
  if ((allowed & kNoFields) && seen["edits"].size() < expected["edits"].size()) {
    DropFields(seen);
    DropFields(expected);
  }
  if ((allowed & kUntitled) && seen["title"] == "") seen["title"] = expected["title"];
  if (seen == expected) return {};
  return "the phone shows " + seen.dump() + " instead of " + expected.dump();
}

std::string FrameDifference(const Sight& seen, const Sight& expected, unsigned allowed, const Sight* before) {
  constexpr unsigned other_pixels = kUndrawn | kBlank | kOtherFont | kOnce | kNoFields | kUntitled;
  if (!FrameFits(seen.frame, expected.frame, allowed, before))
    return "the frame shows" + Summary(seen.frame) + " instead of" + Summary(expected.frame);
  // The phone lays its mark over the frame while the program is busy.
  const bool as_busy = seen.work == expected.work;
  if (as_busy && seen.frame == expected.frame && seen.pixels != expected.pixels && !(allowed & other_pixels))
    return "the screen looks otherwise";
  return {};
}

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
  // Who sees the step done, or not done, relies on the files; what is left out on the outside is the registry's.
  Files files = seen.files;
  const auto registry = expected.files.find("registry.reg");
  if ((allowed & kNotDone) && registry != expected.files.end()) files["registry.reg"] = registry->second;
  if (files != expected.files) return "the files are not as the screen says";
  return FileDifference(seen.files, before ? &before->files : nullptr, expected.files);
}

std::string Summary(const Reply& frame) {
  std::string summary;
  for (const Reply& call : frame) {
    summary += ' ' + call.value("text", call.value("picture", "-"));
    summary += call.contains("rect") ? call["rect"].dump() : Reply({call["x"], call["y"], call["w"], call["h"]}).dump();
  }
  return summary;
}

}  // namespace faults
