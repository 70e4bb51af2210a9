#include "animation/list/scroll_list.h"

#include <gtest/gtest.h>

#include <tuple>

#include "list_fixture.h"
#include "support/on_phone.h"
#include "system/faults.h"

namespace {

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
    EXPECT_EQ(std::tuple(row.x.current, row.y.current, row.height.current), std::tuple(x, y, height)) << index;
    EXPECT_EQ(row.texts->member->x.current, x + (index < 0 ? 0 : 5)) << index;
  }
  EXPECT_EQ(list.moveHighlight->alpha.current, ALPHA_TRANSPARENT);
  EXPECT_EQ(list.Requests(), 0u) << "adding asks for no frame";
}

TEST(ScrollList, TheThumbShowsTheShareOfTheView) {
  OnPhone([](TestHost& host, const auto&) {
    NumberedList list(20, 8);
    list.UpdateScrollBar(host.tick);
    Wait(host, list, kLongEnough);
    EXPECT_EQ(list.scrollBar->height.current, 86);
    EXPECT_EQ(list.scrollBar->y.current, 37);
    for (INT press = 0; press < 10; ++press) list.MoveDown();
    Wait(host, list, kLongEnough);
    EXPECT_EQ(list.scrollBar->y.current, 69);
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

}  // namespace
