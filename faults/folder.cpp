#include "faults/folder.h"

#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace faults {
namespace {

namespace fs = std::filesystem;

fs::path FastFolder() {
  const fs::path memory = "/dev/shm";
  return access(memory.c_str(), W_OK) == 0 ? memory : fs::temp_directory_path();
}

}  // namespace

Files ReadFiles(const fs::path& folder) {
  Files files;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
    if (!entry.is_regular_file()) continue;
    std::ifstream stream(entry.path(), std::ios::binary);
    files[fs::relative(entry.path(), folder).string()] = {std::istreambuf_iterator<char>(stream), {}};
  }
  return files;
}

void FillFolder(const fs::path& folder, const Files& files) {
  fs::remove_all(folder);
  for (const auto& [name, content] : files) {
    fs::create_directories((folder / name).parent_path());
    std::ofstream(folder / name, std::ios::binary) << content;
  }
}

WorkFolder::WorkFolder() {
  std::string name = (FastFolder() / "quillmark-faults-XXXXXX").string();
  if (!mkdtemp(name.data())) throw std::runtime_error("no folder for the phone");
  path_ = name;
}

WorkFolder::~WorkFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

}  // namespace faults
