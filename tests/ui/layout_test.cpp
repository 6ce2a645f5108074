// tests/ui/layout_test.cpp — rectangles by hand-worked numbers.
#include "ui/layout.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace varilum {
namespace {

constexpr PF_Rect kArea{10, 20, 410, 352};

void expectRect(const DRAWBOT_RectF32& rect, float left, float top, float width, float height) {
  EXPECT_EQ(rect.left, left);
  EXPECT_EQ(rect.top, top);
  EXPECT_EQ(rect.width, width);
  EXPECT_EQ(rect.height, height);
}

TEST(Layout, StacksTwoFramedGraphs) {
  const PanelLayout layout = layOutPanel(kArea, 10.0F);
  expectRect(layout.panel, 10, 20, 400, 332);
  expectRect(layout.histogramFrame, 18, 32, 339, 139);
  expectRect(layout.histogramPlot, 19, 33, 337, 137);
  expectRect(layout.luminanceFrame, 18, 192, 339, 136);
  expectRect(layout.luminancePlot, 19, 193, 337, 134);
  EXPECT_EQ(layout.histogramTitle.x, 10.0F);
  EXPECT_EQ(layout.histogramTitle.y, 28.0F);
  EXPECT_EQ(layout.luminanceTitle.x, 10.0F);
  EXPECT_EQ(layout.luminanceTitle.y, 190.0F);
}

TEST(Layout, OnlyTheLowerGraphDependsOnTheFontSize) {
  const PanelLayout small = layOutPanel(kArea, 11.0F);
  const PanelLayout large = layOutPanel(kArea, 16.0F);
  expectRect(small.luminanceFrame, 18, 193, 339, 134);
  expectRect(large.luminanceFrame, 18, 198, 339, 124);
  expectRect(small.histogramFrame, 18, 32, 339, 139);
  expectRect(large.histogramFrame, 18, 32, 339, 139);
  EXPECT_EQ(large.histogramTitle.y, 34.0F);
  EXPECT_EQ(large.luminanceTitle.y, 196.0F);
}

TEST(Layout, EndsWithTheAreaWhenThatIsLower) {
  expectRect(layOutPanel({10, 20, 410, 200}, 10.0F).panel, 10, 20, 400, 180);
  expectRect(layOutPanel({10, 20, 900, 900}, 10.0F).panel, 10, 20, 400, 332);
}

TEST(Layout, KeepsBottomsCountedFromTheLeftEdge) {
  const PanelLayout layout = layOutPanel(kArea, 10.0F);
  EXPECT_EQ(keptPanelRect(layout), (Rect{10, 20, 410, 342}));
  EXPECT_EQ(keptPlotRect(layout), (Rect{19, 33, 356, 156}));
}

TEST(Layout, PlacesLevelsOnTheAxis) {
  const DRAWBOT_RectF32 plot = layOutPanel(kArea, 10.0F).histogramPlot;
  EXPECT_EQ(levelX(plot, 0.0), 19.0F);
  EXPECT_EQ(levelX(plot, 100.0), 151.0F);  // 33700 / 255 = 132.2
  EXPECT_EQ(levelX(plot, 127.9), 186.0F);  // 127 x 337 / 255 = 167.8
  EXPECT_EQ(levelX(plot, 128.0), 188.0F);  // 169.2
  EXPECT_EQ(levelX(plot, 255.0), 356.0F);  // the plot's right edge
  EXPECT_EQ(levelX(plot, -1.0), 18.0F);    // -337 / 255 = -1.3, toward zero
  EXPECT_EQ(levelX(plot, std::nan("")), 19.0F);
}

TEST(Layout, MarkersMeetAtTheFramesBottomEdge) {
  const PanelLayout layout = layOutPanel(kArea, 10.0F);
  const Marker input = inputMarker(layout, 100.0);
  EXPECT_EQ(input.apex.x, 151.0F);
  EXPECT_EQ(input.apex.y, 170.0F);
  EXPECT_EQ(input.left.x, 143.0F);
  EXPECT_EQ(input.right.x, 159.0F);
  EXPECT_EQ(input.left.y, 162.0F);
  EXPECT_EQ(input.right.y, 162.0F);
  EXPECT_EQ(input.hit, (Rect{143, 162, 160, 171}));

  const Marker desired = desiredHandle(layout, 255.0);
  EXPECT_EQ(desired.apex.x, 356.0F);
  EXPECT_EQ(desired.apex.y, 171.0F);
  EXPECT_EQ(desired.left.x, 348.0F);
  EXPECT_EQ(desired.right.x, 364.0F);
  EXPECT_EQ(desired.left.y, 179.0F);
  EXPECT_EQ(desired.hit, (Rect{348, 171, 365, 180}));
}

TEST(Layout, SurvivesLevelsAndAreasOfAnySize) {
  const std::int32_t most = std::numeric_limits<std::int32_t>::max();
  const std::int32_t least = std::numeric_limits<std::int32_t>::min();
  const PanelLayout far = layOutPanel({most, most, most, most}, 10.0F);
  EXPECT_EQ(keptPanelRect(far).right, most);
  EXPECT_EQ(desiredHandle(far, 1e300).hit.right, most);
  EXPECT_EQ(layOutPanel({0, most, 0, least}, 10.0F).panel.width, 400.0F);
  EXPECT_EQ(inputMarker(layOutPanel(kArea, 10.0F), -1e300).hit.left, least);
}

TEST(Layout, RightAndBottomEdgesAreOutside) {
  constexpr Rect rect{143, 162, 160, 171};
  EXPECT_TRUE(contains(rect, 143, 162));
  EXPECT_TRUE(contains(rect, 159, 170));
  EXPECT_FALSE(contains(rect, 160, 165));
  EXPECT_FALSE(contains(rect, 150, 171));
  EXPECT_FALSE(contains(rect, 142, 165));
  EXPECT_FALSE(contains(rect, 150, 161));
  EXPECT_FALSE(contains(Rect{}, 0, 0));
}

}  // namespace
}  // namespace varilum
