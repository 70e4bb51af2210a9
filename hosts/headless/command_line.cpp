#include "hosts/headless/command_line.h"

#include <getopt.h>

#include <string_view>

#include "hosts/script/arguments.h"
#include "system/faults.h"

namespace headless {
namespace {

using script::Fault;
using script::ParseNumber;

constexpr std::uint64_t kLargestTick = 0xFFFFFFFF;
constexpr std::uint64_t kLargestSide = 4096;
constexpr std::uint64_t kLargestCount = 0xFFFFFFFF;

constexpr option kOptions[] = {
    {"phone", required_argument, nullptr, 'p'},  {"program", required_argument, nullptr, 'g'},
    {"screen", required_argument, nullptr, 's'}, {"instance", required_argument, nullptr, 'i'},
    {"tick", required_argument, nullptr, 't'},   {"fail", required_argument, nullptr, 'f'},
    {"free-threads", no_argument, nullptr, 'r'}, {"help", no_argument, nullptr, 'h'},
    {"version", no_argument, nullptr, 'v'},      {nullptr, 0, nullptr, 0},
};

/// Cuts off what stands before the mark.
std::string_view CutAt(std::string_view& text, char mark) {
  const std::string_view part = text.substr(0, text.find(mark));
  text.remove_prefix(std::min(part.size() + 1, text.size()));
  return part;
}

bool ParseScreen(std::string_view text, hosts::ClientSize& client) {
  if (const auto named = hosts::ClientSizeByName(text)) {
    client = *named;
    return true;
  }
  const auto width = ParseNumber(CutAt(text, 'x'), 1, kLargestSide);
  const auto height = ParseNumber(text, 1, kLargestSide);
  if (width && height) client = {static_cast<int>(*width), static_cast<int>(*height)};
  return width && height;
}

bool ParseFault(std::string_view text, std::vector<Fault>& faults) {
  Fault fault{CutAt(text, ':')};
  if (!phone::OperationByName(fault.operation)) return false;
  for (std::uint64_t* const number : {&fault.count, &fault.after}) {
    if (text.empty()) break;
    const auto parsed = ParseNumber(CutAt(text, ':'), 0, kLargestCount);
    if (!parsed) return false;
    *number = *parsed;
  }
  faults.push_back(fault);
  return text.empty();
}

bool ParseTick(std::string_view text, std::uint32_t& tick) {
  const auto parsed = ParseNumber(text, 1, kLargestTick);
  if (parsed) tick = static_cast<std::uint32_t>(*parsed);
  return parsed.has_value();
}

bool TakeFolder(std::string_view text, std::filesystem::path& folder) {
  folder = text;
  return !text.empty();
}

bool Take(int letter, const char* value, CommandLine& result) {
  switch (letter) {
    case 'p': return TakeFolder(value, result.settings.phone);
    case 'g': return TakeFolder(value, result.settings.program);
    case 's': return ParseScreen(value, result.settings.client);
    case 'i': return !(result.settings.instance = value).empty();
    case 't': return ParseTick(value, result.tick);
    case 'f': return ParseFault(value, result.faults);
    case 'r': return result.settings.free_threads = true;
    case 'h': return result.help = true;
    case 'v': return result.version = true;
    default: return false;
  }
}

}  // namespace

const char* const kUsage =
    "Usage: quillmark-headless [OPTION]... < SCRIPT > REPLIES\n"
    "Runs Quillmark on a phone whose keys are pressed by a script.\n"
    "\n"
    "  --phone DIR        the phone folder (default: the one the desktop program uses)\n"
    "  --program DIR      the program's artwork and pages\n"
    "  --screen SIZE      portrait, landscape, or the client area's size as WxH\n"
    "  --instance NAME    the name a second start finds this one by\n"
    "  --tick N           the clock's first value, in milliseconds (default 1000)\n"
    "  --fail OPERATION[:COUNT[:AFTER]]\n"
    "                     what is to fail while the program starts; may be given again\n"
    "  --free-threads     let the program's threads run as they please\n"
    "  --help, --version  tell this, or the version, and end\n";

bool ParseCommandLine(int count, char** arguments, CommandLine& result, std::string& error) {
  constexpr char no_short_options[] = ":";
  opterr = 0;
  while (true) {
    const int at = optind;
    const int letter = getopt_long(count, arguments, no_short_options, kOptions, nullptr);
    if (letter == -1) break;
    if (!Take(letter, optarg ? optarg : "", result)) {
      error = std::string("not understood: ") + arguments[at < count ? at : count - 1];
      return false;
    }
  }
  if (optind == count) return true;
  error = std::string("not understood: ") + arguments[optind];
  return false;
}

}  // namespace headless
