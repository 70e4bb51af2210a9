// Gives a fuzzer's kept inputs to it once each, in a build without a fuzzer: the folders and files of the command line.

#include <algorithm>
#include <cstdio>
#include <vector>

#include "fuzz/fuzzing.h"
#include "support/file_content.h"

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> FilesIn(const fs::path& path) {
  if (!fs::is_directory(path)) return {path};
  std::vector<fs::path> files;
  for (const fs::directory_entry& entry : fs::directory_iterator(path)) files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  return files;
}

}  // namespace

int main(int count, char** arguments) {
  int replayed = 0;
  for (int i = 1; i < count; ++i) {
    for (const fs::path& file : FilesIn(arguments[i])) {
      std::printf("%s\n", file.c_str());
      std::fflush(stdout);
      const std::string content = ReadFile(file);
      LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(content.data()), content.size());
      ++replayed;
    }
  }
  std::printf("%d inputs\n", replayed);
  return replayed > 0 ? 0 : 1;
}
