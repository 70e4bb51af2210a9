#include "hosts/program.h"

#include "hosts/folders.h"

extern "C" {
extern const std::byte quillmark_resources[];
extern const std::byte quillmark_resources_end[];
}

namespace hosts {
namespace {

constexpr ClientSize kPortrait = {240, 278};
constexpr ClientSize kLandscape = {320, 198};

}  // namespace

const char* const kVersion = QUILLMARK_VERSION;

std::optional<ClientSize> ClientSizeByName(std::string_view name) {
  if (name == "portrait") return kPortrait;
  if (name == "landscape") return kLandscape;
  return std::nullopt;
}

phone::Options PhoneOptions(const Settings& settings) {
  phone::Options options;
  options.folder = settings.phone.empty() ? DefaultPhoneFolder() : settings.phone;
  options.program_data = settings.program.empty() ? ProgramFolder() : settings.program;
  options.module = u"\\Program Files\\Quillmark\\Quillmark.exe";
  options.resources = ProgramResources();
  options.instance = settings.instance;
  options.client_width = settings.client.width;
  options.client_height = settings.client.height;
  options.free_threads = settings.free_threads;
  return options;
}

std::span<const std::byte> ProgramResources() {
  return {quillmark_resources, quillmark_resources_end};
}

phone::EntryPoint ProgramEntry() {
  return WinMain;
}

}  // namespace hosts
