// tests/footage/targets_test.cpp — target curves against curves worked by hand.
#include "footage/targets.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <random>
#include <string>

namespace footage {
namespace {

using testing::DoubleNear;
using testing::Each;
using testing::ElementsAre;
using testing::Pointwise;
using Levels = std::vector<double>;

Levels line(std::size_t count, double level, double slope) {
  Levels levels(count);
  for (std::size_t i = 0; i < count; ++i) levels[i] = level + slope * static_cast<double>(i);
  return levels;
}

TEST(Targets, ARiseStaysStraightUpToBothEnds) {
  const Levels rise = line(60, 50, 1.5);
  EXPECT_THAT(medianTarget(rise, 7), Pointwise(DoubleNear(1e-9), rise));
  EXPECT_THAT(savitzkyGolayTarget(rise, 7), Pointwise(DoubleNear(1e-9), rise));
  EXPECT_THAT(loessTarget(rise, 7), Pointwise(DoubleNear(1e-9), rise));
  EXPECT_THAT(rampTarget(rise, 0, 59, 7), Pointwise(DoubleNear(1e-9), rise));
}

TEST(Targets, AShotShorterThanTheWindowStaysStraightToo) {
  for (std::size_t count = 1; count < 12; ++count) {
    const Levels rise = line(count, 50, 1.5);
    EXPECT_THAT(medianTarget(rise, 20), Pointwise(DoubleNear(1e-9), rise)) << count;
    EXPECT_THAT(savitzkyGolayTarget(rise, 20), Pointwise(DoubleNear(1e-9), rise)) << count;
    EXPECT_THAT(loessTarget(rise, 20), Pointwise(DoubleNear(1e-9), rise)) << count;
  }
}

TEST(Targets, MedianIgnoresFlashesAtTheEndsAsWell) {
  Levels levels = line(60, 100, 0.5);
  const Levels clean = levels;
  for (std::size_t at : {0U, 1U, 20U, 21U, 22U, 40U, 59U}) levels[at] *= 1.8;
  const Levels targets = medianTarget(levels, 7);
  EXPECT_THAT(targets, Pointwise(DoubleNear(1.0), clean));
}

TEST(Targets, MedianTakesOutWhatFlickers) {
  std::mt19937 random(5);
  std::uniform_real_distribution<double> gain(0.9, 1.1);
  Levels levels(200);
  for (double& level : levels) level = 100 * gain(random);
  EXPECT_THAT(medianTarget(levels, 10), Each(DoubleNear(100, 5)));
}

// The weights of the five-point quadratic: (-3, 12, 17, 12, -3) / 35.
TEST(Targets, SavitzkyGolayHasItsPublishedWeights) {
  Levels levels(9, 35.0);
  levels[4] = 70.0;
  const Levels targets = savitzkyGolayTarget(levels, 2);
  EXPECT_THAT(std::vector<double>(targets.begin() + 2, targets.begin() + 7),
              ElementsAre(DoubleNear(32, 1e-9), DoubleNear(47, 1e-9), DoubleNear(52, 1e-9),
                          DoubleNear(47, 1e-9), DoubleNear(32, 1e-9)));
}

// Weights (1 - (d / 3)^2)^2 for d = 0, 1, 2: 81, 64 and 25 of 81 + 2 (64 + 25) = 259.
TEST(Targets, LoessWeighsNearFramesMore) {
  Levels levels(9, 259.0);
  levels[4] = 518.0;
  const Levels targets = loessTarget(levels, 2);
  EXPECT_THAT(std::vector<double>(targets.begin() + 2, targets.begin() + 7),
              ElementsAre(DoubleNear(284, 1e-9), DoubleNear(323, 1e-9), DoubleNear(340, 1e-9),
                          DoubleNear(323, 1e-9), DoubleNear(284, 1e-9)));
}

// At an end the window is as long, and the line is fitted to it by another method: normal equations
// about the frame, solved by hand for a window of three frames, weights 81, 64 and 25.
TEST(Targets, LoessIsALineThroughTheEnd) {
  const Levels levels{100, 110, 90, 95, 105};
  const double n = 81 + 64 + 25;
  const double x = 64 * 1 + 25 * 2;
  const double xx = 64 * 1 + 25 * 4;
  const double y = 81 * 100 + 64 * 110 + 25 * 90;
  const double xy = 64 * 110 + 25 * 2 * 90;
  EXPECT_NEAR(loessTarget(levels, 1).front(), (xx * y - x * xy) / (n * xx - x * x), 1e-9);
}

double secondDifference(const Levels& levels) {
  double sum = 0;
  for (std::size_t i = 2; i < levels.size(); ++i) {
    sum += std::abs(levels[i] - 2 * levels[i - 1] + levels[i - 2]);
  }
  return sum / static_cast<double>(levels.size() - 2);
}

// A plain mean over 2 n + 1 frames leaves 2 / (2 n + 1) of uncorrelated flicker's deviation in the
// second difference.
TEST(Targets, LoessLeavesFarLessJerkThanAPlainMeanOfAsManyFrames) {
  constexpr unsigned kSeed = 8;
  std::mt19937 random(kSeed);
  std::normal_distribution<double> flicker(100, 5);
  Levels levels(400);
  for (double& level : levels) level = flicker(random);
  for (const int radius : {5, 10, 30}) {
    const double width = 2 * radius + 1;
    Levels means;
    for (std::size_t i = 0; i + static_cast<std::size_t>(2 * radius) < levels.size(); ++i) {
      const auto first = levels.begin() + static_cast<std::ptrdiff_t>(i);
      means.push_back(std::accumulate(first, first + 2 * radius + 1, 0.0) / width);
    }
    EXPECT_LT(secondDifference(loessTarget(levels, radius)), 0.4 * secondDifference(means))
        << "radius " << radius << ", seed " << kSeed;
  }
}

TEST(Targets, LoessPassesOverFramesWithoutALevel) {
  Levels levels = line(40, 50, 1.5);
  const Levels straight = levels;
  for (const std::size_t gone : {0U, 7U, 8U, 9U, 39U}) levels[gone] = 0;
  const Levels targets = loessTarget(levels, 5);
  EXPECT_THAT(Levels(targets.begin() + 1, targets.end() - 1),
              Pointwise(DoubleNear(1e-9), Levels(straight.begin() + 1, straight.end() - 1)));
}

TEST(Targets, SavitzkyGolayFollowsAParabolaInside) {
  Levels levels(40);
  for (std::size_t i = 0; i < levels.size(); ++i) {
    const double x = static_cast<double>(i) - 20;
    levels[i] = 200 - 0.2 * x * x;
  }
  const Levels targets = savitzkyGolayTarget(levels, 5);
  for (std::size_t i = 5; i < 35; ++i) EXPECT_NEAR(targets[i], levels[i], 1e-8) << i;
}

TEST(Targets, SavitzkyGolayFollowsTheLastFrameLessThanHalf) {
  Levels levels(40, 100);
  levels.back() = 110;
  EXPECT_LT(savitzkyGolayTarget(levels, 5).back(), 104);
}

TEST(Targets, ConstantIsTheMedianOfFramesWithALevel) {
  EXPECT_THAT(constantTarget(Levels{0, 10, 30, std::nan(""), 20, -1}), Each(20.0));
}

TEST(Targets, RampIsStraightBetweenItsFramesAndHeldBeyond) {
  Levels levels(11, 40);
  std::fill(levels.begin() + 6, levels.end(), 80.0);
  EXPECT_THAT(rampTarget(levels, 8, 3, 0), ElementsAre(40, 40, 40, 40, 48, 56, 64, 72, 80, 80, 80));
  EXPECT_THAT(rampTarget(levels, -5, 99, 0),
              ElementsAre(40, 44, 48, 52, 56, 60, 64, 68, 72, 76, 80));
}

TEST(Targets, RampDoesNotStandOnAFlash) {
  Levels levels = line(50, 60, 1);
  levels[10] = 200;
  EXPECT_NEAR(rampTarget(levels, 10, 40, 4)[10], 70, 1);
}

TEST(Targets, PointsAreJoinedByLines) {
  const std::vector<LevelPoint> points{{-2, 10}, {2, 30}, {4, 20}};
  EXPECT_THAT(pointsTarget(points, 7), ElementsAre(20, 25, 30, 25, 20, 20, 20));
  EXPECT_THAT(pointsTarget({}, 2), ElementsAre(0, 0));
}

TEST(Targets, FramesWithoutALevelGetATargetAndChangeNoOther) {
  const Levels whole = line(60, 50, 1);
  Levels levels = whole;
  for (std::size_t at = 20; at < 50; ++at) levels[at] = at % 2 == 0 ? 0.0 : std::nan("");
  EXPECT_THAT(savitzkyGolayTarget(levels, 4), Pointwise(DoubleNear(1e-6), whole));
  EXPECT_THAT(medianTarget(levels, 4), Pointwise(DoubleNear(2.5), whole));
  levels = Levels{0, 0, 50, 60, 70, 0};
  EXPECT_THAT(savitzkyGolayTarget(levels, 1),
              ElementsAre(DoubleNear(50, 1e-9), DoubleNear(50, 1e-9), DoubleNear(50, 1e-9),
                          DoubleNear(60, 1e-9), DoubleNear(70, 1e-9), DoubleNear(70, 1e-9)));
}

TEST(Targets, WithoutAnyLevelAllAreZero) {
  const Levels none{0, -1, std::nan("")};
  EXPECT_THAT(medianTarget(none, 2), ElementsAre(0, 0, 0));
  EXPECT_THAT(savitzkyGolayTarget(none, 2), ElementsAre(0, 0, 0));
  EXPECT_THAT(constantTarget(none), ElementsAre(0, 0, 0));
  EXPECT_THAT(rampTarget(none, 0, 2, 2), ElementsAre(0, 0, 0));
  EXPECT_TRUE(medianTarget({}, 2).empty());
}

}  // namespace
}  // namespace footage
