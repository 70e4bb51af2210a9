#include "visuals/text_visual.h"

#include <gtest/gtest.h>

#include <tuple>

#include "base/status.h"
#include "graphics/trace.h"
#include "support/on_phone.h"
#include "system/faults.h"

namespace {

using phone::Operation;

/// Runs a body with a caption of 27x220 at 10, 5.
void WithCaption(const std::function<void(CTextVisual& caption, HDC dc)>& body) {
  OnPhone([&](TestHost&, const auto&) {
    const OwnedDC dc(CreateCompatibleDC(nullptr));
    const OwnedBitmap target(CreateCompatibleBitmap(dc.get(), 240, 40));
    SelectObject(dc.get(), target.get());
    CTextVisual caption;
    caption.SetPosition(10, 5);
    caption.SetSize(27, 220);
    caption.SetFormat(TEXT_FORMAT, 12);
    caption.SetText(TEXT("Caption"));
    caption.SetTransparent(1);
    caption.SetColor(0xFFFFFF);
    caption.SetFontFace(TEXT("Verdana"));
    caption.SetInset(3);
    phone::BeginTrace();
    body(caption, dc.get());
  });
}

TEST(TextVisual, DrawsItsTextInsideItsInset) {
  WithCaption([](CTextVisual& caption, HDC dc) {
    caption.Draw(dc);
    ASSERT_EQ(phone::TraceRecords().size(), 1u);
    const phone::DrawRecord& record = phone::TraceRecords()[0];
    const RECT& rect = record.rect;
    EXPECT_EQ(std::tuple(rect.left, rect.top, rect.right, rect.bottom), std::tuple(13, 8, 227, 29));
    EXPECT_EQ(record.color, 0xFFFFFFu);
    EXPECT_EQ(record.format, 36u);
    EXPECT_TRUE(record.transparent);
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
