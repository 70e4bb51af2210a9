#include "hosts/sdl/folder_question.h"

#include <cstdint>
#include <optional>
#include <vector>

#include "hosts/program.h"
#include "hosts/sdl/overlays.h"
#include "hosts/sdl/window.h"
#include "phone.h"

namespace sdl {
namespace {

/// The answer that an event gives, if any.
void HandleEvent(const SDL_Event& event, Window& window, Overlays& overlays, std::optional<bool>& answer) {
  switch (event.type) {
    case SDL_QUIT: answer = false; break;
    case SDL_KEYDOWN: overlays.TakeKey(event.key.keysym.sym); break;
    case SDL_MOUSEBUTTONDOWN: overlays.TakeClick(window.ToPixels(event.button.x, event.button.y)); break;
    case SDL_WINDOWEVENT:
      window.HandleEvent(event.window);
      overlays.Draw();
      break;
    default: break;
  }
}

}  // namespace

bool MayUseForeignFolder(const std::filesystem::path& folder, const WindowState& wanted) {
  const hosts::ClientSize client = hosts::ClientSizeByName(NameOf(wanted.screen)).value_or(hosts::ClientSize{});
  const int height = client.height + phone::kTitleStripHeight + phone::kSoftKeyBarHeight;
  const std::vector<std::uint32_t> dark(static_cast<std::size_t>(client.width) * static_cast<std::size_t>(height));
  Window window(wanted);
  if (!window.Show({dark.data(), client.width, height, client.width})) return false;
  Overlays overlays(window);
  std::optional<bool> answer;
  overlays.Ask("The folder " + folder.string() + " has files, but none of a phone's. Use it as a phone?", "Use (Enter)",
               "Leave (Esc)", [&](bool yes) { answer = yes; });
  SDL_Event event;
  while (!answer && SDL_WaitEvent(&event)) HandleEvent(event, window, overlays, answer);
  return answer.value_or(false);
}

}  // namespace sdl
