/// \file
/// Writing a file whole or not at all.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "system/files.h"
#include "system/unique_fd.h"
#include "windows.h"

namespace phone {

/// A file's new content under way: a temporary file beside it, which takes its place on Commit and is removed
/// otherwise.
class FileReplacement {
 public:
  FileReplacement() = default;
  FileReplacement(FileReplacement&&) = delete;
  ~FileReplacement() { Discard(); }

  /// Makes the temporary file. The target's folder must be there, and the target, if there, a file that may be written.
  DWORD Begin(std::u16string_view path);
  /// Flushes the content to the disk and puts it in the place of the target; on failure the target is as it was.
  DWORD Commit(Writer writer);

  /// The temporary file, open for reading and writing.
  int fd() const noexcept { return file_.get(); }

 private:
  DWORD MakeTemporary(mode_t mode);
  void Discard();

  UniqueFd folder_;
  UniqueFd file_;
  std::string target_;
  std::string temporary_;  ///< empty when there is none
};

/// Read and write as much as can be, across interruptions. Less than `size` was handled on an error, which errno tells,
/// or at the end of the file.
std::size_t ReadFully(int fd, void* data, std::size_t size);
std::size_t WriteFully(int fd, const void* data, std::size_t size);

}  // namespace phone
