#include <gtest/gtest.h>

#include <memory>
#include <tuple>

#include "visuals/visual_group.h"

namespace {

struct Box {
  INT x, y, height, width;
  bool operator==(const Box&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Box& box) {
  return out << box.x << "," << box.y << " " << box.height << "x" << box.width;
}

Box Current(const CVisual& visual) {
  return {visual.x.current, visual.y.current, visual.height.current, visual.width.current};
}

struct Layout {
  const char* what;
  DWORD anchors;
  Box child;
  Box after;  // the group has moved from 10, 20 to 30, 50 and grown from 100x200 to 150x240
};

const Layout kLayouts[] = {
    {"in proportion", ANCHOR_DEFAULT, {50, 10, 20, 40}, {90, 65, 20, 40}},
    {"in proportion, scaled", ANCHOR_SCALE, {50, 10, 20, 40}, {90, 65, 30, 48}},
    {"left, top", ANCHOR_LEFT | ANCHOR_TOP, {50, 10, 20, 40}, {80, 60, 20, 40}},
    {"right, bottom", ANCHOR_RIGHT | ANCHOR_BOTTOM, {50, 10, 20, 40}, {120, 110, 20, 40}},
    {"right and bottom win over scaling",
     ANCHOR_RIGHT | ANCHOR_BOTTOM | ANCHOR_SCALE,
     {50, 10, 20, 40},
     {120, 110, 20, 40}},
    {"all four edges", ANCHOR_LEFT | ANCHOR_RIGHT | ANCHOR_TOP | ANCHOR_BOTTOM, {50, 10, 20, 40}, {80, 60, 70, 80}},
    {"left and top, scaled", ANCHOR_LEFT | ANCHOR_TOP | ANCHOR_SCALE, {50, 10, 20, 40}, {80, 60, 30, 48}},
    {"a third is cut", ANCHOR_SCALE, {1, 1, 33, 67}, {31, 51, 49, 80}},
    {"negative offsets are cut toward zero", ANCHOR_SCALE, {-5, -5, 10, 10}, {24, 43, 15, 12}},
};

TEST(Visual, FollowsItsGroupByItsAnchors) {
  for (const Layout& layout : kLayouts) {
    SCOPED_TRACE(layout.what);
    CVisualGroup group(1, 10, 20, 100, 200);
    auto* const text = new CTextVisual;
    text->SetPosition(layout.child.x, layout.child.y);
    text->SetSize(layout.child.height, layout.child.width);
    ASSERT_EQ(group.AddText(text, layout.anchors), S_OK);
    EXPECT_EQ(Current(*text), (Box{10 + layout.child.x, 20 + layout.child.y, layout.child.height, layout.child.width}));
    group.MoveTo(30, 50);
    group.Resize(150, 240);
    EXPECT_EQ(Current(*text), layout.after);
  }
}

TEST(Visual, TruncationMayLoseAPixel) {
  const std::tuple<INT, INT, INT> cases[] = {{5, 19, 4}, {10, 19, 9}, {20, 19, 19},
                                             {6, 19, 6}, {5, 220, 5}, {0, 19, 0}};
  for (const auto& [own, extent, offset] : cases) {
    CVisual visual;
    visual.SetPosition(own, own);
    visual.SetSize(10, 10);
    visual.SetParentOrigin(11, 37);
    visual.SetParentExtent(extent, extent);
    const double percent = own * 100.0 / extent;
    EXPECT_EQ(visual.x.percent, percent);
    EXPECT_EQ(visual.x.current, 11 + offset) << own << " of " << extent;
    EXPECT_EQ(visual.y.current, 37 + offset) << own << " of " << extent;
  }
}

TEST(Visual, PercentagesAndMarginsAreTakenOnceAndRefreshedBySetters) {
  CVisual visual;
  visual.SetPosition(5, 6);
  EXPECT_EQ(visual.x.percent, 0.0);
  visual.SetSize(20, 50);
  visual.SetParentOrigin(100, 200);
  EXPECT_EQ(visual.x.current, 5) << "before the first layout only the origin is recorded";
  visual.SetParentExtent(100, 200);
  EXPECT_EQ(visual.x.current, 105);
  EXPECT_EQ(visual.rightMargin, 145);
  EXPECT_EQ(visual.bottomMargin, 74);
  visual.SetParentExtent(50, 400);
  EXPECT_EQ(visual.width.percent, 25.0);
  EXPECT_EQ(visual.rightMargin, 145);
  visual.SetSize(10, 80);
  EXPECT_EQ(visual.width.percent, 20.0);
  EXPECT_EQ(visual.rightMargin, 400 - 5 - 80);
  visual.SetPosition(40, 1);
  EXPECT_EQ(visual.x.percent, 10.0);
  EXPECT_EQ(visual.bottomMargin, 50 - 1 - 10);
  EXPECT_EQ(visual.x.current, 140);
}

TEST(Visual, ParentWithoutExtentHasNoPercentages) {
  CVisual visual;
  visual.SetPosition(5, 6);
  visual.SetSize(20, 50);
  visual.SetParentExtent(0, 0);
  visual.SetPosition(7, 8);
  visual.SetSize(9, 10);
  for (const VisualProperty& property : {visual.x, visual.y, visual.height, visual.width})
    EXPECT_EQ(property.percent, 0.0);
}

TEST(Visual, GetValueReadsEachFieldOfEachProperty) {
  CVisual visual;
  const DWORD ids[] = {PROP_X, PROP_Y, PROP_WIDTH, PROP_HEIGHT, PROP_ALPHA, PROP_EXTRA, PROP_VISIBLE};
  VisualProperty* const records[] = {&visual.x,     &visual.y,     &visual.width,  &visual.height,
                                     &visual.alpha, &visual.extra, &visual.visible};
  for (INT i = 0; i < 7; ++i) *records[i] = {100 * i + 1, 100 * i + 20, 100 * i + 3, 100 * i + 4, -i - 0.9};
  for (INT i = 0; i < 7; ++i) {
    const INT relative = i < 2 ? 16 : i == 6 ? 0 : 100 * i + 20;
    const INT expected[] = {0, 100 * i + 20, relative, 100 * i + 4, 100 * i + 3, -i, 100 * i + 1, 0};
    for (DWORD selector = 0; selector < 8; ++selector)
      EXPECT_EQ(visual.GetValue(ids[i], selector), expected[selector]) << i << " by " << selector;
  }
  for (const DWORD unknown : {0u, 3u, 128u}) EXPECT_EQ(visual.GetValue(unknown, VALUE_ABSOLUTE), 0);
}

TEST(VisualGroup, OpacityReachesImagesAndNotTexts) {
  CVisualGroup group(1, 0, 0, 10, 10);
  auto* const image = new CImageVisual;
  auto* const text = new CTextVisual;
  ASSERT_EQ(group.AddImage(image, ANCHOR_SCALE), S_OK);
  ASSERT_EQ(group.AddText(text, ANCHOR_SCALE), S_OK);
  group.SetGroupAlpha(77);
  EXPECT_EQ(group.alpha.current, 77);
  EXPECT_EQ(group.alpha.own, 0);
  EXPECT_EQ(image->alpha.own, 77);
  EXPECT_EQ(text->alpha.current, ALPHA_OPAQUE);
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
