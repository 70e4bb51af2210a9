#include "visuals/text_visual.h"

#include "on_canvas.h"

namespace {

using phone::Operation;

/// Runs a body with a caption of 27x220 at 10, 5.
void WithCaption(const std::function<void(CTextVisual& caption, HDC dc)>& body) {
  OnCanvas([&](HDC dc, const auto&) {
    CTextVisual caption;
    caption.SetPosition(10, 5);
    caption.SetSize(27, 220);
    caption.SetFormat(TEXT_FORMAT, 12);
    caption.SetText(TEXT("Caption"));
    caption.SetTransparent(1);
    caption.SetColor(0xFFFFFF);
    caption.SetFontFace(TEXT("Verdana"));
    caption.SetInset(3);
    body(caption, dc);
  });
}

TEST(TextVisual, ItsFontFollowsItsHeightAndIsMadeOncePerSize) {
  struct {
    INT height, width, pixels, weight, fonts;
  } const frames[] = {{27, 220, 16, 220, 1}, {27, 100, 16, 220, 0}, {26, 100, 15, 100, 1},
                      {25, 90, 15, 100, 0},  {20, 220, 11, 220, 1}, {4, 220, 1, 220, 1}};
  WithCaption([&](CTextVisual& caption, HDC dc) {
    for (const auto& frame : frames) {
      const std::uint64_t before = phone::CallCount(Operation::CreateFontIndirectW);
      caption.SetSize(frame.height, frame.width);
      caption.Draw(dc);
      EXPECT_EQ(phone::TraceRecords().back().size, frame.pixels) << frame.height;
      EXPECT_EQ(phone::TraceRecords().back().weight, frame.weight) << frame.height;
      EXPECT_EQ(phone::CallCount(Operation::CreateFontIndirectW) - before, static_cast<std::uint64_t>(frame.fonts));
    }
    EXPECT_EQ(phone::TraceRecords()[0].rect.left, 13);
    EXPECT_EQ(phone::TraceRecords()[0].rect.bottom, 29);
    EXPECT_EQ(phone::TraceRecords()[0].format, 36u);
    phone::BeginTrace();
    caption.SetSize(3, 220);
    caption.Draw(dc);
    EXPECT_TRUE(phone::TraceRecords().empty());
  });
}

TEST(TextVisual, AFailedFontIsNotTriedAgainUntilTheSizeChanges) {
  WithCaption([](CTextVisual& caption, HDC dc) {
    phone::SetFault(Operation::CreateFontIndirectW, 1, 0);
    caption.Draw(dc);
    caption.Draw(dc);
    EXPECT_FALSE(caption.font);
    EXPECT_EQ(phone::TraceRecords().size(), 2u) << "the text is drawn with the font there is";
    caption.SetSize(20, 220);
    caption.Draw(dc);
    EXPECT_TRUE(caption.font);
  });
}

}  // namespace
