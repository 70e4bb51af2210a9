// A script of the scripted phone: each line is understood or refused, and what is understood is carried out by the
// whole program on a phone of a few files.

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>

#include "fuzz/fuzzing.h"
#include "hosts/headless/scripted_host.h"
#include "hosts/program.h"
#include "hosts/script/arguments.h"
#include "support/phone_folder.h"
#include "system/faults.h"
#include "system/names.h"

namespace {

using fuzzing::Require;

// A script has no bounds of its own; these keep an input short.
constexpr std::size_t kMostLines = 48;
constexpr std::uint32_t kLongestWait = 10'000;  // ms
constexpr std::uint32_t kMostSteps = 40;        // of one wait
constexpr std::uint32_t kLargestSide = 400;     // px

headless::ScriptedHost* current_host = nullptr;

/// Lines that would write outside of the phone, or take long.
bool IsTried(std::string_view line) {
  script::Arguments arguments(line);
  const std::string_view name = arguments.Word();
  if (name == "shot" || name == "client") return false;
  if (name == "resize") return arguments.Number(1, kLargestSide) && arguments.Number(1, kLargestSide);
  if (name != "wait") return true;
  const auto length = arguments.Number(0, kLongestWait);
  const auto step = arguments.AtEnd() ? kLongestWait / kMostSteps : arguments.Number(1, kLongestWait);
  return length && step && *length / *step <= kMostSteps;
}

/// The lines that are tried; all of them are understood or refused first.
std::string TriedLines(std::string_view text) {
  std::string tried;
  for (std::size_t count = 0; !text.empty() && count < kMostLines; ++count) {
    const std::string_view line = fuzzing::CutLine(text);
    static_cast<void>(script::ParseCommand(line));
    if (IsTried(line)) tried.append(line).append("\n");
  }
  return tried;
}

/// A few themes, one in use, and a favourite.
void FillPhone(const PhoneFolder& phone) {
  std::filesystem::remove_all(phone.path() / "Program Files");
  for (const std::filesystem::directory_entry& file : std::filesystem::directory_iterator(phone.Home()))
    std::filesystem::remove_all(file);
  phone.AddLayout("Plain", "Plain", {"clock", "owner", "calls"});
  phone.AddLayout("Night", "Night watch", {"clock"});
  phone.AddLayout("Empty", "Empty", {});
  phone.AddFavorite("Tide", u"<plugin clsid=\"{2}\" name=\"tide\"/>");
  phone.UseLayout("Plain");
}

int WINAPI StartProgram(HINSTANCE instance, HINSTANCE previous, LPWSTR command_line, int show) {
  const int exit_code = hosts::ProgramEntry()(instance, previous, command_line, show);
  current_host->EndProgram(exit_code);
  return exit_code;
}

/// The replies to a script.
std::string Play(const std::string& lines, const PhoneFolder& phone) {
  const int input = memfd_create("script", MFD_CLOEXEC);
  Require(
      write(input, lines.data(), lines.size()) == static_cast<ssize_t>(lines.size()) && lseek(input, 0, SEEK_SET) == 0,
      "there is room for a script");
  std::ostringstream replies;
  {
    headless::Script script(input);
    headless::ScriptedHost host(script, replies, 1000);
    current_host = &host;
    hosts::Settings settings;
    settings.phone = phone.path();
    phone::ResetFaults();
    phone::Run(host, hosts::PhoneOptions(settings), StartProgram);
    host.ServeAfterEnd([](const std::function<void(bool)>& act) { act(true); });
  }
  close(input);
  return replies.str();
}

void CheckReplies(const std::string& replies) {
  std::istringstream lines(replies);
  for (std::string line; std::getline(lines, line);) {
    const auto reply = nlohmann::json::parse(line, nullptr, /*allow_exceptions=*/false);
    Require(reply.is_object() && reply.contains("ok"), "a reply is a JSON object that says how it went");
  }
}

/// Whatever was done, no temporary file is left.
void CheckFiles(const PhoneFolder& phone) {
  for (const std::string& file : FilesBelow(phone.path()))
    Require(file.find(phone::kTemporaryPrefix) == std::string::npos, "no temporary file is left");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const PhoneFolder phone;
  FillPhone(phone);
  CheckReplies(Play(TriedLines(fuzzing::TextOf(data, size)), phone));
  CheckFiles(phone);
  return 0;
}
