// tests/ui/luminance_curve_test.cpp — points, gaps and variances by hand.
#include "ui/luminance_curve.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace varilum {
namespace {

constexpr DRAWBOT_RectF32 kCurvePlot{19.0F, 193.0F, 337.0F, 134.0F};
constexpr LuminanceScale kFull{0, 255};

struct Curve {
  std::vector<DRAWBOT_PointF32> points;
  Variance variance;
};

Curve layOut(const std::vector<double>& values, const LuminanceScale& scale = kFull) {
  Curve curve{std::vector<DRAWBOT_PointF32>(values.size()), {}};
  curve.variance = layOutCurve(values, kCurvePlot, scale, curve.points);
  return curve;
}

TEST(LuminanceCurve, SpreadsFramesOverThePlot) {
  const Curve curve = layOut({1, 1, 1, 1, 1});
  const float expected[] = {19, 103, 187, 271, 356};  // 337 x i / 4, whole
  for (std::size_t i = 0; i < 5; ++i) EXPECT_EQ(curve.points[i].x, expected[i]) << i;
}

TEST(LuminanceCurve, PutsLevelsAtTheirHeight) {
  const Curve curve = layOut({255.0, 127.5, 25.5});
  EXPECT_EQ(curve.points[0].y, 193.0F);
  EXPECT_EQ(curve.points[1].y, 260.0F);
  EXPECT_FLOAT_EQ(curve.points[2].y, 313.6F);
}

TEST(LuminanceCurve, FollowsAZoomedScale) {
  const Curve curve = layOut({80.0, 115.0, 150.0}, {80, 150});
  EXPECT_EQ(curve.points[0].y, 326.0F);  // 327 is the plot's edge
  EXPECT_EQ(curve.points[1].y, 260.0F);
  EXPECT_EQ(curve.points[2].y, 193.0F);
}

TEST(LuminanceCurve, StaysOnThePanel) {
  const Curve curve = layOut({-1.0, 250.0, std::nan("")}, {100, 110});
  EXPECT_EQ(curve.points[0].y, 326.0F);
  EXPECT_EQ(curve.points[1].y, 0.0F);  // 327 - 150 x 13.4
  EXPECT_EQ(curve.points[2].y, 0.0F);
}

TEST(LuminanceCurve, PlacesASingleFrameAtTheLeftEdge) {
  EXPECT_EQ(layOut({127.5}).points[0].x, 19.0F);
  EXPECT_EQ(frameOffset(kCurvePlot, 0, 1), 0);
  EXPECT_EQ(frameOffset(kCurvePlot, 0, 0), 0);
}

TEST(LuminanceCurve, CountsFramesBeyond32Bits) {
  EXPECT_EQ(frameOffset(kCurvePlot, 24'000'000, 24'000'001), 337);
  EXPECT_EQ(frameOffset(kCurvePlot, 12'000'000, 24'000'001), 168);
}

TEST(LuminanceCurve, VarianceIsTheMeanChangeBetweenNeighbours) {
  const Variance variance = layOut({100, 110, 90, 93}).variance;
  EXPECT_EQ(variance.pairs, 3);
  EXPECT_DOUBLE_EQ(variance.value, 11.0);  // (10 + 20 + 3) / 3
}

TEST(LuminanceCurve, VarianceStartsAgainAfterAFrameWithoutLevel) {
  const Variance variance = layOut({100, 110, -1, 50, 64, 0.1, 70}).variance;
  EXPECT_EQ(variance.pairs, 2);
  EXPECT_DOUBLE_EQ(variance.value, 12.0);
}

TEST(LuminanceCurve, VarianceOfOnePairIsItsChange) {
  const Variance one = layOut({100, 107}).variance;
  EXPECT_EQ(one.pairs, 1);
  EXPECT_DOUBLE_EQ(one.value, 7.0);
  EXPECT_EQ(layOut({100, -1, 107}).variance.pairs, 0);
  EXPECT_EQ(layOut({100, -1, 107}).variance.value, 0.0);
  EXPECT_EQ(layOut({}).variance.pairs, 0);
}

TEST(LuminanceCurve, FindsRunsAboveTheBottom) {
  const std::vector<double> values{-1, 50, 60, 10, 70, 10.5, -1};
  const FrameRun first = nextRun(values, 10.0, 0);
  EXPECT_EQ(first.first, 1U);
  EXPECT_EQ(first.end, 3U);
  const FrameRun second = nextRun(values, 10.0, first.end);
  EXPECT_EQ(second.first, 4U);
  EXPECT_EQ(second.end, 6U);
  const FrameRun none = nextRun(values, 10.0, second.end);
  EXPECT_EQ(none.first, none.end);
}

TEST(LuminanceCurve, HasNoRunWhereNothingIsAnalysed) {
  const std::vector<double> values(4, -1.0);
  const FrameRun none = nextRun(values, 0.0, 0);
  EXPECT_EQ(none.first, none.end);
}

TEST(LuminanceCurve, ALoneFrameReachesToTheNext) {
  const std::vector<DRAWBOT_PointF32> points{{19, 200}, {103, 210}, {187, 220}};
  const Stroke stroke = loneFrameStroke(points, 1);
  EXPECT_EQ(stroke.from.x, 103.0F);
  EXPECT_EQ(stroke.from.y, 210.0F);
  EXPECT_EQ(stroke.to.x, 187.0F);
  EXPECT_EQ(stroke.to.y, 210.0F);
}

TEST(LuminanceCurve, ALoneLastFrameIsOnePixel) {
  const std::vector<DRAWBOT_PointF32> points{{19, 200}, {356, 210}};
  const Stroke last = loneFrameStroke(points, 1);
  EXPECT_EQ(last.from.x, 355.0F);
  EXPECT_EQ(last.to.x, 356.0F);
  EXPECT_EQ(last.from.y, 210.0F);
  EXPECT_EQ(last.to.y, 210.0F);
  const Stroke only = loneFrameStroke({points.data(), 1}, 0);
  EXPECT_EQ(only.from.x, 19.0F);
  EXPECT_EQ(only.to.x, 20.0F);
}

}  // namespace
}  // namespace varilum
