// tests/ui/luminance_scale_test.cpp — zoomed scales by hand-worked numbers.
#include "ui/luminance_scale.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace varilum {
namespace {

LuminanceScale zoom(const std::vector<double>& inputs, const std::vector<double>& desired) {
  return zoomedScale(inputs, desired);
}

constexpr LuminanceScale kFull{0, 255};

TEST(LuminanceScale, SnapsToTensAroundAllValues) {
  EXPECT_EQ(zoom({100.3, 120.0}, {140.7, 130.0}), (LuminanceScale{80, 150}));
  EXPECT_EQ(zoom({100.0, 140.0}, {100.3, 140.7}), (LuminanceScale{80, 150}));
}

TEST(LuminanceScale, StaysWithinTheLevels) {
  EXPECT_EQ(zoom({2.0}, {250.0}), kFull);  // -13 and 265
  EXPECT_EQ(zoom({2.0}, {100.0}), (LuminanceScale{0, 110}));
  EXPECT_EQ(zoom({200.0}, {250.0}), (LuminanceScale{180, 255}));
}

TEST(LuminanceScale, IsFullWithoutLevels) {
  EXPECT_EQ(zoom({-1.0, -1.0}, {-1.0, -1.0}), kFull);  // bottom 240, top 10
  EXPECT_EQ(zoom({}, {}), kFull);
  EXPECT_EQ(zoom({0.0}, {0.5}), kFull);
}

TEST(LuminanceScale, LooksPastFramesWithoutLevels) {
  EXPECT_EQ(zoom({-1.0, 0.0, 100.0}, {-1.0, 0.5, 120.0}), (LuminanceScale{80, 130}));
}

TEST(LuminanceScale, SurvivesAnyValue) {
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(zoom({infinity}, {std::nan("")}), (LuminanceScale{240, 255}));
  EXPECT_EQ(zoom({-infinity}, {1e300}), (LuminanceScale{240, 255}));
}

}  // namespace
}  // namespace varilum
