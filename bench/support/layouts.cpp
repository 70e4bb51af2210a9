#include "support/layouts.h"

#include "support/file_content.h"

namespace bench {

namespace {

std::string Plugin(int number) {
  const std::string digits = std::to_string(100000 + number);
  return "  <plugin clsid=\"{3CEAAF30-8142-48EA-91D9-308000" + digits + "}\" name=\"plug-in " + digits +
         "\" height=\"36\">\n    <label lang=\"0x0409\">Number " + digits +
         "</label>\n    <format color=\"white\" padding-left=\"4\"/>\n  </plugin>\n";
}

std::string Head(const std::string& title) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<home>\n  <author>Quillmark</author>\n  <title>" + title +
         "</title>\n  <version>1.0</version>\n";
}

constexpr char kTail[] = "</home>\n";

}  // namespace

std::string Title(int number, std::size_t length) {
  std::string title = std::to_string(number) + " mountain evening by the water";
  title.resize(length, 'e');
  if (title.back() == ' ') title.back() = 'n';
  return title;
}

std::string LayoutOfSize(const std::string& title, std::size_t bytes) {
  std::string content = Head(title);
  for (int number = 0; content.size() + sizeof kTail - 1 < bytes; ++number) content += Plugin(number);
  return content + kTail;
}

std::string LayoutOfPlugins(const std::string& title, int plugins) {
  std::string content = Head(title);
  for (int number = 0; number < plugins; ++number) content += Plugin(number);
  return content + kTail;
}

Phone::Phone() {
  AddLayout("Application Data", "Plain", LayoutOfPlugins("Plain", 1));
}

void Phone::AddThemes(const std::string& folder, int count, std::size_t title_length) {
  for (int number = 1; number <= count; ++number) {
    const std::string name = std::to_string(100000 + number);
    AddLayout(folder, name, LayoutOfPlugins(Title(number, title_length), 1));
  }
}

std::filesystem::path Phone::AddLayout(const std::string& folder, const std::string& name, const std::string& content) {
  const std::filesystem::path file = path() / folder / "Home" / (name + ".home.xml");
  WriteFile(file, content);
  return file;
}

void Phone::AddFavorites(const std::string& folder, int count) {
  for (int number = 1; number <= count; ++number)
    WriteFile(path() / folder / ("Favourite " + std::to_string(100000 + number) + ".plg"), "");
}

void Phone::Use(const std::string& layout) {
  WriteFile(path() / "registry.reg",
            "Windows Registry Editor Version 5.00\n\n[HKEY_CURRENT_USER\\ControlPanel\\Home]\n\"Scheme\"=\"" + layout +
                "\"\n");
}

}  // namespace bench
