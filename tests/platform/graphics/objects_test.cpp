#include <gtest/gtest.h>

#include <climits>

#include "canvas.h"
#include "graphics/object.h"

namespace {

BITMAPINFO Description(LONG width, LONG height) {
  BITMAPINFO info = {};
  info.bmiHeader = {sizeof(BITMAPINFOHEADER), width, height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  return info;
}

HBITMAP MakeSection(const BITMAPINFO& info, void** bits = nullptr) {
  return CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, bits, nullptr, 0);
}

TEST(DibSection, LaysItsRowsAsTheHeaderSays) {
  for (const int height : {3, -3}) {
    void* bits = nullptr;
    const HBITMAP bitmap = MakeSection(Description(2, height), &bits);
    ASSERT_NE(nullptr, bits);
    static_cast<std::uint32_t*>(bits)[0] = 0x00ABCDEF;
    const HDC dc = CreateCompatibleDC(nullptr);
    SelectObject(dc, bitmap);
    Canvas seen(2, 3);
    ASSERT_TRUE(BitBlt(seen.dc, 0, 0, 2, 3, dc, 0, 0, SRCCOPY));
    EXPECT_EQ(0xABCDEFu, seen.Color(0, height > 0 ? 2 : 0));
    BITMAP answer = {};
    EXPECT_EQ(static_cast<int>(sizeof answer), GetObjectW(bitmap, sizeof answer, &answer));
    EXPECT_EQ(2, answer.bmWidth);
    EXPECT_EQ(3, answer.bmHeight);
    EXPECT_EQ(8, answer.bmWidthBytes);
    EXPECT_EQ(32, answer.bmBitsPixel);
    EXPECT_EQ(bits, answer.bmBits);
    EXPECT_EQ(0, GetObjectW(bitmap, sizeof answer - 1, &answer));
    DeleteDC(dc);
    DeleteObject(bitmap);
  }
}

TEST(DibSection, RefusesAbsurdSizesAndOtherFormats) {
  constexpr LONG kSizes[][2] = {{0, 1},     {1, 0},      {-1, 1},        {1, INT_MIN},
                                {32768, 1}, {1, -32768}, {32767, 32767}, {INT_MAX, INT_MAX}};
  for (const auto& size : kSizes) {
    int untouched = 0;
    void* bits = &untouched;
    EXPECT_EQ(nullptr, MakeSection(Description(size[0], size[1]), &bits)) << size[0] << 'x' << size[1];
    EXPECT_EQ(nullptr, bits);
    EXPECT_EQ(nullptr, CreateCompatibleBitmap(nullptr, size[0], size[1] > 0 ? size[1] : 0));
  }
  BITMAPINFO shallow = Description(1, 1);
  shallow.bmiHeader.biBitCount = 16;
  EXPECT_EQ(nullptr, MakeSection(shallow));
}

TEST(Objects, LiveInTheContextAfterTheyAreDeleted) {
  const std::size_t handles = phone::OpenHandles();
  Canvas seen(40, 40);
  const HDC dc = CreateCompatibleDC(seen.dc);
  const HBITMAP bitmap = CreateCompatibleBitmap(dc, 40, 40);
  const HGDIOBJ first = SelectObject(dc, bitmap);
  const HFONT font = MakeFont(-16);
  SelectObject(dc, font);
  EXPECT_TRUE(DeleteObject(bitmap));
  EXPECT_TRUE(DeleteObject(font));
  EXPECT_FALSE(DeleteObject(bitmap));
  EXPECT_FALSE(DeleteObject(font));
  EXPECT_EQ(nullptr, SelectObject(seen.dc, bitmap));

  RECT rect = {0, 0, 40, 40};
  SetTextColor(dc, 0xFFFFFF);
  SetBkMode(dc, TRANSPARENT);
  EXPECT_LT(0, DrawTextW(dc, u"M", -1, &rect, DT_SINGLELINE));
  EXPECT_TRUE(BitBlt(seen.dc, 0, 0, 40, 40, dc, 0, 0, SRCCOPY));
  EXPECT_GT(seen.Drawn(0).bottom, 0);

  EXPECT_EQ(static_cast<HGDIOBJ>(bitmap), SelectObject(dc, first));
  EXPECT_TRUE(DeleteDC(dc));
  EXPECT_FALSE(DeleteDC(dc));
  EXPECT_EQ(handles + 2, phone::OpenHandles());
}

TEST(Objects, FontsOfOneRequestShareAHandle) {
  const HFONT first = MakeFont(-16);
  const std::size_t handles = phone::OpenHandles();
  const HFONT second = MakeFont(-16);
  EXPECT_EQ(handles, phone::OpenHandles());
  EXPECT_NE(first, MakeFont(-17));
  EXPECT_TRUE(DeleteObject(first));
  Canvas canvas(4, 4);
  EXPECT_NE(nullptr, SelectObject(canvas.dc, second));
  EXPECT_TRUE(DeleteObject(second));
  EXPECT_FALSE(DeleteObject(second));
  EXPECT_TRUE(DeleteObject(MakeFont(-17)));
}

TEST(Objects, AreFoundByGoodHandlesOnly) {
  const HDC stale = CreateCompatibleDC(nullptr);
  DeleteDC(stale);
  Canvas canvas(4, 4);
  int other = 0;
  for (void* bad : {static_cast<void*>(nullptr), static_cast<void*>(stale), static_cast<void*>(&other),
                    reinterpret_cast<void*>(std::uintptr_t{0xFFFFFF})}) {
    const HDC dc = static_cast<HDC>(bad);
    RECT rect = {0, 0, 4, 4};
    EXPECT_EQ(nullptr, SelectObject(dc, canvas.bitmap()));
    EXPECT_EQ(nullptr, SelectObject(canvas.dc, bad));
    EXPECT_FALSE(DeleteDC(dc));
    EXPECT_FALSE(DeleteObject(bad));
    EXPECT_EQ(0, GetObjectW(bad, sizeof(BITMAP), nullptr));
    EXPECT_EQ(0, DrawTextW(dc, u"x", -1, &rect, DT_SINGLELINE));
    EXPECT_EQ(0, SetBkMode(dc, OPAQUE));
    EXPECT_EQ(bad == nullptr, DeleteDC(CreateCompatibleDC(dc)) == TRUE);
  }
  EXPECT_FALSE(DeleteObject(canvas.dc));
  EXPECT_NE(nullptr, GetStockObject(WHITE_BRUSH));
  EXPECT_TRUE(DeleteObject(GetStockObject(WHITE_BRUSH)));
  EXPECT_NE(nullptr, GetStockObject(WHITE_BRUSH));
}

}  // namespace
