#include <SDL.h>
#include <getopt.h>

#include <cstdlib>
#include <iostream>
#include <stdexcept>
#include <string_view>

#include "hosts/program.h"
#include "hosts/sdl/sdl_host.h"

namespace {

constexpr char kUsage[] =
    "Usage: quillmark [OPTION]...\n"
    "A theme editor for the home screen of a phone, on a phone of its own.\n"
    "\n"
    "  --phone DIR        the phone folder (default: your own, made from the sample phone)\n"
    "  --screen SHAPE     portrait (the default) or landscape\n"
    "  --scale N          pixels for one of the phone's, 1 to 8 (default: what fits, up to 3)\n"
    "  --help, --version  tell this, or the version, and end\n"
    "\n"
    "Keys: arrows, Enter (action key), F1 and F2 (soft keys), Esc or Backspace (Back).\n";

constexpr int kLargestScale = 8;

constexpr option kOptions[] = {
    {"phone", required_argument, nullptr, 'p'},  {"screen", required_argument, nullptr, 's'},
    {"scale", required_argument, nullptr, 'c'},  {"record", required_argument, nullptr, 'r'},
    {"replay", required_argument, nullptr, 'y'}, {"help", no_argument, nullptr, 'h'},
    {"version", no_argument, nullptr, 'v'},      {nullptr, 0, nullptr, 0},
};

struct CommandLine {
  hosts::Settings settings;
  int scale = 0;  ///< 0: what fits
  std::string record;
  std::string replay;
  bool help = false;
  bool version = false;
};

bool TakeScale(std::string_view text, int& scale) {
  if (text.size() != 1 || text[0] < '1' || text[0] > '0' + kLargestScale) return false;
  scale = text[0] - '0';
  return true;
}

bool TakeScreen(std::string_view text, hosts::ClientSize& client) {
  const auto named = hosts::ClientSizeByName(text);
  if (named) client = *named;
  return named.has_value();
}

bool Take(int letter, const char* value, CommandLine& result) {
  switch (letter) {
    case 'p': return !(result.settings.phone = value).empty();
    case 's': return TakeScreen(value, result.settings.client);
    case 'c': return TakeScale(value, result.scale);
    case 'r': return !(result.record = value).empty();
    case 'y': return !(result.replay = value).empty();
    case 'h': return result.help = true;
    case 'v': return result.version = true;
    default: return false;
  }
}

/// What the system library finds wrong it says itself; the rest is said here.
bool Parse(int count, char** arguments, CommandLine& result) {
  while (true) {
    const int letter = getopt_long(count, arguments, "", kOptions, nullptr);
    if (letter == -1) break;
    const char* const value = optarg ? optarg : "";
    if (Take(letter, value, result)) continue;
    if (letter != '?') std::cerr << arguments[0] << ": not understood: " << value << "\n";
    return false;
  }
  if (optind < count) std::cerr << arguments[0] << ": not understood: " << arguments[optind] << "\n";
  return optind == count;
}

/// SDL's video, for as long as this lives.
class Video {
 public:
  Video() {
    if (SDL_Init(SDL_INIT_VIDEO) != 0) throw std::runtime_error(std::string("no display: ") + SDL_GetError());
    if (NobodyCouldSee()) {
      SDL_Quit();
      throw std::runtime_error("no display");
    }
    SDL_EnableScreenSaver();
  }
  ~Video() { SDL_Quit(); }
  Video(const Video&) = delete;
  Video& operator=(const Video&) = delete;

 private:
  /// Where there is no display SDL falls back on a driver that shows nothing; only who asks for it means it.
  static bool NobodyCouldSee() {
    const std::string_view driver = SDL_GetCurrentVideoDriver();
    return !std::getenv("SDL_VIDEODRIVER") && (driver == "offscreen" || driver == "dummy" || driver == "evdev");
  }
};

int RunPhone(const CommandLine& command_line) {
  const phone::Options options = hosts::PhoneOptions(command_line.settings);
  std::unique_ptr<sdl::Replay> replay;
  if (!command_line.replay.empty()) replay = std::make_unique<sdl::Replay>(command_line.replay);
  const Video video;
  sdl::SdlHost host(command_line.scale);
  if (replay) host.Play(std::move(replay));
  if (!command_line.record.empty()) host.Record(std::make_unique<script::Recorder>(command_line.record, options));
  const int exit_code = phone::Run(host, options, hosts::ProgramEntry());
  if (!host.Failure().empty()) throw std::runtime_error("no window: " + host.Failure());
  return exit_code;
}

}  // namespace

int main(int count, char** arguments) {
  CommandLine command_line;
  if (!Parse(count, arguments, command_line)) {
    std::cerr << "Try quillmark --help.\n";
    return hosts::kUsageError;
  }
  if (command_line.help || command_line.version) {
    std::cout << (command_line.help ? kUsage : "quillmark ");
    if (command_line.version) std::cout << hosts::kVersion << "\n";
    return EXIT_SUCCESS;
  }
  try {
    return RunPhone(command_line);
  } catch (const sdl::NotPlayable& failure) {
    std::cerr << "quillmark: " << failure.what() << "\n";
    return hosts::kUsageError;
  } catch (const std::exception& failure) {
    std::cerr << "quillmark: " << failure.what() << "\n";
    return EXIT_FAILURE;
  }
}
