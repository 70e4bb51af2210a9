#include "animation/list/scroll_list.h"

#include <gtest/gtest.h>

#include <tuple>

#include "list_fixture.h"
#include "support/on_phone.h"
#include "system/faults.h"

namespace {

using Numbers = std::vector<INT>;
constexpr DWORD kLongEnough = 600;  // ms, for any motion to end

void Wait(TestHost& host, CScrollList& list, DWORD milliseconds) {
  host.tick += milliseconds;
  list.Draw(nullptr);
}

TEST(ScrollList, LiesWhereItsLayoutSays) {
  NumberedList list(20, 8);
  const std::tuple<INT, INT, INT, INT> places[] = {
      {-4, 11, 253, 27}, {-3, -229, 280, 1}, {-2, -229, 10, 1}, {-1, 11, 10, 27},
      {0, 11, 37, 27},   {7, 11, 226, 27},   {8, 11, 253, 27},  {19, 11, 550, 27},
  };
  for (const auto& [index, x, y, height] : places) {
    const CVisualGroup& row = list.Row(index);
    EXPECT_EQ(row.x.current, x) << index;
    EXPECT_EQ(row.y.current, y) << index;
    EXPECT_EQ(row.height.current, height) << index;
    EXPECT_EQ(row.tag, static_cast<DWORD>(index < 0 ? index + 5 : index + 1));
    const CTextVisual& text = *row.texts->member;
    EXPECT_EQ(text.x.current, x + (index < 0 ? 0 : 5));
    EXPECT_EQ(text.referenceHeight, height);
    EXPECT_EQ(text.text.empty(), index < 0);
  }
  EXPECT_EQ(list.SelectedNumber(), 1);
  EXPECT_EQ(list.highlightY, 37);
  EXPECT_EQ(list.highlight->y.current, 37);
  EXPECT_EQ(list.highlight->alpha.current, ALPHA_OPAQUE);
  EXPECT_EQ(list.moveHighlight->x.current, 11);
  EXPECT_EQ(list.moveHighlight->alpha.current, ALPHA_TRANSPARENT);
  EXPECT_EQ(list.Requests(), 0u);
}

TEST(ScrollList, TheThumbShowsTheShareOfTheView) {
  OnPhone([](TestHost& host, const auto&) {
    NumberedList list(20, 8);
    list.UpdateScrollBar(host.tick);
    Wait(host, list, kLongEnough);
    EXPECT_EQ(list.scrollBar->height.current, 86);
    EXPECT_EQ(list.scrollBar->y.current, 37);
    for (INT press = 0; press < 10; ++press) list.MoveDown();
    EXPECT_EQ(list.selectedRow, 7);
    Wait(host, list, kLongEnough);
    EXPECT_EQ(list.scrollBar->y.current, 69);

    NumberedList fitting(8, 8);
    fitting.Requests();
    fitting.UpdateScrollBar(host.tick);
    EXPECT_EQ(fitting.scrollBar->visible.current, 0);
    EXPECT_EQ(fitting.Requests(), 0u);
  });
}

TEST(ScrollList, NothingMovesPastEitherEnd) {
  OnPhone([](TestHost&, const auto&) {
    for (const INT count : {0, 1, 3}) {
      NumberedList list(count, 8);
      list.MoveUp();
      EXPECT_EQ(list.Requests(), 0u);
      list.SelectIndex(count);
      list.Requests();
      list.MoveDown();
      list.SelectIndex(count + 9);
      EXPECT_EQ(list.Requests(), 0u);
      EXPECT_EQ(list.SelectedNumber(), count);
    }
  });
}

TEST(ScrollList, OneDownSlidesTheBarAndTheNextTheRows) {
  OnPhone([](TestHost& host, const auto&) {
    NumberedList list(4, 2);
    list.MoveDown();
    EXPECT_EQ(list.Requests() & INVALIDATE_FRAME, INVALIDATE_FRAME);
    Wait(host, list, 100);
    EXPECT_EQ(list.highlight->y.current, 37 + 14);  // half of 27
    EXPECT_EQ(list.Row(0).y.current, 37);
    list.MoveDown();  // completes the slide before it scrolls
    EXPECT_EQ(list.highlight->y.current, 64);
    EXPECT_EQ(list.selectedRow, 1);
    EXPECT_EQ(list.selectedIndex, 2);
    Wait(host, list, 250);
    EXPECT_EQ(list.highlight->y.current, 64);
    EXPECT_EQ(list.Row(0).y.current, 37 - 14);
    EXPECT_EQ(list.Row(2).y.current, 91 - 14);
    list.MoveUp();
    EXPECT_EQ(list.Row(2).y.current, 64) << "the scroll was completed at once";
    EXPECT_EQ(list.highlightY, 37);
  });
}

TEST(ScrollList, MoveModeCarriesTheItemAndFadesTheBars) {
  OnPhone([](TestHost& host, const auto&) {
    NumberedList list(5, 3);
    list.ToggleMoveMode();
    Wait(host, list, 250);
    EXPECT_EQ(list.moveHighlight->alpha.current, 128);
    EXPECT_EQ(list.highlight->alpha.current, 127);
    list.MoveDown();
    EXPECT_EQ(list.Numbers(), (Numbers{2, 1, 3, 4, 5}));
    EXPECT_EQ(list.SelectedNumber(), 1);
    Wait(host, list, 250);
    EXPECT_EQ(list.Row(0).y.current, 64 - 14);
    EXPECT_EQ(list.Row(1).y.current, 37 + 14);
    list.MoveDown();
    list.MoveDown();  // scrolls
    EXPECT_EQ(list.Numbers(), (Numbers{2, 3, 4, 1, 5}));
    Wait(host, list, kLongEnough);
    EXPECT_EQ(list.Row(3).y.current, 91);
    EXPECT_EQ(list.highlight->y.current, 91);
    EXPECT_EQ(list.selected->value, -1);
    list.RemoveSelected();
    EXPECT_EQ(list.moveMode, 0);
    Wait(host, list, kLongEnough);
    EXPECT_EQ(list.highlight->alpha.current, ALPHA_OPAQUE);
    EXPECT_EQ(list.moveHighlight->alpha.current, ALPHA_TRANSPARENT);
    EXPECT_EQ(list.Numbers(), (Numbers{2, 3, 4, 5}));
  });
}

TEST(ScrollList, AnEmptiedListStartsAnew) {
  OnPhone([](TestHost& host, const auto&) {
    NumberedList list(1, 3);
    list.RemoveSelected();
    EXPECT_EQ(list.GetSelectedData(), nullptr);
    EXPECT_EQ(list.Numbers(), Numbers{});
    list.RemoveSelected();
    list.ToggleMoveMode();
    list.ToggleMoveMode();
    Wait(host, list, 100);
    ASSERT_EQ(list.Add(9), S_OK);
    EXPECT_EQ(list.Numbers(), Numbers{9});
    EXPECT_EQ(list.SelectedNumber(), 9);
    EXPECT_EQ(list.Row(1).tag, 1u) << "four spacers, one item and round again";
    EXPECT_EQ(list.highlight->animating, 0) << "placing the bar ends its fading";
    EXPECT_EQ(list.highlight->alpha.current, ALPHA_OPAQUE);
  });
}

TEST(ScrollList, ARowAddedDuringAMotionGoesBelowWhereTheLastOneEnds) {
  OnPhone([](TestHost&, const auto&) {
    NumberedList list(4, 2);
    list.SelectIndex(4);
    ASSERT_EQ(list.Add(5), S_OK);
    EXPECT_EQ(list.Row(4).y.current, 64 + 27);
  });
}

TEST(ScrollList, WithoutMemoryARowIsRefusedAndTheListGoesOn) {
  OnPhone([](TestHost&, const auto&) {
    constexpr std::uint64_t kForASpacer = 4;  // node, group, text and the text's node
    for (std::uint64_t after = 0; after < 5 * kForASpacer; ++after) {
      NumberedList list(0, 2);
      phone::SetFault(phone::Operation::Allocation, 1, after);
      const HRESULT status = list.Add(1);
      phone::SetFault(phone::Operation::Allocation, 0, 0);
      const bool textOnly = after % kForASpacer >= 2 && after < 4 * kForASpacer;
      const bool rowTextOnly = after == 4 * kForASpacer + 1 || after == 4 * kForASpacer + 2;
      EXPECT_EQ(status, textOnly || rowTextOnly ? S_OK : E_OUTOFMEMORY) << after;
      EXPECT_EQ(list.GetCount(), status == S_OK ? 1 : 0);
      ASSERT_EQ(list.Add(2), S_OK);
      EXPECT_EQ(list.SelectedNumber(), status == S_OK ? 1 : 2);
      EXPECT_EQ(list.Row(list.GetCount()).tag, 1u) << "no spacer is missing or made twice";
      list.MoveDown();
      list.Draw(nullptr);
    }
  });
}

TEST(ScrollList, MotionsWithoutMemoryOrBarsDoNoHarm) {
  OnPhone([](TestHost& host, const auto&) {
    for (const bool bars : {true, false}) {
      NumberedList list(6, 2);
      if (!bars) {
        list.highlight.reset();
        list.moveHighlight.reset();
        list.scrollBar.reset();
      }
      for (std::uint64_t after = 0; after < 200; after += 7) {
        phone::SetFault(phone::Operation::Allocation, 3, after);
        list.MoveDown();
        list.ToggleMoveMode();
        list.MoveUp();
        list.SelectIndex(static_cast<INT>(after % 7));
        phone::SetFault(phone::Operation::Allocation, 0, 0);
        Wait(host, list, 100);
      }
      EXPECT_EQ(list.GetCount(), 6);
      while (list.GetCount() > 0) list.RemoveSelected();
      Wait(host, list, kLongEnough);
    }
  });
}

}  // namespace
