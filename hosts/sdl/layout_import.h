/// \file
/// Layout files brought into the phone.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace sdl {

/// A layout file of this machine, read, on its way into the phone's Home folder.
struct Layout {
  std::string name;  ///< UTF-8
  std::vector<std::byte> content;
  bool replaces = false;  ///< the phone has a file of this name
  bool readable = true;   ///< the phone will read it
};

/// Reads a file that is to be brought into the phone. Gives why that cannot be done; empty when it can.
std::string ReadLayout(const std::filesystem::path& file, Layout& layout);

/// Writes it into the phone, whole or not at all. Gives what went wrong; empty when all is well.
std::string StoreLayout(const Layout& layout);

}  // namespace sdl
