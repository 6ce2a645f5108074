// tests/stats/frame_count_test.cpp — rounding and clamping of frame numbers.
#include "stats/frame_count.h"

#include <gtest/gtest.h>

#include <limits>

namespace varilum {
namespace {

constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();

TEST(LayerFrameCount, RoundsHalfAStepUp) {
  EXPECT_EQ(layerFrameCount(1000, 100), 10);
  EXPECT_EQ(layerFrameCount(1049, 100), 10);
  EXPECT_EQ(layerFrameCount(1050, 100), 11);
  EXPECT_EQ(layerFrameCount(49, 100), 0);
  EXPECT_EQ(layerFrameCount(2, 3), 1);  // 2 + 1 = 3
  EXPECT_EQ(layerFrameCount(1, 3), 0);
}

TEST(LayerFrameCount, IsOneWithoutAPositiveStep) {
  EXPECT_EQ(layerFrameCount(1000, 0), 1);
  EXPECT_EQ(layerFrameCount(1000, -5), 1);
  EXPECT_EQ(layerFrameCount(-1000, kLeast), 1);
}

TEST(LayerFrameCount, IsNeverNegativeAndNeverOverflows) {
  EXPECT_EQ(layerFrameCount(-1000, 100), 0);
  EXPECT_EQ(layerFrameCount(kLeast, 1), 0);
  EXPECT_EQ(layerFrameCount(kMost, kMost), 1);
  EXPECT_EQ(layerFrameCount(kMost, 1), kMost);
  EXPECT_EQ(layerFrameCount(kMost, 2), 1073741824);  // (2^31 - 1 + 1) / 2
}

TEST(FrameAt, DividesAndClamps) {
  EXPECT_EQ(frameAt(0, 100, 10), 0);
  EXPECT_EQ(frameAt(99, 100, 10), 0);
  EXPECT_EQ(frameAt(100, 100, 10), 1);
  EXPECT_EQ(frameAt(999, 100, 10), 9);
  EXPECT_EQ(frameAt(1000, 100, 10), 9);
  EXPECT_EQ(frameAt(-1, 100, 10), 0);
  EXPECT_EQ(frameAt(-1000, 100, 10), 0);
  EXPECT_EQ(frameAt(kLeast, 1, 10), 0);
  EXPECT_EQ(frameAt(kMost, 1, kMost), kMost - 1);
}

TEST(FrameAt, IsZeroWithoutStepOrFrames) {
  EXPECT_EQ(frameAt(500, 0, 10), 0);
  EXPECT_EQ(frameAt(500, -100, 10), 0);
  EXPECT_EQ(frameAt(500, 100, 0), 0);
  EXPECT_EQ(frameAt(500, 100, -3), 0);
}

}  // namespace
}  // namespace varilum
