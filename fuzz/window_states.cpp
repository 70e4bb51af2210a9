// What the desktop program remembers of its window: what is read is written so that it reads the same.

#include "fuzz/fuzzing.h"
#include "hosts/sdl/window_state.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto state = sdl::ParseWindowState(fuzzing::TextOf(data, size));
  if (!state) return 0;
  const auto again = sdl::ParseWindowState(sdl::FormatWindowState(*state));
  fuzzing::Require(again && *again == *state, "what is written reads the same");
  return 0;
}
