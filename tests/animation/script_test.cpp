#include "animation/script.h"

#include <gtest/gtest.h>

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

/// A step of 500 ms that moves y from 37 to 64, looked at once at each of these times after its start.
struct Moment {
  DWORD elapsed;
  INT y;
  INT base;
  bool running;
};

TEST(Script, AStepRunsFromItsStartToTheFirstTickPastItsEnd) {
  for (const DWORD start : {1000u, 0xFFFFFF00u, 0xFFFFFFFFu}) {  // the latter two wrap on the way
    for (const Moment& moment :
         {Moment{0, 37, 37, true}, Moment{250, 51, 37, true}, Moment{499, 64, 37, true}, Moment{500, 64, 37, true},
          Moment{501, 64, 64, false}, Moment{1500, 64, 64, false}, Moment{0x7FFFFFFF, 64, 64, false}}) {
      OnPhone([&](TestHost& host, const auto&) {
        SCOPED_TRACE(::testing::Message() << "from " << start << " after " << moment.elapsed);
        Group drawn;
        drawn.Queue(start, 500, PROP_Y, 64);
        drawn.group.StartAnimation(0);
        EXPECT_EQ(drawn.Reasons(), Reasons{});
        host.tick = start + moment.elapsed;
        drawn.group.Draw(nullptr, VALUE_ABSOLUTE);
        EXPECT_EQ(drawn.group.y.current, moment.y);
        EXPECT_EQ(drawn.group.y.base, moment.base);
        EXPECT_EQ(drawn.group.animating != 0, moment.running);
        EXPECT_EQ(drawn.Reasons(), moment.running ? Reasons{INVALIDATE_FRAME} : Reasons{INVALIDATE_DONE});
      });
    }
  }
}

TEST(Script, StepsRunOneAfterAnotherEachFromWhatTheLastOneLeft) {
  OnPhone([](TestHost& host, const auto&) {
    Group moved;
    moved.Queue(1000, 100, PROP_X, 20);
    moved.Queue(0, 200, PROP_X, 20);  // the same distance once more, from when its turn comes
    moved.group.StartAnimation(1);
    EXPECT_EQ(moved.Reasons(), Reasons{INVALIDATE_FRAME});
    host.tick = 1150;
    EXPECT_EQ(moved.group.TickAnimation(), S_OK);
    EXPECT_EQ(moved.group.x.current, 20);
    EXPECT_EQ(moved.group.firstStep->startTick, 1150u);
    EXPECT_EQ(moved.Reasons(), Reasons{INVALIDATE_FRAME});
    host.tick = 1250;
    EXPECT_EQ(moved.group.TickAnimation(), S_OK);
    EXPECT_EQ(moved.group.x.current, 25);
    moved.group.FinishAnimation(FINISH_ALL);
    EXPECT_EQ(moved.group.x.base, 30);
    EXPECT_EQ(moved.Reasons(), Reasons{INVALIDATE_DONE});
    moved.group.FinishAnimation(FINISH_ALL);
    EXPECT_EQ(moved.Reasons(), Reasons{}) << "an idle group has nothing to finish";
    moved.Queue(1250, 100, PROP_X, 0);
    EXPECT_EQ(moved.group.firstStep.get(), moved.group.lastStep) << "an emptied script begins anew";
  });
}

TEST(Script, FinishingOneStepKeepsTheNext) {
  OnPhone([](TestHost&, const auto&) {
    Group moved;
    moved.Queue(1000, 500, PROP_X, 20);
    moved.Queue(1000, 500, PROP_Y, 40);
    moved.group.FinishAnimation(FINISH_ALL);
    EXPECT_EQ(moved.group.x.current, 10) << "a script that was never started stays queued";
    moved.group.StartAnimation(0);
    moved.group.FinishAnimation(FINISH_STEP);
    EXPECT_EQ(moved.group.x.current, 20);
    EXPECT_EQ(moved.group.y.current, 37);
    EXPECT_EQ(moved.group.animating, 1);
    EXPECT_EQ(moved.Reasons(), Reasons{});
  });
}

TEST(Script, TheEndModeSettlesEveryProperty) {
  struct {
    DWORD mode;
    INT current;
    INT base;
  } const cases[] = {{STEP_END_COMMIT, 64, 64}, {STEP_END_REVERT, 37, 37}, {0, 64, 37}};
  OnPhone([&](TestHost&, const auto&) {
    for (const auto& end : cases) {
      Group moved;
      moved.group.extra.current = 5;  // no track drives it, yet it is settled with the rest
      moved.Queue(1000, 500, PROP_Y, 64, end.mode);
      moved.group.StartAnimation(0);
      moved.group.FinishAnimation(FINISH_ALL);
      EXPECT_EQ(moved.group.y.current, end.current);
      EXPECT_EQ(moved.group.y.base, end.base);
      EXPECT_EQ(moved.group.extra.current == moved.group.extra.base, end.mode != 0);
    }
  });
}

TEST(Script, EachTrackOfAStepDrivesItsOwnPropertyFromItsBase) {
  constexpr DWORD kNoProperty = 128;
  const DWORD properties[] = {PROP_X,     PROP_Y,     PROP_WIDTH,   PROP_HEIGHT,
                              PROP_ALPHA, PROP_EXTRA, PROP_VISIBLE, kNoProperty};
  OnPhone([&](TestHost& host, const auto&) {
    Group moved;
    ASSERT_EQ(moved.group.AddStep(host.tick, 100, STEP_END_COMMIT), S_OK);
    std::vector<INT> before;
    for (const DWORD property : properties) {
      const INT distance = static_cast<INT>(10 * property);
      ASSERT_EQ(moved.group.AddTrack(-1000, -1000 + distance, property, EASE_LINEAR), S_OK);
      before.push_back(moved.group.GetValue(property, VALUE_BASE));
    }
    moved.group.StartAnimation(0);
    for (const INT percent : {0, 50, 100}) {
      host.tick = 1000 + static_cast<DWORD>(percent);
      EXPECT_EQ(moved.group.TickAnimation(), S_OK);
      for (std::size_t i = 0; i < 7; ++i)
        EXPECT_EQ(moved.group.GetValue(properties[i], VALUE_ABSOLUTE),
                  before[i] + static_cast<INT>(properties[i]) * percent / 10);
    }
    moved.group.FinishAnimation(FINISH_ALL);
    EXPECT_EQ(moved.group.GetValue(PROP_EXTRA, VALUE_BASE), 320);
  });
}

TEST(Script, ATrackToWhereItIsOnlyTakesTime) {
  OnPhone([](TestHost& host, const auto&) {
    Group moved;
    moved.Queue(1000, 500, PROP_Y, 37);
    moved.group.y.current = 99;
    moved.group.StartAnimation(0);
    host.tick = 1500;
    moved.group.Draw(nullptr, VALUE_ABSOLUTE);
    EXPECT_EQ(moved.group.animating, 1);
    moved.group.FinishAnimation(FINISH_ALL);
    EXPECT_EQ(moved.group.y.current, 99);
  });
}

TEST(Script, StepsOfNoDurationAndWithoutTracksEnd) {
  OnPhone([](TestHost& host, const auto&) {
    Group moved;
    EXPECT_EQ(moved.group.TickAnimation(), E_OUTOFMEMORY);
    EXPECT_EQ(moved.group.AddTrack(0, 1, PROP_X, EASE_LINEAR), E_OUTOFMEMORY);
    moved.group.StartAnimation(1);
    EXPECT_EQ(moved.group.animating, 0) << "there is nothing to start";

    moved.Queue(1000, 0, PROP_Y, 64);
    moved.group.StartAnimation(0);
    EXPECT_EQ(moved.group.TickAnimation(), S_OK);
    EXPECT_EQ(moved.group.y.current, 64);
    host.tick = 1001;
    EXPECT_EQ(moved.group.TickAnimation(), S_OK);
    EXPECT_EQ(moved.group.animating, 0);

    ASSERT_EQ(moved.group.AddStep(1000, 500, STEP_END_COMMIT), S_OK);
    moved.group.StartAnimation(0);
    EXPECT_EQ(moved.group.TickAnimation(), E_OUTOFMEMORY);
    moved.group.FinishAnimation(FINISH_ALL);
    EXPECT_EQ(moved.group.animating, 0);
    EXPECT_EQ(moved.group.firstStep, nullptr);
  });
}

TEST(Script, EachTickCarriesTheChildrenAlong) {
  OnPhone([](TestHost& host, const auto&) {
    Group moved;
    auto* const image = new CImageVisual;
    image->SetPosition(5, 0);
    image->SetSize(27, 220);
    ASSERT_EQ(moved.group.AddImage(image, ANCHOR_SCALE), S_OK);
    ASSERT_EQ(moved.group.AddStep(1000, 500, STEP_END_COMMIT), S_OK);
    for (const auto& [to, property] : {std::pair{137, PROP_Y}, {1, PROP_HEIGHT}, {256, PROP_ALPHA}})
      ASSERT_EQ(moved.group.AddTrack(moved.group.GetValue(property, VALUE_ABSOLUTE), to, property, EASE_LINEAR), S_OK);
    moved.group.visible.current = 0;  // hidden, it runs all the same
    moved.group.StartAnimation(0);
    host.tick = 1250;
    moved.group.Draw(nullptr, VALUE_ABSOLUTE);
    EXPECT_EQ(image->x.current, 15);
    EXPECT_EQ(image->y.current, 87);
    EXPECT_EQ(image->height.current, 14);
    moved.group.FinishAnimation(FINISH_ALL);
    EXPECT_EQ(image->height.current, 1);
    EXPECT_EQ(image->alpha.current, 0) << "the low 8 bits of 256";
  });
}

}  // namespace
