#include "hosts/sdl/command_line.h"

#include <getopt.h>

#include <algorithm>
#include <iterator>
#include <string_view>
#include <vector>

#include "hosts/sdl/key_map.h"

namespace sdl {
namespace {

constexpr char kIntroduction[] =
    "Usage: quillmark [OPTION]...\n"
    "A theme editor for the home screen of a phone, on a phone of its own.\n";
constexpr char kMissing = ':';

/// What --scale takes, in words.
constexpr char kScales[] = "a whole number from 1 to 8";
static_assert(kLargestScale == 8);

struct OptionRow {
  const char* name;
  const char* value;  ///< what stands for its value in the help; null for an option without one
  const char* help;
  const char* right;  ///< what values are right
  bool (*take)(std::string_view value, CommandLine& result);
};

bool TakePath(std::string_view value, std::filesystem::path& path) {
  path = value;
  return !value.empty();
}

bool TakePhone(std::string_view value, CommandLine& result) {
  return TakePath(value, result.phone);
}

bool TakeScreen(std::string_view value, CommandLine& result) {
  result.screen = OrientationByName(value);
  return result.screen.has_value();
}

bool TakeScale(std::string_view value, CommandLine& result) {
  if (value.size() != 1 || value[0] < '1' || value[0] > '0' + kLargestScale) return false;
  result.scale = value[0] - '0';
  return true;
}

bool TakeRecord(std::string_view value, CommandLine& result) {
  return TakePath(value, result.record);
}

bool TakeReplay(std::string_view value, CommandLine& result) {
  return TakePath(value, result.replay);
}

bool TakeHelp(std::string_view, CommandLine& result) {
  return result.help = true;
}

bool TakeVersion(std::string_view, CommandLine& result) {
  return result.version = true;
}

constexpr OptionRow kOptions[] = {
    {"phone", "DIR", "the phone folder (default: your own, made from the sample phone)", "a folder", TakePhone},
    {"screen", "SHAPE", "portrait or landscape (default: as last time, portrait at first)", "portrait or landscape",
     TakeScreen},
    {"scale", "N", "pixels for one of the phone's, 1 to 8 (default: as last time, at first what fits)", kScales,
     TakeScale},
    {"record", "FILE", "write what is pressed as a script for quillmark-headless", "a file to write", TakeRecord},
    {"replay", "FILE", "play such a script in the window", "a file to read", TakeReplay},
    {"help", nullptr, "tell this and end", nullptr, TakeHelp},
    {"version", nullptr, "tell the version and end", nullptr, TakeVersion},
};

std::string Shape(const OptionRow& row) {
  return std::string("--") + row.name + (row.value ? std::string(" ") + row.value : "");
}

constexpr int kFirstAnswer = 256;  // beyond all characters

/// Each is answered with its number, so that the beginning of several is taken for none of them.
std::vector<option> LongOptions() {
  std::vector<option> options;
  int answer = kFirstAnswer;
  for (const OptionRow& row : kOptions)
    options.push_back({row.name, row.value ? required_argument : no_argument, nullptr, answer++});
  options.push_back({});
  return options;
}

std::string Unknown(std::string_view argument) {
  std::string text = "'";
  text.append(argument).append("' is not understood; the options are");
  for (const OptionRow& row : kOptions) text += (&row == kOptions ? " " : ", ") + Shape(row);
  return text;
}

std::string WrongValue(const OptionRow& row, const char* value) {
  return std::string("--") + row.name + " takes " + row.right + (value ? ", not '" + std::string(value) + "'" : "");
}

/// What is wrong with an argument that getopt_long has refused.
std::string Refusal(int answer, std::string_view argument) {
  const auto meant = [&](const OptionRow& row) { return std::string_view(row.name).starts_with(argument.substr(2)); };
  const auto row = answer == kMissing ? std::ranges::find_if(kOptions, meant) : std::end(kOptions);
  return row == std::end(kOptions) ? Unknown(argument) : WrongValue(*row, nullptr);
}

}  // namespace

bool ParseCommandLine(int count, char** arguments, CommandLine& result, std::string& error) {
  const std::vector<option> options = LongOptions();
  opterr = 0;
  while (error.empty()) {
    const int at = optind;
    const int answer = getopt_long(count, arguments, ":", options.data(), nullptr);
    if (answer == -1) break;
    if (answer < kFirstAnswer) {
      // A word of letters behind one dash is not passed by before its last letter.
      error = Refusal(answer, arguments[std::max(at, optind - 1)]);
    } else if (const OptionRow& row = kOptions[answer - kFirstAnswer]; !row.take(optarg ? optarg : "", result)) {
      error = WrongValue(row, optarg);
    }
  }
  if (error.empty() && optind < count) error = Unknown(arguments[optind]);
  if (error.empty() && !result.record.empty() && !result.replay.empty())
    error = "either --record or --replay can be given, not both";
  return error.empty();
}

std::string HelpText() {
  constexpr std::size_t kColumn = 16;
  std::string text = kIntroduction;
  text += "\n";
  for (const OptionRow& row : kOptions) {
    std::string shape = Shape(row);
    shape.resize(kColumn, ' ');
    text.append("  ").append(shape).append(row.help).append("\n");
  }
  return text + "\nKeys:\n" + KeyMapText();
}

}  // namespace sdl
