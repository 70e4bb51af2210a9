#include "hosts/script/arguments.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace script {
namespace {

constexpr std::string_view kBlanks = " \t";

}  // namespace

std::string_view Arguments::Word() {
  SkipBlanks();
  const std::string_view word = rest_.substr(0, rest_.find_first_of(kBlanks));
  rest_.remove_prefix(word.size());
  return word;
}

std::optional<std::string> Arguments::Quoted() {
  SkipBlanks();
  if (rest_.empty()) return std::nullopt;
  if (rest_.front() != '"') return std::string(Word());
  std::string text;
  for (std::size_t at = 1; at < rest_.size(); ++at) {
    if (rest_[at] == '"' && rest_.substr(at + 1, 1) != "\"") {
      rest_.remove_prefix(at + 1);
      return text;
    }
    if (rest_[at] == '"') ++at;
    text += rest_[at];
  }
  return std::nullopt;
}

std::optional<std::string_view> Arguments::Rest() {
  if (rest_.empty()) return std::nullopt;
  rest_.remove_prefix(1);
  return std::exchange(rest_, {});
}

bool Arguments::AtEnd() {
  SkipBlanks();
  return rest_.empty();
}

std::optional<std::uint32_t> Arguments::Number(std::uint32_t least, std::uint32_t most) {
  const std::optional<std::uint64_t> number = ParseNumber(Word(), least, most);
  if (!number) return std::nullopt;
  return static_cast<std::uint32_t>(*number);
}

void Arguments::SkipBlanks() {
  rest_.remove_prefix(std::min(rest_.find_first_not_of(kBlanks), rest_.size()));
}

std::optional<std::uint64_t> ParseNumber(std::string_view text, std::uint64_t least, std::uint64_t most) {
  std::uint64_t number = 0;
  const char* const end = text.data() + text.size();
  const auto [stopped, error] = std::from_chars(text.data(), end, number);
  if (text.empty() || error != std::errc() || stopped != end || number < least || number > most) return std::nullopt;
  return number;
}

}  // namespace script
