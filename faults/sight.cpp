#include "faults/sight.h"

#include <zlib.h>

#include "phone.h"

namespace faults {
namespace {

using script::Reply;

Reply Take(Reply& state, const char* name) {
  Reply value = std::move(state[name]);
  state.erase(name);
  return value;
}

/// The whole screen is a person's; what is drawn where between the buffers is the program's own affair.
Reply FrameDrawn() {
  Reply frame = Reply::array();
  for (Reply& call : script::DescribeDrawing()) {
    call.erase("target");
    call.erase("from");
    frame.push_back(std::move(call));
  }
  return frame;
}

std::uint32_t Checksum(const phone::ScreenImage& screen) {
  uLong sum = crc32(0, nullptr, 0);
  for (int row = 0; row < screen.height; ++row) {
    const std::uint32_t* const pixels = screen.pixels + static_cast<std::ptrdiff_t>(row) * screen.stride;
    sum = crc32(sum, reinterpret_cast<const Bytef*>(pixels), static_cast<uInt>(screen.width) * sizeof *pixels);
  }
  return static_cast<std::uint32_t>(sum);
}

}  // namespace

Sight LookAround(const std::filesystem::path& folder) {
  script::ManualClock clock(0);
  script::Frames frames;
  const std::optional<script::Ending> running;
  script::Execution execution{clock, frames, running, {}, {}};
  Sight sight;
  script::DescribeState(execution, sight.look);
  for (const char* const name : {"tick", "calls", "exit"}) sight.look.erase(name);
  sight.invalid = Take(sight.look, "invalid").get<bool>();
  sight.box = Take(sight.look, "box");
  for (const char* const name : {"cursor", "worker"}) sight.work[name] = Take(sight.look, name);
  for (const char* const name : {"broadcasts", "launched", "registry_writes"})
    sight.outside[name] = Take(sight.look, name);
  sight.frame = FrameDrawn();
  sight.pixels = Checksum(phone::Screen());
  sight.files = ReadFiles(folder);
  return sight;
}

std::vector<std::string> TextsOf(const Reply& frame) {
  std::vector<std::string> texts;
  for (const Reply& call : frame)
    if (call.contains("text") && call["text"] != "") texts.push_back(call["text"]);
  return texts;
}

std::vector<std::string> PicturesOf(const Reply& frame) {
  std::vector<std::string> pictures;
  for (const Reply& call : frame)
    if (call.contains("picture")) pictures.push_back(call["picture"]);
  return pictures;
}

}  // namespace faults
