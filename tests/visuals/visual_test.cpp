#include <gtest/gtest.h>

#include <tuple>
#include <utility>
#include <vector>

#include "visuals/visual_group.h"

namespace {

using Box = std::tuple<INT, INT, INT, INT>;  // x, y, height, width

Box Current(const CVisual& visual) {
  return {visual.x.current, visual.y.current, visual.height.current, visual.width.current};
}

constexpr DWORD kLeftTop = ANCHOR_LEFT | ANCHOR_TOP;
constexpr DWORD kRightBottom = ANCHOR_RIGHT | ANCHOR_BOTTOM;

/// The child lies at 50, 10 and is 20x40; the group moves from 10, 20 to 30, 50 and grows from 100x200 to 150x240.
const std::pair<DWORD, Box> kLayouts[] = {
    {ANCHOR_DEFAULT, {90, 65, 20, 40}},
    {ANCHOR_SCALE, {90, 65, 30, 48}},
    {kLeftTop, {80, 60, 20, 40}},
    {kLeftTop | ANCHOR_SCALE, {80, 60, 30, 48}},
    {kRightBottom, {120, 110, 20, 40}},
    {kRightBottom | ANCHOR_SCALE, {120, 110, 20, 40}},
    {kLeftTop | kRightBottom, {80, 60, 70, 80}},
};

TEST(Visual, FollowsItsGroupByItsAnchors) {
  for (const auto& [anchors, after] : kLayouts) {
    CVisualGroup group(1, 10, 20, 100, 200);
    auto* const text = new CTextVisual;
    text->SetPosition(50, 10);
    text->SetSize(20, 40);
    ASSERT_EQ(group.AddText(text, anchors), S_OK);
    EXPECT_EQ(Current(*text), (Box{60, 30, 20, 40})) << anchors;
    group.MoveTo(30, 50);
    group.Resize(150, 240);
    EXPECT_EQ(Current(*text), after) << anchors;
  }
}

TEST(Visual, TruncationMayLoseAPixel) {
  const std::tuple<INT, INT, INT> cases[] = {{5, 19, 4}, {10, 19, 9}, {6, 19, 6}, {5, 220, 5}, {0, 19, 0}, {5, 0, 0}};
  for (const auto& [own, extent, offset] : cases) {
    CVisual visual;
    visual.SetPosition(own, own);
    visual.SetParentOrigin(11, 37);
    visual.SetParentExtent(extent, extent);
    EXPECT_EQ(visual.x.current, 11 + offset) << own << " of " << extent;
    EXPECT_EQ(visual.y.current, 37 + offset) << own << " of " << extent;
  }
}

TEST(Visual, SettersRefreshPercentagesAndMargins) {
  CVisual visual;
  visual.SetSize(20, 50);
  visual.SetParentExtent(100, 200);
  visual.SetParentExtent(50, 400);
  EXPECT_EQ(visual.width.percent, 25.0) << "a later layout keeps what the first one took";
  visual.SetSize(10, 80);
  visual.SetPosition(40, 1);
  EXPECT_EQ(std::tuple(visual.width.percent, visual.x.percent), std::tuple(20.0, 10.0));
  EXPECT_EQ(std::tuple(visual.rightMargin, visual.bottomMargin), std::tuple(400 - 40 - 80, 50 - 1 - 10));
}

TEST(VisualGroup, AnImageHasOneNodeAndATextOneForEachAdding) {
  CVisualGroup group(1, 0, 0, 10, 10);
  auto* const image = new CImageVisual;
  auto* const text = new CTextVisual;
  EXPECT_EQ(group.AddImage(nullptr, ANCHOR_SCALE), E_OUTOFMEMORY);
  ASSERT_EQ(group.AddImage(image, ANCHOR_DEFAULT), S_OK);
  ASSERT_EQ(group.AddImage(image, ANCHOR_LEFT), S_OK);
  EXPECT_EQ(group.images->next, group.images);
  EXPECT_EQ(image->anchors, ANCHOR_LEFT);
  ASSERT_EQ(group.AddText(text, ANCHOR_SCALE), S_OK);
  ASSERT_EQ(group.AddText(text, ANCHOR_SCALE), S_OK);
  EXPECT_NE(group.texts->next, group.texts);
  group.DestroyChildren();
  EXPECT_EQ(group.images, nullptr);
  EXPECT_EQ(group.texts, nullptr);
}

}  // namespace
