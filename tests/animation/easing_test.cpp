#include "animation/easing.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

TEST(Easing, EveryCurveBeginsAndEndsWhereItShould) {
  for (INT curve = EASE_LINEAR; curve <= EASE_BOUNCE_IN_OUT; ++curve) {
    for (const INT change : {27, -27, 1, 0, 1000000}) {
      for (const DWORD duration : {1u, 3u, 200u, 500u, 4000000000u}) {
        SCOPED_TRACE(::testing::Message() << "curve " << curve << " by " << change << " in " << duration);
        EXPECT_EQ(Ease(0, 12, change, duration, curve), 12);
        EXPECT_EQ(Ease(duration, 12, change, duration, curve), 12 + change);
        EXPECT_EQ(Ease(duration + 1000, 12, change, duration, curve), 12 + change) << "past its end";
      }
      EXPECT_EQ(Ease(0, 12, change, 0, curve), 12 + change) << "no duration";
    }
  }
  for (const INT unknown : {-1, 0, 17})
    for (const DWORD duration : {0u, 500u}) EXPECT_EQ(Ease(250, 12, 27, duration, unknown), 0);
}

struct Point {
  INT curve;
  DWORD elapsed;  // of 500 ms, on the way from 0 to 100
  INT value;      // worked out by hand from the curve's formula
};

const Point kPoints[] = {
    {EASE_LINEAR, 250, 50},        {EASE_LINEAR, 333, 67},  // 66.6
    {EASE_QUAD_IN, 250, 25},       {EASE_QUAD_OUT, 250, 75},
    {EASE_QUAD_IN_OUT, 125, 13},   {EASE_QUAD_IN_OUT, 375, 88},  // 12.5 and 87.5
    {EASE_EXPO_IN, 250, 3},        {EASE_EXPO_OUT, 250, 97},     // 100 / 32
    {EASE_EXPO_IN_OUT, 125, 2},    {EASE_EXPO_IN_OUT, 375, 98},  // 50 / 32
    {EASE_BACK_IN, 250, -9},       {EASE_BACK_OUT, 250, 109},    // 8.77 outside
    {EASE_BACK_IN_OUT, 125, -10},  {EASE_BACK_IN_OUT, 375, 110},
    {EASE_ELASTIC_IN, 250, -2},    {EASE_ELASTIC_OUT, 250, 102},  // 100 / 32 * sin 30 degrees
    {EASE_ELASTIC_IN_OUT, 125, 1}, {EASE_ELASTIC_IN_OUT, 375, 99},
    {EASE_BOUNCE_OUT, 100, 30},    {EASE_BOUNCE_OUT, 250, 77},  // 30.25 and 76.5625: the first and second arc
    {EASE_BOUNCE_OUT, 400, 94},    {EASE_BOUNCE_OUT, 475, 98},  // the third and fourth
    {EASE_BOUNCE_IN, 250, 23},     {EASE_BOUNCE_IN, 25, 2},     // 100 - 98.45
    {EASE_BOUNCE_IN_OUT, 125, 12}, {EASE_BOUNCE_IN_OUT, 375, 88},
};

TEST(Easing, CurvesPassThroughTheirPoints) {
  for (const Point& point : kPoints) {
    EXPECT_EQ(Ease(point.elapsed, 0, 100, 500, point.curve), point.value) << point.curve << " at " << point.elapsed;
    EXPECT_EQ(Ease(point.elapsed, 0, -100, 500, point.curve), -point.value) << "halves go away from zero both ways";
    EXPECT_EQ(Ease(point.elapsed, 1000, 100, 500, point.curve), 1000 + point.value);
  }
  EXPECT_EQ(Ease(24999, 0, 1, 50000, EASE_LINEAR), 0);
}

TEST(Easing, InAndOutMirrorEachOther) {
  constexpr DWORD kDuration = 977;
  constexpr INT kChange = 100000;
  const auto ease = [](DWORD elapsed, INT curve) { return Ease(elapsed, 0, kChange, kDuration, curve); };
  for (INT in : {EASE_QUAD_IN, EASE_EXPO_IN, EASE_BACK_IN, EASE_ELASTIC_IN, EASE_BOUNCE_IN}) {
    for (DWORD t = 1; t < kDuration; ++t) {
      EXPECT_LE(std::abs(ease(t, in) + ease(kDuration - t, in + 1) - kChange), 1) << in << " at " << t;
      EXPECT_LE(std::abs(ease(t, in + 2) + ease(kDuration - t, in + 2) - kChange), 1) << in + 2 << " at " << t;
    }
  }
}

}  // namespace
