#include "windows/desktop.h"

#include <algorithm>

namespace phone {

namespace {

std::unique_ptr<Desktop> desktop;

}  // namespace

Desktop::Desktop(const Options& options)
    : client_width(std::clamp(options.client_width, kLeastClientExtent, kLargestClientExtent)),
      client_height(std::clamp(options.client_height, kLeastClientExtent, kLargestClientExtent)),
      resources(ReadResources(options.resources)),
      screen(client_width, client_height) {}

Desktop& TheDesktop() {
  return *desktop;
}

void SwitchOnDesktop(const Options& options) {
  desktop.reset();
  desktop = std::make_unique<Desktop>(options);
}

bool DesktopExists() {
  return desktop != nullptr;
}

bool OnUiThread() {
  return desktop != nullptr && desktop->ui_thread == std::this_thread::get_id();
}

}  // namespace phone
