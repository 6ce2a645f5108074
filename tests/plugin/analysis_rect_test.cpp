// tests/plugin/analysis_rect_test.cpp — the rectangle and the step that are measured.
#include "analysis/analysis_rect.h"

#include <gtest/gtest.h>

#include <limits>

namespace varilum {
namespace {

constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();

PF_PointDef point(double x, double y) {
  PF_PointDef result{};
  result.x_value = static_cast<std::int32_t>(x * 65536.0);
  result.y_value = static_cast<std::int32_t>(y * 65536.0);
  return result;
}

PF_InData layer(std::int32_t width, std::int32_t height, PF_RationalScale x, PF_RationalScale y) {
  PF_InData in{};
  in.width = width;
  in.height = height;
  in.downsample_x = x;
  in.downsample_y = y;
  return in;
}

TEST(AnalysisRect, TakesCornersInEitherOrder) {
  const Rect expected{50, 20, 200, 150};
  EXPECT_EQ(worldAnalysisRect(point(200, 150), point(50, 20), 640, 480), expected);
  EXPECT_EQ(worldAnalysisRect(point(50, 150), point(200, 20), 640, 480), expected);
}

TEST(AnalysisRect, TakesWholePartsDownwards) {
  EXPECT_EQ(worldAnalysisRect(point(10.9, 5.5), point(20.2, 30.99), 640, 480),
            (Rect{10, 5, 20, 30}));
  // -0.5 lies in pixel -1, which is cut off.
  EXPECT_EQ(worldAnalysisRect(point(-0.5, -3), point(20, 30), 640, 480), (Rect{0, 0, 20, 30}));
}

TEST(AnalysisRect, IsCutToTheFrame) {
  EXPECT_EQ(worldAnalysisRect(point(-100, -50), point(900, 700), 640, 480), (Rect{0, 0, 640, 480}));
  const Rect outside = worldAnalysisRect(point(700, 10), point(800, 20), 640, 480);
  EXPECT_GT(outside.left, outside.right) << "nothing is left";
}

TEST(AnalysisRect, OfTheLayerFollowsItsResolution) {
  const PF_InData in = layer(1920, 1080, {1, 2}, {1, 3});
  EXPECT_EQ(layerAnalysisRect(in, false, point(1, 1), point(2, 2)), (Rect{0, 0, 960, 360}));
  EXPECT_EQ(layerAnalysisRect(in, true, point(100, 100), point(2000, 2000)),
            (Rect{100, 100, 960, 360}));
}

TEST(AnalysisRect, ToleratesAMissingDenominatorAndHugeSizes) {
  EXPECT_EQ(scaledSize(1920, {1, 0}), 1920);
  EXPECT_EQ(scaledSize(2000000000, {2, 1}), std::numeric_limits<std::int32_t>::max());
  EXPECT_EQ(scaledSize(7, {1, 2}), 3);
}

// The rule as it is told: lower the step by one until 60 samples cross the shorter side.
std::int32_t stepByCounting(std::int32_t speed, std::int64_t shorter) {
  std::int32_t step = (speed + 32768) >> 16;
  if (step < 1) step = 1;
  while (step > 1 && shorter / step < 60) --step;
  return step;
}

TEST(SamplingStep, LeavesAtLeastSixtySamples) {
  EXPECT_EQ(samplingStep(5 << 16, {0, 0, 100, 80}), 1);
  EXPECT_EQ(samplingStep(5 << 16, {0, 0, 1920, 1080}), 5);
  EXPECT_EQ(samplingStep(20 << 16, {0, 0, 1920, 1080}), 18);
  for (std::int32_t side = 1; side < 1500; ++side) {
    for (std::int32_t speed = 1; speed <= 20; ++speed) {
      EXPECT_EQ(samplingStep(speed << 16, {0, 0, 4000, side}), stepByCounting(speed << 16, side))
          << side << " at " << speed;
    }
  }
}

TEST(SamplingStep, IsOneForEmptyRectanglesAndWrongSpeeds) {
  EXPECT_EQ(samplingStep(5 << 16, {10, 10, 10, 500}), 1);
  EXPECT_EQ(samplingStep(5 << 16, {700, 10, 640, 480}), 1);
  EXPECT_EQ(samplingStep(0, {0, 0, 1920, 1080}), 1);
  EXPECT_EQ(samplingStep(-70000, {0, 0, 1920, 1080}), 1);
  EXPECT_EQ(samplingStep(kLowest, {kLowest, 0, 2147483647, 2147483647}), 1);
  // Rounded to the nearest whole step: 2.5 is 3.
  EXPECT_EQ(samplingStep((2 << 16) + 32768, {0, 0, 1920, 1080}), 3);
  EXPECT_EQ(samplingStep((2 << 16) + 32767, {0, 0, 1920, 1080}), 2);
}

}  // namespace
}  // namespace varilum
