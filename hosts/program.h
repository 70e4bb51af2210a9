/// \file
/// The program as both hosts put it on the phone.
#pragma once

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "phone.h"

namespace hosts {

/// The program's version, as told on the command line.
extern const char* const kVersion;

/// The exit status for a command line or script that is not understood.
inline constexpr int kUsageError = 64;

/// The client area of a full window.
struct ClientSize {
  int width;   ///< px
  int height;  ///< px
};

/// "portrait" or "landscape"; nothing for another name.
std::optional<ClientSize> ClientSizeByName(std::string_view name);

/// What a host lets its user choose. Empty folders stand for the default ones.
struct Settings {
  std::filesystem::path phone;
  std::filesystem::path program;
  std::string instance;
  ClientSize client = {240, 278};
  bool free_threads = false;
};

/// The phone with the program on it. Throws std::runtime_error when a default folder cannot be had.
phone::Options PhoneOptions(const Settings& settings);

/// The program's compiled resources.
std::span<const std::byte> ProgramResources();

/// Where the program starts.
phone::EntryPoint ProgramEntry();

}  // namespace hosts
