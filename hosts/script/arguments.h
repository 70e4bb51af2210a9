/// \file
/// The words of a script's line.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace script {

/// Hands out the words of a line one by one. Words are divided by blanks.
class Arguments {
 public:
  /// The line outlives this.
  explicit Arguments(std::string_view line) : rest_(line) {}

  /// The next word; empty at the end.
  std::string_view Word();
  /// The next word, which may stand in double quotes to hold blanks; inside them two quotes are one. Nothing at the end
  /// or when the closing quote is missing.
  std::optional<std::string> Quoted();
  /// What is left of the line after one blank, as it stands; nothing when the line has ended already.
  std::optional<std::string_view> Rest();
  /// True when no word is left.
  bool AtEnd();
  /// The next word as a decimal number within the bounds; nothing when it is not one.
  std::optional<std::uint32_t> Number(std::uint32_t least, std::uint32_t most);

 private:
  void SkipBlanks();

  std::string_view rest_;
};

/// A decimal number within the bounds, nothing around it.
std::optional<std::uint64_t> ParseNumber(std::string_view text, std::uint64_t least, std::uint64_t most);

}  // namespace script
