#include "hosts/sdl/icon.h"

#include <cstdint>
#include <memory>
#include <vector>

#include "graphics/png.h"
#include "hosts/program.h"
#include "hosts/sdl/canvas.h"
#include "windows/resources.h"

namespace sdl {
namespace {

constexpr WORD kIconType = 3;

struct Picture {
  phone::PngHeader header;
  phone::Bytes file;
};

Picture LargestPicture() {
  Picture largest;
  for (const phone::Resource& resource : phone::ReadResources(hosts::ProgramResources())) {
    phone::PngHeader header;
    if (resource.type.number != kIconType || !phone::ReadPngHeader(resource.content, header)) continue;
    if (header.width > largest.header.width) largest = {header, resource.content};
  }
  return largest;
}

}  // namespace

void SetIcon(SDL_Window* window) {
  const Picture picture = LargestPicture();
  const auto [width, height, alpha] = picture.header;
  std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  if (pixels.empty() || !phone::DecodePng(picture.file, picture.header, pixels.data())) return;
  const std::unique_ptr<SDL_Surface, Destroy> surface(SDL_CreateRGBSurfaceWithFormatFrom(
      pixels.data(), width, height, 32, width * static_cast<int>(sizeof(std::uint32_t)), SDL_PIXELFORMAT_ARGB8888));
  if (surface) SDL_SetWindowIcon(window, surface.get());
}

}  // namespace sdl
