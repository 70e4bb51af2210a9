/// \file
/// The runtime's file streams on the phone's files. A stream is not buffered, so that each call of the program is one
/// operation here, which counts and can fail.
#include <fcntl.h>

#include <cerrno>
#include <cstdio>
#include <memory>
#include <string_view>

#include "system/faults.h"
#include "system/replacement.h"
#include "system/volume.h"
#include "windows.h"

namespace phone {

namespace {

struct Stream {
  UniqueFd file;                ///< of a stream for reading
  FileReplacement replacement;  ///< of a stream for writing
  bool writes = false;
  bool write_failed = false;
  bool at_end = false;  ///< the last read has met the end of the file

  int fd() const noexcept { return writes ? replacement.fd() : file.get(); }
};

Stream& StreamOf(void* cookie) {
  return *static_cast<Stream*>(cookie);
}

ssize_t ReadStream(void* cookie, char* data, std::size_t size) {
  Stream& stream = StreamOf(cookie);
  // The runtime asks again after a short read; that is still the same call of the program.
  if (stream.at_end) return 0;
  if (FaultDue(Operation::fread)) {
    errno = EIO;
    return -1;
  }
  errno = 0;
  const std::size_t count = ReadFully(stream.fd(), data, size);
  if (count == 0 && errno != 0) return -1;
  stream.at_end = count < size;
  return static_cast<ssize_t>(count);
}

/// Gives what was written; less than asked for is the runtime's sign of an error.
ssize_t WriteStream(void* cookie, const char* data, std::size_t size) {
  Stream& stream = StreamOf(cookie);
  stream.at_end = false;
  if (FaultDue(Operation::fwrite)) {
    stream.write_failed = true;
    errno = ENOSPC;
    return 0;
  }
  const std::size_t count = WriteFully(stream.fd(), data, size);
  if (count < size) stream.write_failed = true;
  return static_cast<ssize_t>(count);
}

int SeekStream(void* cookie, off64_t* position, int origin) {
  Stream& stream = StreamOf(cookie);
  stream.at_end = false;
  const off64_t reached = lseek64(stream.fd(), *position, origin);
  if (reached < 0) return -1;
  *position = reached;
  return 0;
}

int CloseStream(void* cookie) {
  const std::unique_ptr<Stream> stream(&StreamOf(cookie));
  bool failed = FaultDue(Operation::fclose) || stream->write_failed;
  if (stream->writes && !failed) failed = stream->replacement.Commit() != ERROR_SUCCESS;
  if (failed) errno = EIO;
  return failed ? EOF : 0;
}

DWORD OpenStream(std::u16string_view path, bool writes, FILE*& file) {
  auto stream = std::make_unique<Stream>();
  stream->writes = writes;
  const DWORD error = writes ? stream->replacement.Begin(path) : OpenForReading(path, stream->file);
  if (error != ERROR_SUCCESS) return error;
  file = fopencookie(stream.get(), writes ? "w+" : "r",
                     {ReadStream, writes ? WriteStream : nullptr, SeekStream, CloseStream});
  if (!file) return ERROR_NOT_ENOUGH_MEMORY;
  stream.release();
  setvbuf(file, nullptr, _IONBF, 0);
  return ERROR_SUCCESS;
}

/// For the modes that there are; line ends are never translated, which "b" asks for.
DWORD OpenStreamAs(std::u16string_view path, std::u16string_view mode, FILE*& file) {
  if (mode == u"r" || mode == u"rb") return OpenStream(path, false, file);
  if (mode == u"w+" || mode == u"w+b" || mode == u"wb+") return OpenStream(path, true, file);
  return ERROR_INVALID_PARAMETER;
}

}  // namespace

}  // namespace phone

FILE* _wfopen(const WCHAR* path, const WCHAR* mode) {
  FILE* file = nullptr;
  DWORD error = ERROR_INVALID_PARAMETER;
  if (phone::FaultDue(phone::Operation::_wfopen)) {
    error = ERROR_GEN_FAILURE;
  } else if (path && mode) {
    try {
      error = phone::OpenStreamAs(path, mode, file);
    } catch (...) {
      error = ERROR_NOT_ENOUGH_MEMORY;
    }
  }
  if (error != ERROR_SUCCESS) SetLastError(error);
  return file;
}
