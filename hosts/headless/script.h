/// \file
/// The script, line by line.
#pragma once

#include <string>

namespace headless {

/// Reads the script from a file descriptor as it comes, and can be woken up while it waits for more.
class Script {
 public:
  enum class Event {
    line,   ///< there is a line
    end,    ///< the script has ended
    woken,  ///< Wake was called, or the watched descriptor became readable
  };

  explicit Script(int input);
  ~Script();
  Script(const Script&) = delete;
  Script& operator=(const Script&) = delete;

  /// Waits for the next line, without its end. `watched` is a descriptor to look out for meanwhile; -1: none.
  Event Next(std::string& line, int watched);
  /// Number of the line that was given last, from 1.
  int LineNumber() const { return line_number_; }
  /// Makes the running or the next Next return at once. Any thread.
  void Wake();

 private:
  bool TakeLine(std::string& line);
  void Fill();
  bool Woken();

  int input_;
  int wake_;
  bool ended_ = false;
  std::string buffer_;
  std::size_t taken_ = 0;  ///< bytes of the buffer that were given already
  int line_number_ = 0;
};

}  // namespace headless
