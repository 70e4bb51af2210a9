#include "system/names.h"

#include <algorithm>

#include "system/text.h"

namespace phone {

namespace {

constexpr char16_t kSeparator = u'\\';
constexpr std::u16string_view kRefused = u"\\/:*?\"<>|";
constexpr std::u16string_view kWildcards = u"*?";
constexpr std::size_t kLongestPath = MAX_PATH - 1;

bool IsControl(char16_t unit) {
  return unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
}

bool IsTemporary(std::u16string_view name) {
  return name.size() >= kTemporaryPrefix.size() &&
         std::equal(kTemporaryPrefix.begin(), kTemporaryPrefix.end(), name.begin(), [](char expected, char16_t unit) {
           return static_cast<char16_t>(expected) == (unit >= u'A' && unit <= u'Z' ? unit + 0x20 : unit);
         });
}

}  // namespace

bool IsFileName(std::u16string_view name) {
  if (name.empty() || name.size() > kLongestPath || name == u"." || name == u"..") return false;
  if (name.find_first_of(kRefused) != std::u16string_view::npos) return false;
  return std::none_of(name.begin(), name.end(), IsControl) && !IsTemporary(name);
}

DWORD ParsePath(std::u16string_view path, PhonePath& parsed) {
  parsed = {};
  if (path.empty()) return ERROR_PATH_NOT_FOUND;
  if (path.size() > kLongestPath) return ERROR_FILENAME_EXCED_RANGE;
  // Two separators name another machine, and there is none.
  if (path.starts_with(u"\\\\")) return ERROR_PATH_NOT_FOUND;
  parsed.ends_in_separator = path.back() == kSeparator;
  if (path.front() == kSeparator) path.remove_prefix(1);
  while (!path.empty()) {
    const std::size_t end = std::min(path.find(kSeparator), path.size());
    const std::u16string_view element = path.substr(0, end);
    path.remove_prefix(std::min(end + 1, path.size()));
    if (!IsFileName(element)) return ERROR_INVALID_NAME;
    parsed.elements.push_back(element);
  }
  return ERROR_SUCCESS;
}

DWORD ParsePattern(std::u16string_view path, PhonePath& folder, std::u16string_view& pattern) {
  if (path.size() > kLongestPath) return ERROR_FILENAME_EXCED_RANGE;
  const std::size_t separator = path.rfind(kSeparator);
  const std::size_t begin = separator == std::u16string_view::npos ? 0 : separator + 1;
  pattern = path.substr(begin);
  if (pattern == u"*.*") pattern = u"*";
  std::u16string name(pattern);
  std::erase_if(name, [](char16_t unit) { return kWildcards.find(unit) != std::u16string_view::npos; });
  const bool valid = pattern.empty() ? false : name.empty() || name == u"." || IsFileName(name);
  if (!valid) return ERROR_INVALID_NAME;
  return ParsePath(begin == 0 ? u"\\" : path.substr(0, begin), folder);
}

bool MatchesPattern(std::u16string_view name, std::u16string_view pattern) {
  // After a mismatch the last star takes one more code unit; an earlier star never needs to be looked at again.
  std::size_t at = 0;
  std::size_t in_pattern = 0;
  std::size_t star = std::u16string_view::npos;
  std::size_t star_at = 0;
  while (at < name.size()) {
    if (in_pattern < pattern.size() && pattern[in_pattern] == u'*') {
      star = in_pattern++;
      star_at = at;
    } else if (in_pattern < pattern.size() && (pattern[in_pattern] == u'?' || pattern[in_pattern] == name[at])) {
      ++in_pattern;
      ++at;
    } else if (star != std::u16string_view::npos) {
      in_pattern = star + 1;
      at = ++star_at;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of(u'*', in_pattern) == std::u16string_view::npos;
}

}  // namespace phone
