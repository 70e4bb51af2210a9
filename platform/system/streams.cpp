/// \file
/// The runtime's file streams on the phone's files. Each fread, fwrite and fclose of the program counts and can fail.
///
/// A stream for writing is not buffered, so that the C library hands each fwrite on as one operation. Reads it splits
/// and joins as it likes, whatever the buffer, so fread itself is wrapped. One that is made to fail gives 0 and errno,
/// but leaves the stream's error indicator, which only the C library can set.
#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <mutex>
#include <string_view>
#include <vector>

#include "system/faults.h"
#include "system/outside.h"
#include "system/replacement.h"
#include "system/volume.h"
#include "windows.h"

namespace phone {

namespace {

struct Stream {
  UniqueFd file;                ///< of a stream for reading
  FileReplacement replacement;  ///< of a stream for writing
  bool writes = false;
  DWORD error = ERROR_SUCCESS;  ///< of the first write that failed
  std::u16string path;
  FILE* handle = nullptr;  ///< what the program knows it by

  int fd() const noexcept { return writes ? replacement.fd() : file.get(); }
};

std::mutex open_streams_mutex;
std::vector<const FILE*> open_streams;

bool IsPhoneStream(const FILE* file) {
  const std::lock_guard lock(open_streams_mutex);
  return std::find(open_streams.begin(), open_streams.end(), file) != open_streams.end();
}

Stream& StreamOf(void* cookie) {
  return *static_cast<Stream*>(cookie);
}

ssize_t ReadStream(void* cookie, char* data, std::size_t size) {
  errno = 0;
  const std::size_t count = ReadFully(StreamOf(cookie).fd(), data, size);
  return count == 0 && errno != 0 ? -1 : static_cast<ssize_t>(count);
}

/// Gives what was written; less than asked for is the runtime's sign of an error.
ssize_t WriteStream(void* cookie, const char* data, std::size_t size) {
  Stream& stream = StreamOf(cookie);
  if (FaultDue(Operation::fwrite)) {
    stream.error = ERROR_GEN_FAILURE;
    errno = ENOSPC;
    return 0;
  }
  const std::size_t count = WriteFully(stream.fd(), data, size);
  if (count < size && stream.error == ERROR_SUCCESS) stream.error = ErrorOf(errno, ERROR_WRITE_FAULT);
  return static_cast<ssize_t>(count);
}

int SeekStream(void* cookie, off64_t* position, int origin) {
  const off64_t reached = lseek64(StreamOf(cookie).fd(), *position, origin);
  if (reached < 0) return -1;
  *position = reached;
  return 0;
}

int CloseStream(void* cookie) {
  const std::unique_ptr<Stream> stream(&StreamOf(cookie));
  {
    const std::lock_guard lock(open_streams_mutex);
    std::erase(open_streams, stream->handle);
  }
  DWORD error = FaultDue(Operation::fclose) ? ERROR_GEN_FAILURE : stream->error;
  if (stream->writes && error == ERROR_SUCCESS) error = stream->replacement.Commit(Writer::program);
  if (error == ERROR_SUCCESS) return 0;
  ReportOutcome(Operation::fclose, stream->path, error);
  errno = EIO;
  return EOF;
}

DWORD OpenStream(std::u16string_view path, bool writes, FILE*& file) {
  auto stream = std::make_unique<Stream>();
  stream->writes = writes;
  stream->path = path;
  const DWORD error = writes ? stream->replacement.Begin(path) : OpenForReading(path, stream->file);
  if (error != ERROR_SUCCESS) return error;
  const std::lock_guard lock(open_streams_mutex);
  open_streams.reserve(open_streams.size() + 1);
  file = fopencookie(stream.get(), writes ? "w+" : "r",
                     {ReadStream, writes ? WriteStream : nullptr, SeekStream, CloseStream});
  if (!file) return ERROR_NOT_ENOUGH_MEMORY;
  if (writes) setvbuf(file, nullptr, _IONBF, 0);
  stream->handle = file;
  open_streams.push_back(file);
  static_cast<void>(stream.release());  // the open stream owns it, CloseStream frees it
  return ERROR_SUCCESS;
}

/// For the modes that there are; line ends are never translated, which "b" asks for.
DWORD OpenStreamOfMode(std::u16string_view path, std::u16string_view mode, FILE*& file) {
  if (mode == u"r" || mode == u"rb") return OpenStream(path, false, file);
  if (mode == u"w+" || mode == u"w+b" || mode == u"wb+") return OpenStream(path, true, file);
  return ERROR_INVALID_PARAMETER;
}

DWORD OpenStreamAs(std::u16string_view path, std::u16string_view mode, FILE*& file) {
  const DWORD error = OpenStreamOfMode(path, mode, file);
  // Who reads may only want to know whether the file is there.
  const bool told = error != ERROR_SUCCESS && (mode.front() == u'w' || error == ERROR_ACCESS_DENIED);
  if (told) ReportOutcome(Operation::_wfopen, path, error);
  return error;
}

}  // namespace

}  // namespace phone

extern "C" {
// The linker leads every fread of this program's own objects here (--wrap), and this name to the C library's.
std::size_t __real_fread(void* data, std::size_t size, std::size_t count, FILE* file);
std::size_t __wrap_fread(void* data, std::size_t size, std::size_t count, FILE* file);
}

std::size_t __wrap_fread(void* data, std::size_t size, std::size_t count, FILE* file) {
  if (phone::IsPhoneStream(file) && phone::FaultDue(phone::Operation::fread)) {
    errno = EIO;
    return 0;
  }
  return __real_fread(data, size, count, file);
}

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
