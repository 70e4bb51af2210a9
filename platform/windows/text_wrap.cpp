#include "windows/text_wrap.h"

#include <algorithm>

#include "system/text.h"

namespace phone {

namespace {

using Measure = std::function<int(std::u16string_view)>;

/// The length of the longest start of a line that fits, not inside a surrogate pair.
std::size_t FittingLength(std::u16string_view line, int width, const Measure& measure) {
  std::size_t fits = 0;
  std::size_t too_long = line.size() + 1;
  while (too_long - fits > 1) {
    const std::size_t middle = fits + (too_long - fits) / 2;
    (measure(line.substr(0, CutLength(line, middle))) <= width ? fits : too_long) = middle;
  }
  fits = CutLength(line, fits);
  if (fits > 0) return fits;
  const std::size_t one = CutLength(line, 1);
  return one > 0 ? one : std::min<std::size_t>(2, line.size());
}

/// Where a word of which so many units fit is broken.
std::size_t BreakInWord(std::u16string_view word, std::size_t fits, std::u16string_view word_breaks) {
  const std::size_t last = word.find_last_of(word_breaks, fits - 1);
  return last != std::u16string_view::npos && last > 0 ? last + 1 : fits;
}

void WrapLine(std::u16string_view line, int width, const Measure& measure, std::u16string_view word_breaks,
              std::vector<std::u16string_view>& lines) {
  while (measure(line) > width) {
    const std::size_t fits = FittingLength(line, width, measure);
    if (fits >= line.size()) break;
    // A blank right behind what fits ends the line as well as one inside it.
    const std::size_t blank = line.rfind(u' ', fits);
    const bool at_blank = blank != std::u16string_view::npos && blank > 0;
    const std::size_t end = at_blank ? blank : BreakInWord(line, fits, word_breaks);
    lines.push_back(line.substr(0, end));
    line.remove_prefix(at_blank ? end + 1 : end);
  }
  lines.push_back(line);
}

}  // namespace

std::vector<std::u16string_view> WrapText(std::u16string_view text, int width, const Measure& measure,
                                          std::u16string_view word_breaks) {
  std::vector<std::u16string_view> lines;
  while (true) {
    const std::size_t end = text.find(u'\n');
    std::u16string_view line = text.substr(0, end);
    if (!line.empty() && line.back() == u'\r') line.remove_suffix(1);
    WrapLine(line, width, measure, word_breaks, lines);
    if (end == std::u16string_view::npos) return lines;
    text.remove_prefix(end + 1);
  }
}

}  // namespace phone
