#include "fuzz/fuzzing.h"

#include <cstdio>
#include <cstdlib>

#include "graphics/imaging_factory.h"
#include "support/file_content.h"
#include "system/com.h"
#include "system/faults.h"
#include "system/files.h"
#include "system/outside.h"
#include "xml/dom_document.h"

namespace fuzzing {

std::string_view CutLine(std::string_view& text) {
  const std::string_view line = text.substr(0, text.find('\n'));
  text.remove_prefix(std::min(line.size() + 1, text.size()));
  return line;
}

void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "This does not hold: %s.\n", what);
  std::abort();
}

Phone& Phone::On() {
  static Phone phone;
  return phone;
}

Phone::Phone() {
  phone::ResetFaults();
  phone::ResetOutside(host_);
  phone::MountFiles(folder_.path, folder_.path, u"\\Program Files\\Quillmark\\Quillmark.exe");
  phone::RegisterComponent(CLSID_DOMDocument, phone::CreateDomDocument);
  phone::RegisterComponent(CLSID_ImagingFactory, phone::CreateImagingFactory);
}

Phone::~Phone() {
  phone::UnmountFiles();
}

void Phone::Put(const std::string& path, std::string_view content) const {
  WriteFile(folder_.path / path, content);
}

std::string Phone::Content(const std::string& path) const {
  return ReadFile(folder_.path / path);
}

void Phone::Remove(const std::string& path) const {
  std::filesystem::remove(folder_.path / path);
}

}  // namespace fuzzing
