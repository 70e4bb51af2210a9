#include "graphics/trace.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include "canvas.h"
#include "graphics/surface.h"

namespace {

TEST(DrawTrace, ListsWhatWasAskedFor) {
  phone::ResetTrace();
  phone::Surface surface(50, 50);
  const HDC window = phone::CreateSurfaceDC(surface, "window");
  Canvas buffer(50, 50);
  Canvas picture(2, 2);
  constexpr std::uint32_t kRows[] = {0x01020304, 0x05060708, 0x090A0B0C, 0x0D0E0F10};
  for (int i = 0; i < 4; ++i) picture.At(i % 2, i / 2) = kRows[i];
  EXPECT_TRUE(AlphaBlend(buffer.dc, 5, 37, 220, 27, picture.dc, 0, 0, 2, 2, {AC_SRC_OVER, 0, 128, AC_SRC_ALPHA}));
  EXPECT_FALSE(StretchBlt(buffer.dc, 1, 2, -1, 4, picture.dc, 0, 0, 2, 1, SRCCOPY));
  EXPECT_TRUE(BitBlt(window, 0, 0, 50, 50, buffer.dc, 0, 0, SRCCOPY));
  picture.Fill(2);
  SelectObject(picture.dc, picture.bitmap());
  EXPECT_TRUE(StretchBlt(buffer.dc, 1, 2, 0, 4, picture.dc, 0, 0, 2, 1, SRCCOPY));
  phone::DeleteSurfaceDC(window);
  RECT rect = {0, 0, 4, 4};
  DrawTextW(buffer.dc, u"text of a former record", -1, &rect, 36);

  const auto& records = phone::TraceRecords();
  ASSERT_EQ(4u, records.size());
  EXPECT_EQ("memory1", records[0].target);
  EXPECT_EQ("memory2", records[0].from);
  EXPECT_EQ(225, records[0].rect.right);
  EXPECT_EQ(crc32(0, reinterpret_cast<const Bytef*>(kRows), sizeof kRows), records[0].picture);
  EXPECT_EQ("window", records[1].target);
  EXPECT_FALSE(records[1].picture) << "a buffer";
  EXPECT_TRUE(records[2].picture && records[2].picture != records[0].picture) << "it was filled anew";

  phone::BeginTrace();
  EXPECT_TRUE(records.empty());
  for (int i = 0; i < 4; ++i) BitBlt(buffer.dc, 0, 0, 4, 4, picture.dc, 0, 0, SRCCOPY);
  EXPECT_EQ(u"", records[3].text);
  EXPECT_EQ(0u, records[3].format);
}

}  // namespace
