#include "support/phone_folder.h"

#include <stdlib.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace fs = std::filesystem;

PhoneFolder::PhoneFolder() {
  std::string name = (fs::temp_directory_path() / "quillmark-test-XXXXXX").string();
  if (!mkdtemp(name.data())) throw std::runtime_error("no temporary folder");
  path_ = name;
  fs::create_directories(Home());
}

PhoneFolder::~PhoneFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

void PhoneFolder::AddLayout(const std::string& name, const std::string& title,
                            const std::vector<std::string>& plugins) const {
  std::string content =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<home>\n<title lang=\"0x0409\">" + title + "</title>\n";
  for (const std::string& plugin : plugins) content += "<plugin clsid=\"{" + plugin + "}\" name=\"" + plugin + "\"/>\n";
  WriteFile(Home() / (name + ".home.xml"), content + "</home>\n");
}

void PhoneFolder::AddFavorite(const std::string& name, std::u16string_view element) const {
  constexpr std::size_t field = 512;
  const auto bytes = [](std::u16string_view text) {
    return std::string(reinterpret_cast<const char*>(text.data()), text.size() * 2);
  };
  std::u16string wide(name.begin(), name.end());
  std::string content = bytes(wide);
  content.resize(2 * field);
  const auto count = static_cast<std::uint32_t>(element.size() + 1);
  content.append(reinterpret_cast<const char*>(&count), sizeof count);
  WriteFile(Plugins() / (name + ".plg"), content + bytes(element) + std::string(2, '\0'));
}

void PhoneFolder::UseLayout(const std::string& name) const {
  WriteFile(path_ / "registry.reg",
            "Windows Registry Editor Version 5.00\n\n[HKEY_CURRENT_USER\\ControlPanel\\Home]\n"
            "\"Scheme\"=\"\\\\Application Data\\\\Home\\\\" +
                name + ".home.xml\"\n");
}

std::string LayoutPath(const std::string& name) {
  return "\\Application Data\\Home\\" + name + ".home.xml";
}

std::string ReadFile(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

void WriteFile(const fs::path& file, std::string_view content) {
  fs::create_directories(file.parent_path());
  std::ofstream stream(file, std::ios::binary);
  stream << content;
  if (!stream.flush()) throw std::runtime_error("cannot write " + file.string());
}

std::vector<std::string> FilesBelow(const fs::path& folder) {
  std::vector<std::string> files;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.is_regular_file()) files.push_back(fs::relative(entry.path(), folder).string());
  }
  std::sort(files.begin(), files.end());
  return files;
}
