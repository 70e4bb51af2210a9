#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <vector>

#include "canvas.h"

namespace {

constexpr std::uint32_t kWithoutAlpha = 0xFFFFFF;

enum class How { copy, stretch, blend, blend_alpha };

struct Call {
  int x, y, width, height, source_x, source_y, source_width, source_height;
};

BLENDFUNCTION Blend(int opacity, bool alpha) {
  return {AC_SRC_OVER, 0, static_cast<BYTE>(opacity), static_cast<BYTE>(alpha ? AC_SRC_ALPHA : 0)};
}

/// a * b / 255, rounded to nearest.
std::uint32_t Product(std::uint32_t a, std::uint32_t b) {
  return (2 * a * b + 255) / 510;
}

std::uint32_t Blended(std::uint32_t source, std::uint32_t target, std::uint32_t opacity, bool alpha) {
  const std::uint32_t cover = Product(alpha ? source >> 24 : 255, opacity);
  std::uint32_t result = 0;
  for (const int shift : {0, 8, 16}) {
    const std::uint32_t sum = Product(source >> shift & 255, opacity) + Product(target >> shift & 255, 255 - cover);
    result |= std::min(sum, 255u) << shift;
  }
  return result;
}

std::int64_t Nearest(std::int64_t i, std::int64_t source, std::int64_t target) {
  return (2 * i + 1) * source / (2 * target);
}

BOOL Perform(How how, Canvas& target, Canvas& source, const Call& c, int opacity) {
  const auto& [x, y, width, height, source_x, source_y, source_width, source_height] = c;
  if (how == How::copy) return BitBlt(target.dc, x, y, width, height, source.dc, source_x, source_y, SRCCOPY);
  if (how == How::stretch)
    return StretchBlt(target.dc, x, y, width, height, source.dc, source_x, source_y, source_width, source_height,
                      SRCCOPY);
  return AlphaBlend(target.dc, x, y, width, height, source.dc, source_x, source_y, source_width, source_height,
                    Blend(opacity, how == How::blend_alpha));
}

constexpr int kTargetWidth = 60;
constexpr int kTargetHeight = 50;
constexpr int kSourceWidth = 33;
constexpr int kSourceHeight = 29;

std::uint32_t Expected(How how, const Call& c, int x, int y, std::uint32_t before, Canvas& source, int opacity) {
  const std::int64_t i = std::int64_t{x} - c.x;
  const std::int64_t j = std::int64_t{y} - c.y;
  if (i < 0 || j < 0 || i >= c.width || j >= c.height) return before;
  const bool copy = how == How::copy;
  const std::int64_t sx = c.source_x + (copy ? i : Nearest(i, c.source_width, c.width));
  const std::int64_t sy = c.source_y + (copy ? j : Nearest(j, c.source_height, c.height));
  if (sx < 0 || sy < 0 || sx >= kSourceWidth || sy >= kSourceHeight) return before;
  const bool opaque = copy || how == How::stretch;
  const std::uint32_t pixel = source.At(static_cast<int>(sx), static_cast<int>(sy));
  return opaque ? pixel & kWithoutAlpha
                : Blended(pixel, before, static_cast<std::uint32_t>(opacity), how == How::blend_alpha);
}

TEST(Blit, DrawsWhatAPlainLoopDraws) {
  constexpr Call kCalls[] = {
      {0, 0, 33, 29, 0, 0, 33, 29},
      {13, 7, 20, 11, 5, 3, 20, 11},
      {-5, -9, 33, 29, 0, 0, 33, 29},
      {-17, -30, 99, 100, 0, 0, 33, 29},
      {2, 3, 33, 45, 0, 0, 33, 29},
      {1, 1, 45, 29, 0, 0, 33, 29},
      {-1000, 0, 4001, 50, 4, 6, 7, 8},
      {0, -70000, 60, 140001, 0, 0, 33, 29},
      {60, 0, 5, 5, 0, 0, 5, 5},
      {5, 5, 0, 7, 0, 0, 5, 5},
      {INT_MAX, INT_MAX, INT_MAX, INT_MAX, 0, 0, 33, 29},
      {INT_MIN, INT_MIN, INT_MAX, INT_MAX, 0, 0, 33, 29},
      {-1, -1, INT_MAX, INT_MAX, 0, 0, 33, 29},
      {0, 0, 50, 50, -2, 1, 50, 50},
      {0, 0, 50, 50, INT_MAX, INT_MIN, 50, 50},
  };
  for (const int orientation : {1, -1}) {
    for (const How how : {How::copy, How::stretch, How::blend, How::blend_alpha}) {
      for (const Call& call : kCalls) {
        Canvas source(kSourceWidth, kSourceHeight * orientation);
        Canvas target(kTargetWidth, kTargetHeight);
        Canvas before(kTargetWidth, kTargetHeight);
        source.FillWithNoise(1);
        target.FillWithNoise(2);
        before.FillWithNoise(2);
        constexpr int kOpacity = 128;
        // A copy leaves out what the source does not have; the others are refused.
        const bool refused = how != How::copy && call.source_width > kSourceWidth;
        ASSERT_EQ(!refused, Perform(how, target, source, call, kOpacity) == TRUE) << call.x << ' ' << call.width;
        if (refused) continue;
        for (int y = 0; y < kTargetHeight; ++y)
          for (int x = 0; x < kTargetWidth; ++x)
            ASSERT_EQ(Expected(how, call, x, y, before.Color(x, y), source, kOpacity), target.Color(x, y))
                << static_cast<int>(how) << " at " << x << ',' << y << " of a call at " << call.x << ',' << call.y
                << " size " << call.width << 'x' << call.height;
      }
    }
  }
}

TEST(Blit, SamplesExactlyWhateverTheSizesAndTheClip) {
  constexpr int kSizes[] = {1, 2, 3, 5, 19, 27, 57, 180, 181, 220, 239, 240, 255, 256, 319, 320};
  constexpr int kView = 100;
  for (const int from : kSizes) {
    for (const int to : kSizes) {
      Canvas source(from, 1);
      for (int x = 0; x < from; ++x) source.At(x, 0) = 0xFF000000u | static_cast<std::uint32_t>(x + 1);
      for (const int shift : {0, to / 3, std::max(0, to - kView)}) {
        Canvas target(kView, 1);
        ASSERT_TRUE(AlphaBlend(target.dc, -shift, 0, to, 1, source.dc, 0, 0, from, 1, Blend(255, true)));
        for (int x = 0; x < std::min(kView, to - shift); ++x)
          ASSERT_EQ(Nearest(x + shift, from, to) + 1, target.Color(x, 0)) << from << " to " << to << " at " << x;
      }
    }
  }
}

TEST(Blit, BlendsEveryProductRoundedToNearest) {
  constexpr int kLevels = 256;
  Canvas source(kLevels, kLevels);
  Canvas target(kLevels, kLevels);
  for (const int opacity : {0, 1, 127, 128, 254, 255}) {
    for (int quarter = -1; quarter <= 4; ++quarter) {
      const bool alpha = quarter >= 0;
      const auto gray = [](int level) { return static_cast<std::uint32_t>(level) * 0x010101; };
      for (int i = 0; i < kLevels * kLevels; ++i) {
        const int x = i % kLevels;
        const int cover = x + (255 - x) * std::max(quarter, 0) / 4;
        source.At(x, i / kLevels) = static_cast<std::uint32_t>(cover) << 24 | gray(x);
        target.At(x, i / kLevels) = gray(i / kLevels);
      }
      ASSERT_TRUE(
          Perform(alpha ? How::blend_alpha : How::blend, target, source, {0, 0, 256, 256, 0, 0, 256, 256}, opacity));
      for (int y = 0; y < kLevels; ++y)
        for (int x = 0; x < kLevels; ++x)
          ASSERT_EQ(Blended(source.At(x, y), gray(y), static_cast<std::uint32_t>(opacity), alpha), target.Color(x, y))
              << x << " on " << y << " at " << opacity << ", quarter " << quarter;
    }
  }
}

TEST(Blit, MovesAndScalesWithinOneBitmap) {
  constexpr Call kMoves[] = {{3, 4, 20, 20, 0, 0, 20, 20}, {0, 0, 20, 20, 3, 4, 20, 20}, {5, 0, 20, 20, 0, 0, 20, 20}};
  for (const How how : {How::copy, How::stretch, How::blend}) {
    for (const Call& move : kMoves) {
      Canvas canvas(30, 30);
      Canvas before(30, 30);
      canvas.FillWithNoise(3);
      before.FillWithNoise(3);
      constexpr int kOpaque = 255;
      ASSERT_TRUE(Perform(how, canvas, canvas, move, kOpaque));
      for (int y = 0; y < 20; ++y)
        for (int x = 0; x < 20; ++x)
          ASSERT_EQ(before.Color(move.source_x + x, move.source_y + y), canvas.Color(move.x + x, move.y + y));
    }
  }
}

TEST(Blit, RefusesWhatIsNotACall) {
  Canvas source(4, 4);
  Canvas target(4, 4);
  constexpr Call kRefused[] = {{0, 0, -1, 2, 0, 0, 4, 4}, {0, 0, 0, -1, 0, 0, 4, 4},
                               {0, 0, 2, 2, 1, 0, 4, 4},  {0, 0, 2, 2, -1, 0, 4, 4},
                               {0, 0, 2, 2, 0, 0, 0, 4},  {0, 0, 2, 2, INT_MAX, 0, INT_MAX, 4}};
  for (const Call& call : kRefused) EXPECT_FALSE(Perform(How::stretch, target, source, call, 255)) << &call - kRefused;
  EXPECT_FALSE(BitBlt(target.dc, 0, 0, 2, -2, source.dc, 0, 0, SRCCOPY));
  EXPECT_FALSE(BitBlt(target.dc, 0, 0, 2, 2, source.dc, 0, 0, SRCCOPY + 1));
  EXPECT_FALSE(BitBlt(target.dc, 0, 0, 2, 2, nullptr, 0, 0, SRCCOPY));
  EXPECT_FALSE(BitBlt(reinterpret_cast<HDC>(source.bitmap()), 0, 0, 2, 2, source.dc, 0, 0, SRCCOPY));
}

}  // namespace
