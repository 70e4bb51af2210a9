#include "system/registry_file.h"

#include <algorithm>

#include "system/text.h"

namespace phone {

namespace {

constexpr std::u16string_view kHeader = u"Windows Registry Editor Version 5.00";
constexpr std::u16string_view kRoot = u"HKEY_CURRENT_USER";
constexpr std::u16string_view kBlanks = u" \t";
constexpr char16_t kByteOrderMark = 0xFEFF;

bool SameText(std::u16string_view a, std::u16string_view b) {
  return CompareFolded(a, b) == 0;
}

std::u16string_view Trimmed(std::u16string_view text) {
  const std::size_t begin = text.find_first_not_of(u" \t\r\n");
  if (begin == std::u16string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(u" \t\r\n") + 1 - begin);
}

std::u16string Quoted(std::u16string_view text) {
  std::u16string quoted = u"\"";
  for (const char16_t unit : text) {
    if (unit == u'"' || unit == u'\\') quoted += u'\\';
    quoted += unit;
  }
  return quoted + u'"';
}

bool IsHex(std::u16string_view text) {
  return !text.empty() && text.find_first_not_of(u"0123456789abcdefABCDEF") == std::u16string_view::npos;
}

/// Values that are kept without being understood further: "-" (to be deleted), dword:..., hex:..., hex(type):...
bool IsOtherData(std::u16string_view data) {
  if (data == u"-") return true;
  if (SameText(data.substr(0, 6), u"dword:")) return IsHex(data.substr(6));
  if (!SameText(data.substr(0, 3), u"hex")) return false;
  data.remove_prefix(3);
  if (data.starts_with(u"(")) {
    const std::size_t close = data.find(u')');
    if (close == std::u16string_view::npos || !IsHex(data.substr(1, close - 1))) return false;
    data.remove_prefix(close + 1);
  }
  return data.starts_with(u":") && data.find_first_not_of(u"0123456789abcdefABCDEF, \t\r\n\\", 1) == data.npos;
}

/// The part of a key's path under HKEY_CURRENT_USER; nothing under another root.
std::optional<std::u16string_view> UnderCurrentUser(std::u16string_view path) {
  if (!SameText(path.substr(0, kRoot.size()), kRoot)) return std::nullopt;
  path.remove_prefix(std::min(kRoot.size(), path.size()));
  if (path.empty()) return path;
  if (path.front() != u'\\') return std::nullopt;
  return path.substr(1);
}

bool HoldsOneLine(std::u16string_view text) {
  return text.find_first_of(u"\r\n") == std::u16string_view::npos;
}

/// Only what can be written as UTF-8, and has no zero, comes back as it was.
bool CanBeKept(std::u16string_view text) {
  return text.find(u'\0') == std::u16string_view::npos && ToUtf8(text).has_value();
}

}  // namespace

/// Reads a file's text from its beginning, piece by piece.
class RegistryParser {
 public:
  explicit RegistryParser(std::u16string_view text) : text_(text) {}

  bool Parse(RegistryFile& file) {
    file.sections_.assign(1, {});
    std::u16string_view header = Trimmed(TakeLine());
    if (header.starts_with(kByteOrderMark)) header = Trimmed(header.substr(1));
    if (header != kHeader) return false;
    const std::u16string_view line = Taken();
    file.line_end_ = line.ends_with(u"\r\n") ? u"\r\n" : u"\n";
    file.sections_.back().entries.push_back({std::u16string(line), false, {}, {}});
    while (at_ < text_.size())
      if (!ParsePiece(file.sections_)) return false;
    return true;
  }

 private:
  /// Whole lines that are no values go as they are; a value ends with its line, or where its text or its hex digits end
  /// on a later one.
  bool ParsePiece(std::vector<RegistryFile::Section>& sections) {
    RegistryFile::Entry entry;
    const std::size_t begin = text_.find_first_not_of(kBlanks, at_);
    const char16_t first = begin < text_.size() ? text_[begin] : u'\n';
    if (first == u'"' || first == u'@') {
      if (sections.size() == 1 || !ParseValue(entry)) return false;
    } else {
      const std::u16string_view line = Trimmed(TakeLine());
      if (first == u'[' && !ParseKey(line, sections)) return false;
      if (first != u'[' && first != u';' && !line.empty()) return false;
    }
    entry.raw = Taken();
    sections.back().entries.push_back(std::move(entry));
    return true;
  }

  static bool ParseKey(std::u16string_view line, std::vector<RegistryFile::Section>& sections) {
    if (line.size() < 3 || line.back() != u']') return false;
    const auto key = UnderCurrentUser(line.substr(1, line.size() - 2));
    sections.push_back({std::u16string(key.value_or(u"")), key.has_value(), {}});
    return true;
  }

  bool ParseValue(RegistryFile::Entry& entry) {
    entry.is_value = true;
    begin_ = at_;
    SkipBlanks();
    if (text_[at_] == u'@') {
      ++at_;
    } else if (!ParseString(entry.name)) {
      return false;
    }
    SkipBlanks();
    if (Peek() != u'=') return false;
    ++at_;
    SkipBlanks();
    if (Peek() == u'"') {
      if (!ParseString(entry.text.emplace())) return false;
      entry.remark = Trimmed(FinishLine());
      return entry.remark.empty() || entry.remark.front() == u';';
    }
    const std::size_t data = at_;
    FinishLine();
    // A backslash at the end continues the line. Where nothing follows, the next value written would be taken for it.
    while (Trimmed(text_.substr(data, at_ - data)).ends_with(u'\\'))
      if (FinishLine().empty()) return false;
    return IsOtherData(Trimmed(text_.substr(data, at_ - data)));
  }

  /// The text between quotes, which may run over several lines.
  bool ParseString(std::u16string& string) {
    for (++at_; at_ < text_.size(); ++at_) {
      char16_t unit = text_[at_];
      if (unit == u'"') {
        ++at_;
        return true;
      }
      if (unit == u'\\') {
        if (++at_ == text_.size()) return false;
        unit = text_[at_];
        if (unit != u'\\' && unit != u'"') return false;
      }
      string += unit;
    }
    return false;
  }

  void SkipBlanks() { at_ = std::min(text_.find_first_not_of(kBlanks, at_), text_.size()); }
  char16_t Peek() const { return at_ < text_.size() ? text_[at_] : u'\0'; }

  std::u16string_view FinishLine() {
    const std::size_t from = at_;
    const std::size_t end = text_.find(u'\n', at_);
    at_ = end == std::u16string_view::npos ? text_.size() : end + 1;
    return text_.substr(from, at_ - from);
  }
  std::u16string_view TakeLine() {
    begin_ = at_;
    return FinishLine();
  }
  /// All of the piece that was read last.
  std::u16string_view Taken() const { return text_.substr(begin_, at_ - begin_); }

  std::u16string_view text_;
  std::size_t begin_ = 0;
  std::size_t at_ = 0;
};

RegistryFile::RegistryFile() {
  sections_.emplace_back().entries.push_back({std::u16string(kHeader) + line_end_, false, {}, {}});
}

std::optional<RegistryFile> RegistryFile::Parse(std::u16string_view text) {
  RegistryFile file;
  const bool blank = Trimmed(text).empty() || Trimmed(text) == std::u16string_view(&kByteOrderMark, 1);
  if (!blank && !RegistryParser(text).Parse(file)) return std::nullopt;
  return file;
}

std::u16string RegistryFile::Text() const {
  std::u16string text;
  for (const Section& section : sections_)
    for (const Entry& entry : section.entries) text += entry.raw;
  return text;
}

std::optional<std::u16string> RegistryFile::Get(std::u16string_view key, std::u16string_view name) const {
  for (auto section = sections_.rbegin(); section != sections_.rend(); ++section) {
    if (!section->is_current_user || !SameText(section->key, key)) continue;
    for (auto entry = section->entries.rbegin(); entry != section->entries.rend(); ++entry)
      if (entry->is_value && SameText(entry->name, name)) return entry->text;
  }
  return std::nullopt;
}

bool RegistryFile::Set(std::u16string_view key, std::u16string_view name, std::u16string_view text) {
  if (key.empty() || !HoldsOneLine(key) || !CanBeKept(key) || !CanBeKept(name) || !CanBeKept(text)) return false;
  Entry entry{FormatValue(name, text), true, std::u16string(name), std::u16string(text)};
  for (auto section = sections_.rbegin(); section != sections_.rend(); ++section) {
    if (!section->is_current_user || !SameText(section->key, key)) continue;
    for (auto old = section->entries.rbegin(); old != section->entries.rend(); ++old) {
      if (!old->is_value || !SameText(old->name, name)) continue;
      entry.remark = std::move(old->remark);
      if (!entry.remark.empty()) entry.raw.insert(entry.raw.size() - line_end_.size(), u' ' + entry.remark);
      *old = std::move(entry);
      return true;
    }
  }
  std::vector<Entry>& entries = SectionFor(key).entries;
  // After the last value, before the blank lines that set the next key apart.
  const auto last = std::find_if(entries.rbegin(), entries.rend(),
                                 [](const Entry& candidate) { return !Trimmed(candidate.raw).empty(); });
  if (!last->raw.ends_with(u'\n')) last->raw += line_end_;
  entries.insert(last.base(), std::move(entry));
  return true;
}

bool RegistryFile::Delete(std::u16string_view key, std::u16string_view name) {
  std::size_t deleted = 0;
  for (Section& section : sections_) {
    if (!section.is_current_user || !SameText(section.key, key)) continue;
    deleted += std::erase_if(section.entries,
                             [name](const Entry& entry) { return entry.is_value && SameText(entry.name, name); });
  }
  return deleted != 0;
}

std::u16string RegistryFile::FormatValue(std::u16string_view name, std::u16string_view text) const {
  return (name.empty() ? u"@" : Quoted(name)) + u'=' + Quoted(text) + line_end_;
}

/// The last section of that key, a new one at the end of the file when there is none.
RegistryFile::Section& RegistryFile::SectionFor(std::u16string_view key) {
  const auto found = std::find_if(sections_.rbegin(), sections_.rend(), [key](const Section& section) {
    return section.is_current_user && SameText(section.key, key);
  });
  if (found != sections_.rend()) return *found;
  Entry& last = sections_.back().entries.back();
  if (!last.raw.ends_with(u'\n')) last.raw += line_end_;
  Section& section = sections_.emplace_back(Section{std::u16string(key), true, {}});
  section.entries.push_back(
      {line_end_ + u'[' + std::u16string(kRoot) + u'\\' + std::u16string(key) + u']' + line_end_, false, {}, {}});
  return section;
}

}  // namespace phone
