#include "support/phone_folder.h"

#include <algorithm>
#include <cstdint>

namespace fs = std::filesystem;

PhoneFolder::PhoneFolder() {
  fs::create_directories(Home());
}

void PhoneFolder::AddLayout(const std::string& name, const std::string& title,
                            const std::vector<std::string>& plugins) const {
  std::string content =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<home>\n<title lang=\"0x0409\">" + title + "</title>\n";
  for (const std::string& plugin : plugins) content += "<plugin clsid=\"{" + plugin + "}\" name=\"" + plugin + "\"/>\n";
  WriteFile(Home() / (name + ".home.xml"), content + "</home>\n");
}

void PhoneFolder::AddFavorite(const std::string& name, std::u16string_view element, std::u16string_view clsid) const {
  constexpr std::size_t field = 512;
  const auto bytes = [](std::u16string_view text) {
    return std::string(reinterpret_cast<const char*>(text.data()), text.size() * 2);
  };
  std::string content = bytes(std::u16string(name.begin(), name.end()));
  content.resize(field);
  content.append(bytes(clsid)).resize(2 * field);
  const auto count = static_cast<std::uint32_t>(element.size() + 1);
  content.append(reinterpret_cast<const char*>(&count), sizeof count);
  WriteFile(Plugins() / (name + ".plg"), content + bytes(element) + std::string(2, '\0'));
}

void PhoneFolder::UseLayout(const std::string& name) const {
  WriteFile(path() / "registry.reg",
            "Windows Registry Editor Version 5.00\n\n[HKEY_CURRENT_USER\\ControlPanel\\Home]\n"
            "\"Scheme\"=\"\\\\Application Data\\\\Home\\\\" +
                name + ".home.xml\"\n");
}

std::string LayoutPath(const std::string& name) {
  return "\\Application Data\\Home\\" + name + ".home.xml";
}

std::vector<std::string> FilesBelow(const fs::path& folder) {
  std::vector<std::string> files;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.is_regular_file()) files.push_back(fs::relative(entry.path(), folder).string());
  }
  std::sort(files.begin(), files.end());
  return files;
}
