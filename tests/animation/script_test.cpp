#include "animation/script.h"

#include <gtest/gtest.h>

#include <tuple>
#include <vector>

#include "animation/easing.h"
#include "base/status.h"
#include "support/on_phone.h"
#include "visuals/visual_group.h"

namespace {

constexpr DWORD kTag = 7;

/// A group at 10, 37 of 27x220 that notes what it asks for.
class Group {
 public:
  Group() {
    group.SetInvalidateCallback(
        [](LPVOID context, DWORD reason, DWORD tag) {
          EXPECT_EQ(tag, kTag);
          static_cast<Group*>(context)->reasons.push_back(reason);
          return 1;
        },
        this);
  }

  void Queue(DWORD start, DWORD duration, DWORD property, INT to, DWORD endMode = STEP_END_COMMIT) {
    ASSERT_EQ(group.AddStep(start, duration, endMode), S_OK);
    ASSERT_EQ(group.AddTrack(group.GetValue(property, VALUE_ABSOLUTE), to, property, EASE_LINEAR), S_OK);
  }
  /// What was asked for since the last time.
  std::vector<DWORD> Reasons() { return std::exchange(reasons, {}); }

  CVisualGroup group{kTag, 10, 37, 27, 220};
  std::vector<DWORD> reasons;
};

using Reasons = std::vector<DWORD>;

TEST(Script, AStepRunsFromItsStartToTheFirstTickPastItsEnd) {
  // After so long a step of 500 ms from 37 to 64 shows this y and has committed that one.
  const std::tuple<DWORD, INT, INT> moments[] = {{0, 37, 37},   {250, 51, 37},  {499, 64, 37},       {500, 64, 37},
                                                 {501, 64, 64}, {1500, 64, 64}, {0x7FFFFFFF, 64, 64}};
  OnPhone([&](TestHost& host, const auto&) {
    for (const DWORD start : {1000u, 0xFFFFFF00u, 0xFFFFFFFFu}) {  // the latter two wrap on the way
      for (const auto& [elapsed, y, base] : moments) {
        SCOPED_TRACE(::testing::Message() << "from " << start << " after " << elapsed);
        Group drawn;
        drawn.Queue(start, 500, PROP_Y, 64);
        drawn.group.StartAnimation(0);
        host.tick = start + elapsed;
        drawn.group.Draw(nullptr, VALUE_ABSOLUTE);
        EXPECT_EQ(drawn.group.y.current, y);
        EXPECT_EQ(drawn.group.y.base, base);
        EXPECT_EQ(drawn.Reasons(), Reasons{base == y && y == 64 ? INVALIDATE_DONE : INVALIDATE_FRAME});
      }
    }
  });
}

TEST(Script, StepsRunOneAfterAnotherEachFromWhatTheLastOneLeft) {
  OnPhone([](TestHost& host, const auto&) {
    Group moved;
    moved.Queue(1000, 100, PROP_X, 20);
    moved.Queue(0, 200, PROP_X, 20);  // the same distance once more, from when its turn comes
    moved.group.FinishAnimation(FINISH_ALL);
    EXPECT_EQ(moved.group.x.current, 10) << "a script that was never started stays queued";
    moved.group.StartAnimation(1);
    host.tick = 1150;
    EXPECT_EQ(moved.group.TickAnimation(), S_OK);
    EXPECT_EQ(moved.group.firstStep->startTick, 1150u);
    EXPECT_EQ(moved.Reasons(), (Reasons{INVALIDATE_FRAME, INVALIDATE_FRAME}));
    host.tick = 1250;
    EXPECT_EQ(moved.group.TickAnimation(), S_OK);
    EXPECT_EQ(moved.group.x.current, 25);
    moved.group.FinishAnimation(FINISH_ALL);
    moved.group.FinishAnimation(FINISH_ALL);  // an idle group has nothing to finish
    EXPECT_EQ(moved.group.x.base, 30);
    EXPECT_EQ(moved.Reasons(), Reasons{INVALIDATE_DONE});
    moved.Queue(1250, 100, PROP_X, 0);
    EXPECT_EQ(moved.group.firstStep.get(), moved.group.lastStep) << "an emptied script begins anew";
  });
}

TEST(Script, TheEndModeSettlesEveryProperty) {
  const std::tuple<DWORD, INT, INT> cases[] = {{STEP_END_COMMIT, 64, 64}, {STEP_END_REVERT, 37, 37}, {0, 64, 37}};
  for (const auto& [mode, current, base] : cases) {
    Group moved;
    moved.group.extra.current = 5;  // no track drives it, yet it is settled with the rest
    moved.Queue(1000, 500, PROP_Y, 64, mode);
    moved.group.StartAnimation(0);
    moved.group.FinishAnimation(FINISH_ALL);
    EXPECT_EQ(moved.group.y.current, current);
    EXPECT_EQ(moved.group.y.base, base);
    EXPECT_EQ(moved.group.extra.current == moved.group.extra.base, mode != 0);
  }
}

TEST(Script, EachTrackOfAStepDrivesItsOwnPropertyFromItsBase) {
  OnPhone([&](TestHost& host, const auto&) {
    Group moved;
    ASSERT_EQ(moved.group.AddStep(host.tick, 100, STEP_END_COMMIT), S_OK);
    std::vector<INT> before;
    for (DWORD property = 1; property <= 128; property *= 2) {  // 128 is none of them
      ASSERT_EQ(moved.group.AddTrack(-1000, -1000 + static_cast<INT>(property * 10), property, EASE_LINEAR), S_OK);
      before.push_back(moved.group.GetValue(property, VALUE_BASE));
    }
    moved.group.StartAnimation(0);
    host.tick += 50;
    EXPECT_EQ(moved.group.TickAnimation(), S_OK);
    for (INT i = 0; i < 7; ++i) EXPECT_EQ(moved.group.GetValue(1u << i, VALUE_ABSOLUTE), before[i] + (5 << i));
    moved.group.FinishAnimation(FINISH_ALL);
    for (INT i = 0; i < 7; ++i) EXPECT_EQ(moved.group.GetValue(1u << i, VALUE_BASE), before[i] + (10 << i));
  });
}

TEST(Script, StepsWithoutTracksAndTracksWithoutDistanceEndAsWell) {
  OnPhone([](TestHost&, const auto&) {
    Group moved;
    EXPECT_EQ(moved.group.TickAnimation(), E_OUTOFMEMORY);
    EXPECT_EQ(moved.group.AddTrack(0, 1, PROP_X, EASE_LINEAR), E_OUTOFMEMORY);
    moved.group.StartAnimation(1);
    EXPECT_EQ(moved.Reasons(), Reasons{}) << "there is nothing to start";
    ASSERT_EQ(moved.group.AddStep(1000, 500, STEP_END_COMMIT), S_OK);
    moved.Queue(1000, 500, PROP_Y, 37);
    moved.group.y.current = 99;
    moved.group.StartAnimation(0);
    EXPECT_EQ(moved.group.TickAnimation(), E_OUTOFMEMORY);
    moved.group.FinishAnimation(FINISH_STEP);
    EXPECT_EQ(moved.group.animating, 1);
    moved.group.FinishAnimation(FINISH_ALL);
    EXPECT_EQ(moved.group.animating, 0);
    EXPECT_EQ(moved.group.y.current, 99);
  });
}

}  // namespace
