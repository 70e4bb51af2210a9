#include "desktop/desktop_phone.h"

#include <png.h>
#include <signal.h>

#include <cstdlib>
#include <utility>

#include "support/process.h"

namespace {

constexpr int kAttempts = 300;
constexpr useconds_t kPause = 100'000;  // microseconds

/// True when every pixel of the screen is a square in the middle of the window.
bool Shows(const Picture& window, const Picture& screen, int scale) {
  const int left = (window.width - screen.width * scale) / 2;
  const int top = (window.height - screen.height * scale) / 2;
  if (left < 0 || top < 0) return false;
  for (int y = 0; y < screen.height * scale; ++y) {
    for (int x = 0; x < screen.width * scale; ++x) {
      const std::size_t shown = static_cast<std::size_t>(top + y) * window.width + left + x;
      const std::size_t wanted = static_cast<std::size_t>(y / scale) * screen.width + x / scale;
      if (window.pixels[shown] != screen.pixels[wanted]) return false;
    }
  }
  return true;
}

}  // namespace

DesktopPhone::DesktopPhone(TestDisplay& display, const PhoneFolder& folder, const std::filesystem::path& home,
                           const std::vector<std::string>& options)
    : display_(display), complaints_(home / "complaints") {
  setenv("DISPLAY", display.name().c_str(), 1);
  setenv("HOME", home.c_str(), 1);
  setenv("XDG_STATE_HOME", (home / "state").c_str(), 1);
  setenv("SDL_VIDEODRIVER", "x11", 1);
#ifdef PROGRAM_IS_SANITIZED
  // What a graphics driver leaves behind, and how its threads go about it, is not what is looked for.
  setenv("SDL_RENDER_DRIVER", "software", 1);
  setenv("SDL_FRAMEBUFFER_ACCELERATION", "0", 1);
#endif
  std::vector<std::string> words = {DESKTOP_PROGRAM, "--phone", folder.path().string()};
  words.insert(words.end(), options.begin(), options.end());
  process_ = StartProgram(words, [this](auto* actions) {
    posix_spawn_file_actions_addopen(actions, STDERR_FILENO, complaints_.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
  });
  window_ = display.WaitForWindow("quillmark");
  display.Focus(window_);
}

DesktopPhone::~DesktopPhone() {
  if (process_ > 0) End();
}

bool DesktopPhone::ComesToShow(const Picture& screen, int scale) {
  for (int attempt = 0; attempt < kAttempts; ++attempt, usleep(kPause)) {
    const std::optional<Picture> picture = display_.Look(window_);
    if (picture && Shows(*picture, screen, scale)) return true;
  }
  return false;
}

void DesktopPhone::ClickScreen(const Picture& screen, int scale, int x, int y) {
  const std::optional<Picture> window = display_.Look(window_);
  if (!window) throw std::runtime_error("the window is not shown");
  const auto place = [scale](int room, int extent, int at) { return (room - extent * scale) / 2 + at * scale; };
  display_.Click(window_, place(window->width, screen.width, x), place(window->height, screen.height, y));
}

int DesktopPhone::End(bool ask) {
  if (ask) kill(process_, SIGTERM);
  return AwaitEnd(std::exchange(process_, -1));
}

std::string DesktopPhone::Complaints() const {
  return ReadFile(complaints_);
}

Picture ReadPicture(const std::filesystem::path& file) {
  png_image image = {};
  image.version = PNG_IMAGE_VERSION;
  if (!png_image_begin_read_from_file(&image, file.c_str())) throw std::runtime_error("no picture " + file.string());
  image.format = PNG_FORMAT_RGB;
  std::vector<std::uint8_t> samples(PNG_IMAGE_SIZE(image));
  png_image_finish_read(&image, nullptr, samples.data(), 0, nullptr);
  Picture picture{static_cast<int>(image.width), static_cast<int>(image.height), {}};
  for (std::size_t at = 0; at < samples.size(); at += 3)
    picture.pixels.push_back(samples[at] << 16 | samples[at + 1] << 8 | samples[at + 2]);
  return picture;
}
