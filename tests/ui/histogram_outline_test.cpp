// tests/ui/histogram_outline_test.cpp — outlines by hand-worked numbers.
#include "ui/histogram_outline.h"

#include <gtest/gtest.h>

namespace varilum {
namespace {

constexpr DRAWBOT_RectF32 kHistogramPlot{19.0F, 33.0F, 337.0F, 137.0F};
using Counts = std::array<std::uint32_t, kLevels>;

TEST(HistogramOutline, RunsFromCornerToCorner) {
  const HistogramOutline outline = outlineHistogram(Counts{}, 100, kHistogramPlot);
  EXPECT_EQ(outline.front().x, 19.0F);
  EXPECT_EQ(outline.front().y, 170.0F);
  EXPECT_EQ(outline.back().x, 356.0F);
  EXPECT_EQ(outline.back().y, 170.0F);
  EXPECT_EQ(outline[1 + 0].x, 19.0F);
  EXPECT_EQ(outline[1 + 128].x, 187.0F);  // 168.5
  EXPECT_EQ(outline[1 + 255].x, 354.0F);  // 335.7
  for (const DRAWBOT_PointF32& point : outline) EXPECT_EQ(point.y, 170.0F);
}

TEST(HistogramOutline, ScalesBinsByTheMaximum) {
  Counts counts{};
  counts[1] = 100;
  counts[2] = 50;
  counts[3] = 1;
  const HistogramOutline outline = outlineHistogram(counts, 100, kHistogramPlot);
  EXPECT_EQ(outline[1 + 1].y, 33.0F);
  EXPECT_EQ(outline[1 + 2].y, 102.0F);  // a bar of 68.5 is 68
  EXPECT_EQ(outline[1 + 3].y, 169.0F);  // 1.37 is 1
}

TEST(HistogramOutline, CutsHigherBinsAtTheTop) {
  Counts counts{};
  counts[0] = 4'294'967'295U;
  counts[255] = 101;
  const HistogramOutline outline = outlineHistogram(counts, 100, kHistogramPlot);
  EXPECT_EQ(outline[1 + 0].y, 33.0F);
  EXPECT_EQ(outline[1 + 255].y, 33.0F);
}

TEST(HistogramOutline, AMaximumBelowOneCountsAsOne) {
  Counts counts{};
  counts[7] = 1;
  EXPECT_EQ(outlineHistogram(counts, 0, kHistogramPlot)[1 + 7].y, 33.0F);
  EXPECT_EQ(outlineHistogram(counts, -5, kHistogramPlot)[1 + 7].y, 33.0F);
}

}  // namespace
}  // namespace varilum
