/// \file
/// Pages shown by the desktop's own viewer.
#pragma once

#include <optional>
#include <string>
#include <utility>

namespace sdl {

/// A viewer that was started.
class Viewer {
 public:
  /// Starts the desktop's viewer for a file or web address. Nothing when it cannot be started.
  static std::optional<Viewer> Open(const std::string& document);

  /// Readable once the viewer has ended; -1 when nobody can tell.
  int descriptor() const { return descriptor_; }
  /// What it was to show.
  const std::string& document() const { return document_; }
  /// The viewer has ended: forgets it. True when it says that it has shown the document.
  bool Finish();

 private:
  Viewer(int process, int descriptor, std::string document)
      : process_(process), descriptor_(descriptor), document_(std::move(document)) {}

  int process_;
  int descriptor_;
  std::string document_;
};

}  // namespace sdl
