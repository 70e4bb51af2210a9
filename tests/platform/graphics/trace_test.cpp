#include "graphics/trace.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <sstream>
#include <string>

#include "canvas.h"
#include "graphics/surface.h"

namespace {

std::string Described(const phone::DrawRecord& r) {
  constexpr const char* kKinds[] = {"BitBlt", "StretchBlt", "AlphaBlend", "DrawText"};
  std::ostringstream out;
  out << kKinds[static_cast<int>(r.kind)] << ' ' << r.target << ' ' << r.rect.left << ',' << r.rect.top << ','
      << r.rect.right << ',' << r.rect.bottom << ' ';
  if (r.kind == phone::DrawKind::DrawText) {
    out << std::string(r.text.begin(), r.text.end()) << ' ' << std::string(r.face.begin(), r.face.end()) << ' '
        << r.size << ' ' << r.weight << ' ' << r.color << (r.transparent ? " transparent " : " opaque ") << r.format;
  } else {
    out << r.from << ' ' << r.source_width << 'x' << r.source_height << ' '
        << (r.picture ? std::to_string(*r.picture) : "none") << ' ' << r.alpha << ' ' << r.alpha_format;
  }
  return out.str();
}

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

  const auto sum = crc32(crc32(0, nullptr, 0), reinterpret_cast<const Bytef*>(kRows), sizeof kRows);
  const auto picture_sum = std::to_string(sum);
  const std::vector<std::string> expected = {
      "AlphaBlend memory1 500,37,720,64 memory2 2x2 " + picture_sum + " 128 1",
      "StretchBlt memory1 1,2,1,6 memory2 2x1 " + picture_sum + " 0 0",
      "DrawText memory1 16,37,236,64 Plain Verdana 13 220 16777215 transparent 36",
      "BitBlt window 0,0,50,50 memory1 50x50 none 0 0"};
  std::vector<std::string> listed;
  for (const phone::DrawRecord& record : phone::TraceRecords()) listed.push_back(Described(record));
  EXPECT_EQ(expected, listed);
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
