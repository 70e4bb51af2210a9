#include "graphics/trace.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include "canvas.h"
#include "graphics/surface.h"

namespace {

class DrawTrace : public testing::Test {
 protected:
  void SetUp() override {
    phone::ResetTrace();
    phone::EnableTrace(true);
  }
  void TearDown() override { phone::EnableTrace(true); }
};

TEST_F(DrawTrace, ListsWhatWasAskedFor) {
  phone::Surface surface(50, 50);
  const HDC window = phone::CreateSurfaceDC(surface, "window");
  Canvas buffer(50, 50);
  Canvas picture(2, 2);
  constexpr std::uint32_t kRows[] = {0x01020304, 0x05060708, 0x090A0B0C, 0x0D0E0F10};
  for (int i = 0; i < 4; ++i) picture.At(i % 2, i / 2) = kRows[i];

  EXPECT_TRUE(AlphaBlend(buffer.dc, 500, 37, 220, 27, picture.dc, 0, 0, 2, 2, {AC_SRC_OVER, 0, 128, AC_SRC_ALPHA}));
  EXPECT_TRUE(StretchBlt(buffer.dc, 1, 2, 0, 4, picture.dc, 0, 0, 2, 1, SRCCOPY));
  EXPECT_FALSE(StretchBlt(buffer.dc, 1, 2, -1, 4, picture.dc, 0, 0, 2, 1, SRCCOPY));
  const HFONT font = MakeFont(-13, 220);
  SelectObject(buffer.dc, font);
  SetTextColor(buffer.dc, 0xFFFFFF);
  SetBkMode(buffer.dc, TRANSPARENT);
  RECT rect = {16, 37, 236, 64};
  DrawTextW(buffer.dc, u"Plain", -1, &rect, 36);
  DeleteObject(font);
  EXPECT_TRUE(BitBlt(window, 0, 0, 50, 50, buffer.dc, 0, 0, SRCCOPY));

  const std::vector<phone::DrawRecord>& records = phone::TraceRecords();
  ASSERT_EQ(4u, records.size());
  EXPECT_EQ(phone::DrawKind::AlphaBlend, records[0].kind);
  EXPECT_EQ("memory1", records[0].target);
  EXPECT_EQ("memory2", records[0].from);
  EXPECT_EQ(500, records[0].rect.left);
  EXPECT_EQ(720, records[0].rect.right);
  EXPECT_EQ(64, records[0].rect.bottom);
  EXPECT_EQ(2, records[0].source_width);
  EXPECT_EQ(128, records[0].alpha);
  EXPECT_EQ(1, records[0].alpha_format);
  const auto sum = crc32(crc32(0, nullptr, 0), reinterpret_cast<const Bytef*>(kRows), sizeof kRows);
  EXPECT_EQ(sum, records[0].picture.value_or(0));
  EXPECT_EQ(phone::DrawKind::StretchBlt, records[1].kind);
  EXPECT_EQ(1, records[1].source_height);
  EXPECT_EQ(phone::DrawKind::DrawText, records[2].kind);
  EXPECT_EQ(u"Plain", records[2].text);
  EXPECT_EQ(u"Verdana", records[2].face);
  EXPECT_EQ(13, records[2].size);
  EXPECT_EQ(220, records[2].weight);
  EXPECT_EQ(0xFFFFFFu, records[2].color);
  EXPECT_TRUE(records[2].transparent);
  EXPECT_EQ(36u, records[2].format);
  EXPECT_EQ(236, records[2].rect.right);
  EXPECT_EQ(phone::DrawKind::BitBlt, records[3].kind);
  EXPECT_EQ("window", records[3].target);
  EXPECT_EQ("memory1", records[3].from);
  EXPECT_FALSE(records[3].picture.has_value());
  phone::DeleteSurfaceDC(window);
}

TEST_F(DrawTrace, KnowsAPictureThatWasFilledAnew) {
  Canvas target(4, 4);
  Canvas picture(1, 1);
  picture.Fill(1);
  BitBlt(target.dc, 0, 0, 1, 1, picture.dc, 0, 0, SRCCOPY);
  picture.Fill(2);
  SelectObject(picture.dc, picture.bitmap());
  BitBlt(target.dc, 0, 0, 1, 1, picture.dc, 0, 0, SRCCOPY);
  const auto& records = phone::TraceRecords();
  ASSERT_EQ(2u, records.size());
  EXPECT_NE(records[0].picture, records[1].picture);
}

TEST_F(DrawTrace, BeginsEachFrameEmptyAndIsSilentWhileOff) {
  Canvas a(4, 4);
  Canvas b(4, 4);
  RECT rect = {0, 0, 4, 4};
  DrawTextW(a.dc, u"text of a former record", -1, &rect, 36);
  phone::BeginTrace();
  EXPECT_TRUE(phone::TraceRecords().empty());
  BitBlt(a.dc, 0, 0, 4, 4, b.dc, 0, 0, SRCCOPY);
  ASSERT_EQ(1u, phone::TraceRecords().size());
  EXPECT_EQ(u"", phone::TraceRecords()[0].text);
  EXPECT_EQ(0u, phone::TraceRecords()[0].format);
  phone::EnableTrace(false);
  BitBlt(a.dc, 0, 0, 4, 4, b.dc, 0, 0, SRCCOPY);
  EXPECT_TRUE(phone::TraceRecords().empty());
}

}  // namespace
