#include <unistd.h>

#include <cstdio>
#include <exception>
#include <iostream>

#include "hosts/folders.h"
#include "hosts/headless/command_line.h"
#include "hosts/headless/scripted_host.h"
#include "system/files.h"
#include "system/outside.h"

namespace {

// The entry point is a plain function of the platform; this is what it belongs to.
headless::ScriptedHost* g_host = nullptr;
const headless::CommandLine* g_command_line = nullptr;

int WINAPI StartProgram(HINSTANCE instance, HINSTANCE previous, LPWSTR command_line, int show) {
  for (const script::Fault& fault : g_command_line->faults) script::Inject(fault);
  const int exit_code = hosts::ProgramEntry()(instance, previous, command_line, show);
  g_host->EndProgram(exit_code);
  return exit_code;
}

/// The phone is off, but its files are still there to look at; unless the folder cannot be used any more.
void WithFiles(const phone::Options& options, const std::function<void(bool at_hand)>& act) {
  bool at_hand = true;
  try {
    phone::MountFiles(options.folder, options.program_data, options.module);
    phone::LoadRegistry();
  } catch (const std::exception&) {
    at_hand = false;
  }
  act(at_hand);
  phone::UnmountFiles();
}

int RunScript(const headless::CommandLine& command_line) {
  const phone::Options options = hosts::PhoneOptions(command_line.settings);
  if (hosts::MakePhoneFolder(options.folder))
    std::cerr << "quillmark-headless: the phone folder " << options.folder.string() << " is new and empty\n";
  headless::Script script(STDIN_FILENO);
  headless::ScriptedHost host(script, std::cout, command_line.tick);
  g_host = &host;
  g_command_line = &command_line;
  const int exit_code = phone::Run(host, options, StartProgram);
  host.ServeAfterEnd([&](const std::function<void(bool)>& act) { WithFiles(options, act); });
  if (!host.Refused()) return exit_code;
  std::cerr << "quillmark-headless: line " << host.Refused()->number << " is not understood: " << host.Refused()->text
            << "\n";
  return hosts::kUsageError;
}

}  // namespace

int main(int count, char** arguments) {
  headless::CommandLine command_line;
  std::string error;
  if (!headless::ParseCommandLine(count, arguments, command_line, error)) {
    std::cerr << "quillmark-headless: " << error << "\nTry quillmark-headless --help.\n";
    return hosts::kUsageError;
  }
  if (command_line.help || command_line.version) {
    std::cout << (command_line.help ? headless::kUsage : "quillmark-headless ");
    if (command_line.version) std::cout << hosts::kVersion << "\n";
    return 0;
  }
  try {
    return RunScript(command_line);
  } catch (const std::exception& failure) {
    std::cerr << "quillmark-headless: " << failure.what() << "\n";
    return 1;
  }
}
