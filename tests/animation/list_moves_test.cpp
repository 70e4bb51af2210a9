// Sequences of motions, against a plain model of the list.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <tuple>

#include "list_fixture.h"
#include "support/on_phone.h"

namespace {

/// What a list is to a person: items, the selected one, and how far it is scrolled.
struct Model {
  std::vector<INT> items;
  INT rows = 0;
  INT index = 0;
  INT row = 0;
  bool moving = false;

  INT count() const { return static_cast<INT>(items.size()); }
  void Step(INT step, bool carry) {
    if (index + step < 0 || index + step >= count()) return;
    if (carry) std::swap(items[index], items[index + step]);
    index += step;
    row = std::clamp(row + step, 0, rows - 1);
  }
  void Select(INT target) {
    target = std::min(std::max(target, 1), count());
    while (index < std::min(target, count() - 1)) Step(1, false);
    while (index > target) Step(-1, false);
  }
  void Remove() {
    moving = false;
    if (items.empty()) return;
    items.erase(items.begin() + index);
    if (index > 0) {
      if (index == row) --row;
      --index;
    }
  }
};

void ExpectAtRest(NumberedList& list, const Model& model) {
  ASSERT_EQ(list.Numbers(), model.items);
  ASSERT_EQ(std::tuple(list.selectedIndex, list.selectedRow), std::tuple(model.index, model.row));
  ASSERT_EQ(list.SelectedNumber(), model.items.empty() ? 0 : model.items[model.index]);
  const INT offset = model.index - model.row;
  const INT viewTop = kTop + kHeight;
  for (INT index = list.firstItem ? -4 : 0; index < model.count(); ++index) {
    const CVisualGroup& row = list.Row(index);
    const INT place = index - offset;
    if (index >= 0 && place >= 0 && place < model.rows) {
      const INT y = viewTop + place * kHeight;
      ASSERT_EQ(std::tuple(row.x.current, row.y.current, row.height.current), std::tuple(kLeft, y, kHeight)) << index;
      ASSERT_EQ(row.texts->member->y.current, y) << index;
    } else {
      const bool outside = row.y.current + row.height.current <= viewTop ||
                           row.y.current >= viewTop + model.rows * kHeight || row.x.current < 0;
      ASSERT_TRUE(outside) << index << " at " << row.y.current;
    }
  }
  if (model.items.empty()) return;
  const INT barY = viewTop + model.row * kHeight;
  ASSERT_EQ(list.highlight->y.current, barY);
  ASSERT_EQ(list.moveHighlight->y.current, barY);
  ASSERT_EQ(list.highlight->alpha.current, model.moving ? 0 : 255);
  ASSERT_EQ(list.scrollBar->visible.current, model.count() > model.rows ? 1 : 0);
  if (model.count() <= model.rows) return;
  ASSERT_EQ(list.scrollBar->y.current, viewTop + offset * kHeight * model.rows / model.count());
  ASSERT_EQ(list.scrollBar->height.current, kHeight * model.rows * model.rows / model.count());
}

void DoSomething(NumberedList& list, Model& model, std::minstd_rand& random, INT& last) {
  const INT dice = static_cast<INT>(random() % 12);
  if (dice < 4) {
    list.MoveDown();
    model.Step(1, model.moving);
  } else if (dice < 7) {
    list.MoveUp();
    model.Step(-1, model.moving);
  } else if (dice < 8 && !model.items.empty()) {
    list.ToggleMoveMode();
    model.moving = !model.moving;
  } else if (dice < 9) {
    const INT target = static_cast<INT>(random() % (model.items.size() + 3)) - 1;
    list.SelectIndex(target);
    model.Select(target);
  } else if (dice < 10) {
    ASSERT_EQ(list.Add(++last), S_OK);
    list.UpdateScrollBar(1);
    model.items.push_back(last);
  } else {
    list.RemoveSelected();
    model.Remove();
  }
}

TEST(ListMoves, AnySequenceKeepsTheListWhole) {
  OnPhone([](TestHost& host, const auto&) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
      std::minstd_rand random(seed);
      Model model;
      model.rows = static_cast<INT>(seed % 5 + 1);
      INT last = static_cast<INT>(seed % 13);
      NumberedList list(last, model.rows);
      list.UpdateScrollBar(host.tick);
      for (INT item = 1; item <= last; ++item) model.items.push_back(item);
      for (INT step = 0; step < 60; ++step) {
        SCOPED_TRACE(::testing::Message() << "seed " << seed << " step " << step);
        DoSomething(list, model, random, last);
        const bool rest = random() % 3 == 0;
        host.tick += rest ? 600 : static_cast<DWORD>(random() % 400);
        list.Draw(nullptr);
        if (rest) ExpectAtRest(list, model);
        if (::testing::Test::HasFatalFailure()) return;
      }
    }
  });
}

void SelectByMoves(NumberedList& list, INT index) {
  index = std::min(std::max(index, 1), list.GetCount());
  const INT moves = index - list.selectedIndex;
  for (INT i = 0; i < moves; ++i) list.MoveDown();
  for (INT i = 0; i > moves; --i) list.MoveUp();
}

/// Everything of a list that is drawn now.
std::vector<INT> Picture(NumberedList& list) {
  list.Draw(nullptr);
  std::vector<INT> picture = {list.selectedIndex, list.selectedRow, list.SelectedNumber()};
  const auto add = [&picture](const CVisual& visual) {
    for (const VisualProperty* property : {&visual.x, &visual.y, &visual.height, &visual.width, &visual.alpha})
      picture.push_back(property->current);
    picture.push_back(visual.visible.current);
  };
  for (INT index = -4; index < list.GetCount(); ++index) {
    add(list.Row(index));
    add(*list.Row(index).texts->member);
  }
  for (const auto* bar : {&list.highlight, &list.moveHighlight, &list.scrollBar}) add(**bar);
  return picture;
}

TEST(ListMoves, SelectingLooksLikeSingleMovesAtEveryMoment) {
  OnPhone([](TestHost& host, const auto&) {
    for (unsigned seed = 1; seed <= 40; ++seed) {
      std::minstd_rand random(seed);
      const INT count = static_cast<INT>(random() % 24 + 1);
      const INT rows = static_cast<INT>(random() % 6 + 1);
      NumberedList direct(count, rows);
      NumberedList stepwise(count, rows);
      for (INT selection = 0; selection < 6; ++selection) {
        SCOPED_TRACE(::testing::Message() << "seed " << seed << " selection " << selection);
        const INT target = static_cast<INT>(random() % (count + 3)) - 1;
        direct.SelectIndex(target);
        SelectByMoves(stepwise, target);
        // The next selection meets this one's motion at any stage, or at rest.
        for (DWORD moments = random() % 4; moments > 0; --moments) {
          host.tick += static_cast<DWORD>(random() % 250);
          ASSERT_EQ(Picture(direct), Picture(stepwise));
        }
      }
    }
  });
}

}  // namespace
