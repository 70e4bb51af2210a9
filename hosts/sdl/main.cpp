#include <SDL.h>

#include <clocale>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "hosts/folders.h"
#include "hosts/program.h"
#include "hosts/sdl/command_line.h"
#include "hosts/sdl/display_loss.h"
#include "hosts/sdl/folder_question.h"
#include "hosts/sdl/sdl_host.h"

namespace {

constexpr char kStateFile[] = "quillmark/window";

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

std::filesystem::path StatePath() {
  const std::filesystem::path folder = hosts::UserFolder(hosts::UserFolderKind::state);
  return folder.empty() ? folder : folder / kStateFile;
}

/// What was remembered, as far as no option says otherwise.
sdl::WindowState WantedState(const sdl::CommandLine& command_line, const sdl::WindowState& remembered) {
  sdl::WindowState wanted = remembered;
  if (command_line.screen) wanted.screen = *command_line.screen;
  if (command_line.scale) wanted.scale = *command_line.scale;
  return wanted;
}

phone::Options PhoneOptions(const sdl::CommandLine& command_line, sdl::Orientation screen) {
  hosts::Settings settings;
  settings.phone = command_line.phone;
  settings.client = hosts::ClientSizeByName(sdl::NameOf(screen)).value_or(settings.client);
  return hosts::PhoneOptions(settings);
}

int RunPhone(const sdl::CommandLine& command_line) {
  sdl::StateFile state(StatePath());
  const sdl::WindowState wanted = WantedState(command_line, state.State());
  const phone::Options options = PhoneOptions(command_line, wanted.screen);
  std::unique_ptr<sdl::Replay> replay;
  if (!command_line.replay.empty()) replay = std::make_unique<sdl::Replay>(command_line.replay);
  const Video video;
  if (hosts::IsForeignFolder(options.folder) && !sdl::MayUseForeignFolder(options.folder, wanted))
    throw std::runtime_error(options.folder.string() + " is no phone folder and stays as it was");
  const bool new_phone = hosts::MakePhoneFolder(options.folder);
  sdl::SdlHost host(wanted, state);
  if (new_phone) host.Notify("The phone folder " + options.folder.string() + " is new and empty.");
  if (replay) host.Play(std::move(replay));
  if (!command_line.record.empty()) host.Record(std::make_unique<script::Recorder>(command_line.record, options));
  const int exit_code = phone::Run(host, options, hosts::ProgramEntry());
  if (host.Failure().empty()) return exit_code;
  if (!sdl::DisplayIsLost()) throw std::runtime_error(host.Failure());
  // SDL would wait for a display that does not answer any more.
  std::cerr << "quillmark: " << host.Failure() << std::endl;
  std::_Exit(EXIT_FAILURE);
}

}  // namespace

int main(int count, char** arguments) {
  // The desktop's characters, for the window's title; numbers stay as they are everywhere.
  std::setlocale(LC_CTYPE, "");
  sdl::CommandLine command_line;
  std::string error;
  if (!sdl::ParseCommandLine(count, arguments, command_line, error)) {
    std::cerr << "quillmark: " << error << "\nTry quillmark --help.\n";
    return hosts::kUsageError;
  }
  if (command_line.help || command_line.version) {
    std::cout << (command_line.help ? sdl::HelpText() : std::string("quillmark ") + hosts::kVersion + "\n");
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
