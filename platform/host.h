/// \file
/// What a host gives the phone: a screen to look at, hands on the keys, a clock, and a few actions outside.
///
/// The phone calls its host, never the other way round: a host hands its input over from inside WaitForInput, through
/// the operations of phone.h. Everything is called on the user-interface thread unless it says otherwise.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace phone {

/// The composed screen: rows from the top, 0x00RRGGBB in each pixel, the top byte meaningless.
struct ScreenImage {
  const std::uint32_t* pixels;
  int width;   ///< px
  int height;  ///< px
  int stride;  ///< pixels from one row to the next
};

enum class Cursor { none, wait };

enum class Operation : std::uint8_t;

/// What became of something that the program asked the phone to do and of which its screen may say nothing.
struct Outcome {
  Operation operation;  ///< of system/faults.h
  std::string name;     ///< UTF-8: the phone's path, or the value of the registry
  std::uint32_t error;  ///< of winerror.h; 0: it was done, as is told of documents that are saved
};

class Host {
 public:
  virtual ~Host() = default;

  /// The clock in milliseconds, never 0 at the start, wrapping after 2^32. Any thread.
  virtual std::uint32_t TickCount() = 0;
  /// True for a clock that moves only when told; then nobody waits for real.
  virtual bool ClockIsManual() const = 0;
  /// For a manual clock: every thread of the program sleeps or waits and only time can help. Any thread.
  virtual void MoveClockTo(std::uint32_t tick) = 0;

  /// True when a frame may be painted now. Asked only while something is invalid and the queue is empty.
  virtual bool FrameIsDue() = 0;
  /// Nothing is left to do: waits for input, hands it over and returns; returns also after Wake, and when a frame that
  /// was refused becomes due. `waiting_for_frame` tells that something is invalid.
  virtual void WaitForInput(bool waiting_for_frame) = 0;
  /// Makes the running or the next WaitForInput return. Any thread.
  virtual void Wake() = 0;

  /// The screen looks different now. The pixels stay valid until the next call into the phone.
  virtual void Present(const ScreenImage& screen) = 0;
  virtual void ShowCursor(Cursor cursor) = 0;
  /// The program has left the foreground (back navigation), or was brought to the front by a second start.
  virtual void LeaveForeground() = 0;
  virtual void ComeToForeground() = 0;
  /// The text on the desktop's clipboard, empty when there is none; and a text to put there.
  virtual std::u16string ClipboardText() { return {}; }
  virtual void SetClipboardText(std::u16string_view) {}
  /// The main window is going away; what the program still does, waiting for its worker, needs no screen.
  virtual void WindowGone() {}
  /// The phone has refused something, for a cause of this machine's and not for one that a script asked for, or has
  /// saved a document. Any thread.
  virtual void Report(const Outcome&) {}
  /// Opens a document that the program wants shown: `program` is the viewer's path on the phone, `document` the file's
  /// path on this machine or the web address; a page that is not there is asked for too, and what leads nowhere on the
  /// phone is empty. False when it cannot be opened, which is reported as well.
  virtual bool OpenDocument(const std::string& program, const std::string& document) = 0;
};

}  // namespace phone
