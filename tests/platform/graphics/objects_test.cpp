#include <gtest/gtest.h>

#include <climits>

#include "canvas.h"
#include "graphics/object.h"

namespace {

TEST(DibSection, RefusesAbsurdSizes) {
  constexpr LONG kSizes[][2] = {{0, 1},     {1, 0},      {-1, 1},        {1, INT_MIN},
                                {32768, 1}, {1, -32768}, {32767, 32767}, {INT_MAX, INT_MAX}};
  for (const auto& size : kSizes) {
    int untouched = 0;
    void* bits = &untouched;
    BITMAPINFO info = {};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), size[0], size[1], 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    EXPECT_EQ(nullptr, CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0))
        << size[0] << 'x' << size[1];
    EXPECT_EQ(nullptr, bits);
    EXPECT_EQ(nullptr, CreateCompatibleBitmap(nullptr, size[0], size[1] > 0 ? size[1] : 0));
  }
}

TEST(Objects, LiveInTheContextAfterTheyAreDeleted) {
  Canvas seen(40, 40);  // makes what every context has selected at first
  const std::size_t handles = phone::OpenHandles();
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
  EXPECT_EQ(handles, phone::OpenHandles());
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
    EXPECT_EQ(bad == nullptr, DeleteDC(CreateCompatibleDC(dc)) == TRUE);
  }
  EXPECT_FALSE(DeleteObject(canvas.dc));
  EXPECT_TRUE(DeleteObject(GetStockObject(WHITE_BRUSH)));
  EXPECT_NE(nullptr, GetStockObject(WHITE_BRUSH));
}

}  // namespace
