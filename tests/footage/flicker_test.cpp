// tests/footage/flicker_test.cpp — the three figures against numbers worked by hand.
#include "footage/flicker.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace {

using Levels = std::vector<double>;

TEST(FlickerFigures, SteadyClipHasNone) {
  const Levels steady(40, 87.5);
  EXPECT_DOUBLE_EQ(footage::flickerRms(steady), 0.0);
  EXPECT_DOUBLE_EQ(footage::frameToFrameChange(steady), 0.0);
  EXPECT_DOUBLE_EQ(footage::jerk(steady), 0.0);
}

TEST(FlickerFigures, ShortClipsAreDefined) {
  for (const Levels& levels : {Levels{}, Levels{100.0}}) {
    EXPECT_EQ(footage::flickerRms(levels), 0.0);
    EXPECT_EQ(footage::frameToFrameChange(levels), 0.0);
    EXPECT_EQ(footage::jerk(levels), 0.0);
  }
}

// Mean of both is 100: deviations -0.1 and +0.1; one step of 20 on a mean of 100.
TEST(FlickerFigures, TwoFramesByHand) {
  const Levels levels{90.0, 110.0};
  EXPECT_NEAR(footage::flickerRms(levels), 10.0, 1e-12);
  EXPECT_NEAR(footage::frameToFrameChange(levels), 20.0, 1e-12);
  EXPECT_EQ(footage::jerk(levels), 0.0);
}

// Levels 10 20 40 20 10 have the mean 20. Steps 10 20 20 10: mean 15, 75 %. Second differences
// 10 -40 10: mean 20, 100 %. Deviations -1/2 0 1 0 -1/2: mean square 1.5 / 5 = 0.3.
TEST(FlickerFigures, FiveFramesByHand) {
  const Levels levels{10.0, 20.0, 40.0, 20.0, 10.0};
  EXPECT_NEAR(footage::frameToFrameChange(levels), 75.0, 1e-12);
  EXPECT_NEAR(footage::jerk(levels), 100.0, 1e-12);
  EXPECT_NEAR(footage::flickerRms(levels), 100.0 * std::sqrt(0.3), 1e-12);
}

// A ramp of 1 a frame over 0..100 has a mean of 50, a step of 1 everywhere and no bend. In the
// middle the window's mean is the frame itself; only the 7 frames at each end deviate.
TEST(FlickerFigures, RampHasStepsButNoJerk) {
  Levels ramp;
  for (int i = 0; i <= 100; ++i) ramp.push_back(i);
  EXPECT_NEAR(footage::frameToFrameChange(ramp), 2.0, 1e-12);
  EXPECT_NEAR(footage::jerk(ramp), 0.0, 1e-12);
  // Frame i < 7 sees 0..i+7, mean (i + 7) / 2; frame 100 - i sees 93-i..100, mean 96.5 - i / 2.
  double squares = 0.0;
  for (int i = 0; i < 7; ++i) {
    squares +=
        std::pow(i / ((i + 7) / 2.0) - 1.0, 2) + std::pow((100 - i) / (96.5 - i / 2.0) - 1, 2);
  }
  EXPECT_NEAR(footage::flickerRms(ramp), 100.0 * std::sqrt(squares / 101.0), 1e-9);
}

// One flash of double brightness in 15 frames of 14: mean of the window is (14 * 14 + 28) / 15.
TEST(FlickerFigures, WindowIsFifteenFrames) {
  Levels levels(45, 14.0);
  levels[22] = 28.0;
  const double around = (14.0 * 14 + 28.0) / 15.0;
  const double squares = std::pow(28.0 / around - 1.0, 2) + 14 * std::pow(14.0 / around - 1.0, 2);
  EXPECT_NEAR(footage::flickerRms(levels), 100.0 * std::sqrt(squares / 45.0), 1e-12);
}

TEST(FlickerFigures, BlackClipIsZeroNotNan) {
  const Levels black(20, 0.0);
  EXPECT_EQ(footage::flickerRms(black), 0.0);
  EXPECT_EQ(footage::frameToFrameChange(black), 0.0);
  EXPECT_EQ(footage::jerk(black), 0.0);
}

// 0 and 60: mean 30, both deviate by 1.
TEST(FlickerFigures, BlackFrameCountsAsLevel) {
  const Levels levels{0.0, 60.0};
  EXPECT_NEAR(footage::flickerRms(levels), 100.0, 1e-12);
  EXPECT_NEAR(footage::frameToFrameChange(levels), 200.0, 1e-12);
}

// The frame in the middle is missing: only the steps 10 -> 20 and 30 -> 50 remain, mean 15 on a
// mean level of 27.5, and no three neighbours for a bend.
TEST(FlickerFigures, NoDifferenceAcrossUnmeasuredFrame) {
  const Levels levels{10.0, 20.0, -1.0, 30.0, 50.0};
  EXPECT_NEAR(footage::frameToFrameChange(levels), 100.0 * 15.0 / 27.5, 1e-12);
  EXPECT_EQ(footage::jerk(levels), 0.0);
}

TEST(FlickerFigures, NothingMeasuredIsZero) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const Levels levels{-1.0, nan, -1.0, std::numeric_limits<double>::infinity()};
  EXPECT_EQ(footage::flickerRms(levels), 0.0);
  EXPECT_EQ(footage::frameToFrameChange(levels), 0.0);
  EXPECT_EQ(footage::jerk(levels), 0.0);
}

TEST(FlickerFigures, ScaleDoesNotMatter) {
  const Levels levels{3.0, 5.0, 4.0, 9.0, 2.0, 7.0};
  Levels scaled;
  for (double level : levels) scaled.push_back(level * 17.0);
  EXPECT_NEAR(footage::flickerRms(scaled), footage::flickerRms(levels), 1e-9);
  EXPECT_NEAR(footage::frameToFrameChange(scaled), footage::frameToFrameChange(levels), 1e-9);
  EXPECT_NEAR(footage::jerk(scaled), footage::jerk(levels), 1e-9);
}

}  // namespace
