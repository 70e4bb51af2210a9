/// \file
/// Writes what happens to the phone as a script that does it again.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "phone.h"
#include "system/unique_fd.h"

namespace script {

/// The clock's first value while a script is recorded or played.
inline constexpr std::uint32_t kFirstTick = 1000;

/// Every line stands in the file before what it says is done, so that a crash leaves the way to it behind.
class Recorder {
 public:
  /// Makes the file; one that is there already is never overwritten. `options` are those that the phone runs with.
  /// Throws std::runtime_error when the file cannot be made.
  Recorder(const std::string& file, const phone::Options& options);
  /// A recording in which nothing happened goes.
  ~Recorder();
  Recorder(const Recorder&) = delete;
  Recorder& operator=(const Recorder&) = delete;

  /// A command that is carried out at that tick. False when the file could not be written, which is told once: what has
  /// been written by then stays, whole lines only, and nothing more is.
  bool Write(std::uint32_t tick, std::string_view command);
  /// Why it could not be written.
  const std::string& Failure() const { return failure_; }

 private:
  bool Append(const std::string& lines);
  void Remove();
  void DropFrom(std::int64_t end);

  std::string file_;
  phone::UniqueFd descriptor_;
  std::uint32_t tick_ = kFirstTick;  ///< up to which time is written
  bool happened_ = false;
  std::string failure_;
};

}  // namespace script
