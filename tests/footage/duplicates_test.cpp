// tests/footage/duplicates_test.cpp — repeats in made-up clips whose repeats are known.
#include "footage/duplicates.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numeric>
#include <vector>

#include "tests/footage/developing.h"
#include "tests/footage/scene.h"

namespace footage::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kWidth = 192;
constexpr double kCodecNoise = 0.4;  // deviation in a pixel, levels: means of 4 x 4 are off by 0.1

std::vector<std::int64_t> itself(std::size_t count) {
  std::vector<std::int64_t> numbers(count);
  std::iota(numbers.begin(), numbers.end(), 0);
  return numbers;
}

class DuplicatesTest : public testing::Test {
 protected:
  /// A frame of a place at x; graininess is new in each, and so is what a codec makes of it.
  FrameMeasure frame(double x, double gain, double noise) {
    Frame picture(kWidth, kWidth * 9 / 16);
    drawPlace(place_, {.x = x, .y = 1.3}, picture);
    return develop(picture, {.gain = {gain, gain, gain}}, false, noise, random_);
  }

  RandomNumbers random_{chosenSeed()};
  Place place_{random_.seed(), {.shapes = 100}};
};

TEST_F(DuplicatesTest, OfPullDownAreFoundThroughTheCodecsNoise) {
  for (const double speed : {0.004, 0.01, 0.05}) {
    std::vector<FrameMeasure> frames;
    std::vector<std::int64_t> expected;
    for (int picture = 0; picture < 40; ++picture) {
      const int times = picture % 2 == 0 ? 2 : 3;
      const double gain = 1 + 0.05 * random_.between(-1, 1);
      const auto original = static_cast<std::int64_t>(frames.size());
      for (int i = 0; i < times; ++i) {
        frames.push_back(frame(1 + speed * picture, gain, kCodecNoise));
        expected.push_back(original);
      }
    }
    EXPECT_EQ(findDuplicates(frames), expected) << speed;
  }
}

TEST_F(DuplicatesTest, OfHeldFramesAreFound) {
  std::vector<FrameMeasure> frames;
  std::vector<std::int64_t> expected;
  for (int picture = 0; picture < 30; ++picture) {
    const int times = random_.chance(0.25) ? random_.whole(2, 6) : 1;
    const auto original = static_cast<std::int64_t>(frames.size());
    for (int i = 0; i < times; ++i) {
      frames.push_back(frame(1 + 0.01 * picture, 1, kCodecNoise));
      expected.push_back(original);
    }
  }
  EXPECT_EQ(findDuplicates(frames), expected);
}

TEST_F(DuplicatesTest, ThatAreExactAreFoundInAStillShotToo) {
  const FrameMeasure a = frame(1, 1, 2);
  const FrameMeasure b = frame(1, 1, 2);
  EXPECT_THAT(findDuplicates(std::vector{a, a, b, b, b, a}), ElementsAre(0, 0, 2, 2, 2, 5));
}

TEST_F(DuplicatesTest, AreNotTheFramesOfAStillSceneThatFlickers) {
  for (const double flicker : {0.002, 0.01, 0.1}) {
    for (const double grain : {0.5, 2.0}) {
      std::vector<FrameMeasure> frames;
      for (int i = 0; i < 60; ++i) {
        frames.push_back(frame(1, 1 + flicker * random_.between(-1, 1), grain));
      }
      EXPECT_EQ(findDuplicates(frames), itself(frames.size())) << flicker << ' ' << grain;
    }
  }
}

// As a time lapse from a tripod: most frames alike, some far off.
TEST_F(DuplicatesTest, AreNotStillFramesBesideFlashes) {
  std::vector<FrameMeasure> frames;
  for (int i = 0; i < 60; ++i) {
    const double flash = i % 6 == 0 ? 1.3 : 1.0;
    frames.push_back(frame(1, flash * (1 + 0.006 * (i % 2 == 0 ? 1 : -1)), 0.5));
  }
  EXPECT_EQ(findDuplicates(frames), itself(frames.size()));
}

TEST_F(DuplicatesTest, AreNotSlowMotion) {
  for (const double speed : {0.0002, 0.0005, 0.002}) {
    std::vector<FrameMeasure> frames;
    for (int i = 0; i < 60; ++i) frames.push_back(frame(1 + speed * i, 1, kCodecNoise));
    EXPECT_EQ(findDuplicates(frames), itself(frames.size())) << speed;
  }
}

TEST_F(DuplicatesTest, AreToldInOrderAndSoon) {
  std::int64_t told = 0;
  double level = 0;
  DuplicateFinder finder([&](std::int64_t original, const FrameMeasure& measure) {
    EXPECT_LE(original, told);
    level = measure.meanLuminance;
    ++told;
  });
  for (int i = 0; i < 60; ++i) {
    FrameMeasure measure = frame(1 + 0.01 * (i / 2), 1, kCodecNoise);
    measure.meanLuminance = i;
    finder.add(measure);
    EXPECT_LE(i + 1 - told, 24);
    EXPECT_TRUE(told == 0 || level == static_cast<double>(told - 1));
  }
  finder.finish();
  EXPECT_EQ(told, 60);
}

TEST(Duplicates, OfNoFramesAreNone) {
  EXPECT_THAT(findDuplicates({}), IsEmpty());
  EXPECT_THAT(findDuplicates(std::vector<FrameMeasure>(3)), ElementsAre(0, 0, 0));
}

}  // namespace
}  // namespace footage::test
