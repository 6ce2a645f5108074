// tests/footage/targets_test.cpp — target curves against curves worked by hand.
#include "footage/targets.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
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

TEST(Targets, EveryKindIsDescribedInOneSentence) {
  for (const TargetKind& kind : kTargets) {
    EXPECT_EQ(std::count(kind.description.begin(), kind.description.end(), '.'), 1) << kind.name;
    EXPECT_EQ(kind.description.back(), '.') << kind.name;
  }
}

TEST(Targets, ARiseStaysStraightUpToBothEnds) {
  const Levels rise = line(60, 50, 1.5);
  EXPECT_THAT(medianTarget(rise, 7), Pointwise(DoubleNear(1e-9), rise));
  EXPECT_THAT(savitzkyGolayTarget(rise, 7), Pointwise(DoubleNear(1e-9), rise));
  EXPECT_THAT(rampTarget(rise, 0, 59, 7), Pointwise(DoubleNear(1e-9), rise));
}

TEST(Targets, AShotShorterThanTheWindowStaysStraightToo) {
  for (std::size_t count = 1; count < 12; ++count) {
    const Levels rise = line(count, 50, 1.5);
    EXPECT_THAT(medianTarget(rise, 20), Pointwise(DoubleNear(1e-9), rise)) << count;
    EXPECT_THAT(savitzkyGolayTarget(rise, 20), Pointwise(DoubleNear(1e-9), rise)) << count;
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
