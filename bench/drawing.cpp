// The blits and one row's text, beside bare pixman.

#include <pixman.h>

#include <memory>
#include <string>
#include <vector>

#include "base/gdi_owner.h"
#include "graphics/context.h"
#include "graphics/face.h"
#include "support/compare.h"
#include "support/layouts.h"
#include "support/program.h"
#include "visuals/image_visual.h"
#include "visuals/text_visual.h"

namespace {

using namespace bench;

constexpr int kSamples = 15;
constexpr int kManyPixels = 5'000;  // from here on the calls' own cost must not count any more
constexpr double kManyPixelsBound = 1.1;
constexpr double kFewPixelsBound = 1.3;

struct Release {
  void operator()(pixman_image_t* image) const { pixman_image_unref(image); }
};
using Image = std::unique_ptr<pixman_image_t, Release>;

enum class Call { copy, stretch, blend };

/// A picture of the program as it is drawn on a screen of that size.
struct Drawing {
  const char* name;
  Call call;
  LPCWSTR picture;
  int x, y, width, height;  // px, the target
  int screen_width, screen_height;
  BYTE opacity;
};

constexpr Drawing kDrawings[] = {
    {"BitBlt 240x278, the frame", Call::copy, TEXT("bg"), 0, 0, 240, 278, 240, 278, 255},
    {"BitBlt 320x198, the frame", Call::copy, TEXT("bg"), 0, 0, 320, 198, 320, 198, 255},
    {"StretchBlt 240x320, the About picture", Call::stretch, TEXT("about"), 0, 0, 240, 320, 240, 320, 255},
    {"StretchBlt 320x198, the About picture", Call::stretch, TEXT("about"), 0, 0, 320, 198, 320, 198, 255},
    {"StretchBlt 320x240, the About picture", Call::stretch, TEXT("aboutL"), 0, 0, 320, 240, 320, 240, 255},
    {"AlphaBlend 220x27, a selection bar", Call::blend, TEXT("pItem"), 11, 37, 220, 27, 240, 278, 255},
    {"AlphaBlend 220x27, a bar that fades", Call::blend, TEXT("pItem"), 11, 37, 220, 27, 240, 278, 120},
    {"AlphaBlend 300x27, a selection bar", Call::blend, TEXT("pItem"), 11, 37, 300, 27, 320, 198, 255},
    {"AlphaBlend 240x57, the top bar", Call::blend, TEXT("pTop"), 0, 0, 240, 57, 240, 278, 255},
    {"AlphaBlend 320x57, the top bar", Call::blend, TEXT("pTop"), 0, 0, 320, 57, 320, 198, 255},
    {"AlphaBlend 240x25, the bottom bar", Call::blend, TEXT("pBottom"), 0, 253, 240, 25, 240, 278, 255},
    {"AlphaBlend 320x25, the bottom bar", Call::blend, TEXT("pBottom"), 0, 173, 320, 25, 320, 198, 255},
    {"AlphaBlend 5x216, the thumb", Call::blend, TEXT("pScroll"), 233, 37, 5, 216, 240, 278, 255},
    {"AlphaBlend 5x86, the thumb", Call::blend, TEXT("pScroll"), 233, 37, 5, 86, 240, 278, 255},
};

/// A memory context with a bitmap whose pixels are at hand.
struct Canvas {
  Canvas(int width, int height) {
    BITMAPINFO description = {};
    BITMAPINFOHEADER& header = description.bmiHeader;
    header.biSize = sizeof header;
    header.biWidth = width;
    header.biHeight = -height;
    header.biPlanes = 1;
    header.biBitCount = 32;
    void* bits = nullptr;
    dc.Reset(CreateCompatibleDC(nullptr));
    bitmap.Reset(CreateDIBSection(dc.get(), &description, DIB_RGB_COLORS, &bits, nullptr, 0));
    SelectObject(dc.get(), bitmap.get());
    image.reset(pixman_image_create_bits(PIXMAN_x8r8g8b8, width, height, static_cast<std::uint32_t*>(bits), width * 4));
  }

  OwnedBitmap bitmap;
  OwnedDC dc;
  Image image;
};

/// The same pixels as a loaded picture's, for pixman.
Image PixelsOf(const BITMAP& bitmap, bool alpha) {
  const int width = bitmap.bmWidth;
  auto* const last_row = static_cast<std::uint32_t*>(bitmap.bmBits);
  std::uint32_t* const top = last_row + std::ptrdiff_t{bitmap.bmHeight - 1} * width;
  return Image(
      pixman_image_create_bits(alpha ? PIXMAN_a8r8g8b8 : PIXMAN_x8r8g8b8, width, bitmap.bmHeight, top, -width * 4));
}

void ScaleTo(pixman_image_t* image, const BITMAP& bitmap, const Drawing& drawing) {
  pixman_transform_t transform;
  pixman_transform_init_scale(&transform, pixman_int_to_fixed(bitmap.bmWidth) / drawing.width,
                              pixman_int_to_fixed(bitmap.bmHeight) / drawing.height);
  pixman_image_set_transform(image, &transform);
  pixman_image_set_filter(image, PIXMAN_FILTER_NEAREST, nullptr, 0);
}

BOOL Draw(const Drawing& drawing, HDC target, const CImageVisual& picture) {
  const HDC source = picture.memoryDC.get();
  const BITMAP& from = picture.bitmapInfo;
  switch (drawing.call) {
    case Call::copy: return BitBlt(target, drawing.x, drawing.y, drawing.width, drawing.height, source, 0, 0, SRCCOPY);
    case Call::stretch:
      return StretchBlt(target, drawing.x, drawing.y, drawing.width, drawing.height, source, 0, 0, from.bmWidth,
                        from.bmHeight, SRCCOPY);
    default:
      return AlphaBlend(target, drawing.x, drawing.y, drawing.width, drawing.height, source, 0, 0, from.bmWidth,
                        from.bmHeight, {AC_SRC_OVER, 0, drawing.opacity, AC_SRC_ALPHA});
  }
}

void MeasureDrawing(benchmark::State& state, const Drawing& drawing) {
  static const Phone phone;
  WithProgram(phone.path(), [&](Program&) {
    Canvas canvas(drawing.screen_width, drawing.screen_height);
    CImageVisual picture;
    const std::u16string path = std::u16string(u"\\Program Files\\Quillmark\\GFX\\") + drawing.picture + u".png";
    if (FAILED(picture.Load(path.c_str()))) return state.SkipWithError("the picture does not load");
    picture.SetSize(drawing.height, drawing.width);
    Must(picture.Draw(canvas.dc.get(), VALUE_ABSOLUTE));

    const BITMAP& from = picture.bitmapInfo;
    const bool blends = drawing.call == Call::blend;
    const Image pixels = PixelsOf(from, blends);
    if (drawing.call != Call::copy && (from.bmWidth != drawing.width || from.bmHeight != drawing.height))
      ScaleTo(pixels.get(), from, drawing);
    const pixman_color_t opacity = {0, 0, 0, static_cast<std::uint16_t>(drawing.opacity * 257)};
    const Image mask(drawing.opacity == 255 ? nullptr : pixman_image_create_solid_fill(&opacity));
    const auto bare = [&] {
      pixman_image_composite32(blends ? PIXMAN_OP_OVER : PIXMAN_OP_SRC, pixels.get(), mask.get(), canvas.image.get(), 0,
                               0, 0, 0, drawing.x, drawing.y, drawing.width, drawing.height);
    };
    const int size = drawing.width * drawing.height;
    const int repeats = 1 + 2'000'000 / size;
    Compare(
        state, size >= kManyPixels ? kManyPixelsBound : kFewPixelsBound, repeats,
        [&] { Use(Draw(drawing, canvas.dc.get(), picture)); }, bare);
  });
}

/// A row's text as a list sets it up.
void SetUpText(CTextVisual& visual, LPCWSTR text) {
  visual.SetPosition(16, 37);
  visual.SetSize(27, 220);
  visual.SetFormat(TEXT_FORMAT, 12);
  visual.SetText(text);
  visual.SetTransparent(1);
  visual.SetColor(0xFFFFFF);
  visual.SetFontFace(TEXT("Verdana"));
}

void MeasureText(benchmark::State& state, LPCWSTR text) {
  static const Phone phone;
  WithProgram(phone.path(), [&](Program&) {
    Canvas canvas(240, 278);
    CTextVisual visual;
    SetUpText(visual, text);
    visual.Draw(canvas.dc.get());

    phone::Face* const face = phone::FindContext(canvas.dc.get())->font->face();
    const phone::Line& line = phone::CachedLine(*face, text);
    const int width = line.width;
    const int height = face->line_height;
    // The ink of the line itself: how much of a mask is empty decides what it costs.
    const Image mask(pixman_image_create_bits(PIXMAN_a8, width, height, nullptr, 0));
    pixman_image_composite32(PIXMAN_OP_SRC, line.mask.get(), nullptr, mask.get(), 0, 0, 0, 0,
                             static_cast<int>(line.ink.x), face->ascent + static_cast<int>(line.ink.y), width, height);
    const pixman_color_t white = {0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF};
    const Image color(pixman_image_create_solid_fill(&white));
    const auto bare = [&] {
      pixman_image_composite32(PIXMAN_OP_OVER, color.get(), mask.get(), canvas.image.get(), 0, 0, 0, 0, 16, 40, width,
                               height);
    };
    constexpr double kBound = 2;
    constexpr int kRepeats = 500;
    Compare(
        state, kBound, kRepeats, [&] { visual.Draw(canvas.dc.get()); }, bare);
  });
}

[[maybe_unused]] const bool registered = [] {
  for (const Drawing& drawing : kDrawings)
    AddRow(drawing.name, kSamples, [&drawing](auto& state) { MeasureDrawing(state, drawing); });
  AddRow("a row's text of 8, seen before", kSamples, [](auto& state) { MeasureText(state, TEXT("Weekends")); });
  AddRow("a row's text of 25, seen before", kSamples,
         [](auto& state) { MeasureText(state, TEXT("Mountain evening by water")); });
  return true;
}();

}  // namespace

BENCHMARK_MAIN();
