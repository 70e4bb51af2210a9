#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

#include "canvas.h"
#include "graphics/surface.h"

namespace {

constexpr UINT kCentered = DT_SINGLELINE | DT_VCENTER;

class Text : public testing::Test {
 protected:
  void SetUp() override {
    if (font_ == nullptr) font_ = MakeFont(-16);
    SelectObject(canvas_.dc, font_);
    SetTextColor(canvas_.dc, 0xFFFFFF);
    SetBkMode(canvas_.dc, TRANSPARENT);
    RECT outside = {0, -1, 1, 0};
    line_height_ = DrawTextW(canvas_.dc, u"", -1, &outside, kCentered);
    ASSERT_GT(line_height_, 16);
  }

  RECT Draw(std::u16string_view text, RECT rect, UINT format = kCentered) {
    canvas_.Fill(0);
    EXPECT_EQ(line_height_, DrawTextW(canvas_.dc, text.data(), static_cast<int>(text.size()), &rect, format));
    return canvas_.Drawn(0);
  }

  std::vector<std::uint32_t> Picture() {
    std::vector<std::uint32_t> pixels;
    for (int i = 0; i < 240 * 100; ++i) pixels.push_back(canvas_.Color(i % 240, i / 240));
    return pixels;
  }

  static inline HFONT font_ = nullptr;
  Canvas canvas_{240, 100};
  int line_height_ = 0;  // px
};

TEST_F(Text, IsCentredWithEachHalfTruncated) {
  const LONG reference = Draw(u"H", {10, 0, 230, line_height_}).top;
  constexpr LONG kPlaces[][2] = {{0, 19}, {0, 20}, {0, 21}, {8, 21}, {8, 18}, {20, 5}, {20, 27}};
  for (const auto& [top, height] : kPlaces) {
    // A rectangle lower than the line shows a part of it.
    const LONG expected = std::max(reference + top + height / 2 - line_height_ / 2, top);
    EXPECT_EQ(expected, Draw(u"H", {10, top, 230, top + height}).top) << top << ' ' << height;
  }
  EXPECT_EQ(reference + 30, Draw(u"H", {10, 30, 230, 90}, DT_SINGLELINE).top);
}

TEST_F(Text, StaysInsideItsRectangle) {
  const std::u16string text(80, u'W');
  const RECT drawn = Draw(text, {13, 8, 227, 29});
  EXPECT_GE(drawn.left, 13);
  EXPECT_EQ(227, drawn.right);
  for (const RECT rect : {RECT{-100, -5, 40, 16}, RECT{200, 90, 900, 111}, RECT{50, 50, 60, 55}}) {
    const RECT part = Draw(text, rect);
    EXPECT_TRUE(part.left < part.right && part.left >= rect.left && part.top >= rect.top && part.right <= rect.right &&
                part.bottom <= rect.bottom)
        << rect.left << ' ' << rect.top;
  }
  for (const RECT outside : {RECT{240, 0, 300, 20}, RECT{0, -30, 240, 0}, RECT{50, 50, 40, 60}, RECT{0, 9, 240, 9},
                             RECT{INT_MIN, INT_MIN, INT_MIN, INT_MAX}, RECT{INT_MAX, 0, INT_MIN, 20}})
    EXPECT_EQ(0, Draw(text, outside).right) << outside.left << ' ' << outside.top;
  EXPECT_EQ(0, Draw(text, {INT_MIN, INT_MIN, INT_MAX, INT_MAX}).right);
}

TEST_F(Text, IsTheSameDrawnTwiceAndAfterManyOthers) {
  const RECT rect = {10, 10, 230, 37};
  Draw(u"Again", rect);
  const auto first = Picture();
  Draw(u"Again", rect);
  EXPECT_EQ(first, Picture());
  for (int i = 0; i < 1500; ++i) {
    const std::u16string other = {u'#', static_cast<char16_t>(u'a' + i % 26), static_cast<char16_t>(0x4E00 + i)};
    RECT place = rect;
    DrawTextW(canvas_.dc, other.c_str(), -1, &place, kCentered);
  }
  Draw(u"Again", rect);
  EXPECT_EQ(first, Picture());
}

TEST_F(Text, OfAnyScriptIsDrawn) {
  for (const std::u16string_view text : {u"Zażółć", u"Тема", u"Ελληνικά", u"中文主题", u"日本語", u"한국어", u"مرحبا",
                                         u"שלום", u"e\u0301", u"😀", u"\xD800", u"x\xDC00y", u"\U0010FFFD"}) {
    const RECT drawn = Draw(text, {10, 10, 230, 37});
    EXPECT_GT(drawn.right - drawn.left, 4) << testing::PrintToString(std::u16string(text));
  }
  Draw(u"a\xD800", {10, 10, 230, 37});
  const auto replaced = Picture();
  Draw(u"a\xFFFD", {10, 10, 230, 37});
  EXPECT_EQ(replaced, Picture());
}

TEST_F(Text, StandsAsItIs) {
  const RECT rect = {10, 10, 230, 37};
  const LONG without = Draw(u"ab", rect).right;
  EXPECT_GT(Draw(u"a&b", rect).right, without);
  const LONG with_blank = Draw(u"a b", rect).right;
  for (const auto text : {u"a\nb", u"a\tb", u"a\u2029b"}) EXPECT_EQ(with_blank, Draw(text, rect).right);
  for (const auto text : {u"", u" \n\t"}) EXPECT_EQ(0, Draw(text, rect).right);
}

TEST_F(Text, HasTheWeightColourAndBackgroundOfItsContext) {
  const RECT rect = {10, 10, 230, 37};
  const LONG regular = Draw(u"Weight", rect).right;
  for (const LONG weight : {549, 550}) {
    const HFONT font = MakeFont(-16, weight);
    SelectObject(canvas_.dc, font);
    EXPECT_EQ(weight >= 550, Draw(u"Weight", rect).right > regular);
    DeleteObject(font);
  }
  SelectObject(canvas_.dc, font_);
  SetTextColor(canvas_.dc, 0x0000FF);
  SetBkMode(canvas_.dc, OPAQUE);
  RECT place = rect;
  canvas_.Fill(0);
  DrawTextW(canvas_.dc, u"H", -1, &place, kCentered);
  const RECT cell = canvas_.Drawn(0);
  EXPECT_EQ(10, cell.left);
  EXPECT_EQ(10 + 27 / 2 - line_height_ / 2, cell.top);
  EXPECT_EQ(line_height_, cell.bottom - cell.top);
  EXPECT_EQ(0xFFFFFFu, canvas_.Color(cell.left, cell.top));
  bool red = false;
  for (LONG x = cell.left; x < cell.right; ++x) red = red || canvas_.Color(x, cell.top + 9) == 0xFF0000;
  EXPECT_TRUE(red);
}

TEST_F(Text, RefusesWhatIsNotACall) {
  RECT rect = {0, 0, 100, 20};
  EXPECT_EQ(0, DrawTextW(canvas_.dc, nullptr, -1, &rect, kCentered));
  EXPECT_EQ(0, DrawTextW(canvas_.dc, u"x", -1, nullptr, kCentered));
  EXPECT_EQ(0, DrawTextW(canvas_.dc, u"x", -2, &rect, kCentered));
  EXPECT_EQ(nullptr, CreateFontIndirectW(nullptr));
  for (const LONG height : {0, 1, INT_MAX, INT_MIN}) {
    const HFONT font = MakeFont(height, 0, u"No such face");
    SelectObject(canvas_.dc, font);
    EXPECT_GT(DrawTextW(canvas_.dc, u"x", -1, &rect, kCentered), 0);
    DeleteObject(font);
  }
}

TEST(SurfaceText, ScrollsAsFarAsTheLineGoes) {
  const std::u16string text(2000, u'W');
  const phone::LineStyle style;
  const int width = phone::MeasureLine(text, style);
  phone::Surface surface(60, 20);
  const RECT all = {0, 0, 60, 20};
  for (const int scroll : {0, 3000, 9000, width - 60, width + 1}) {
    surface.Fill(all, 0);
    phone::DrawLine(surface, all, text, style, scroll);
    int lit = 0;
    for (int i = 0; i < 60 * 20; ++i) lit += (surface.pixels()[i] & 0xFFFFFF) != 0;
    EXPECT_EQ(scroll <= width, lit > 100) << scroll;
  }
}

TEST(SurfaceText, PutsTheCaretBetweenCharacters) {
  const phone::LineStyle style;
  const auto carets = [&style](std::u16string_view text) {
    std::vector<int> places;
    for (std::size_t i = 0; i <= text.size(); ++i) places.push_back(phone::CaretPosition(text, i, style));
    return places;
  };
  const std::vector<int> plain = carets(u"abc");
  ASSERT_EQ(4u, plain.size());
  EXPECT_EQ(0, plain[0]);
  EXPECT_TRUE(plain[0] < plain[1] && plain[1] < plain[2] && plain[2] < plain[3]);
  EXPECT_EQ(phone::MeasureLine(u"abc", style), plain[3]);

  for (const std::u16string_view one : {u"e\u0301x", u"\U0001F600x"}) {
    const std::vector<int> places = carets(one);
    ASSERT_EQ(4u, places.size());
    EXPECT_EQ(places[0], places[1]);
    EXPECT_TRUE(places[1] < places[2] && places[2] < places[3]);
  }
  const std::vector<int> hebrew = carets(u"שלו");
  EXPECT_TRUE(hebrew[0] > hebrew[1] && hebrew[1] > hebrew[2] && hebrew[2] > hebrew[3]);
  EXPECT_EQ(0, hebrew[3]);
  EXPECT_EQ(std::vector<int>{0}, carets(u""));
  EXPECT_EQ(4u, carets(u"\xDC00\xD800\x1").size());
}

}  // namespace
