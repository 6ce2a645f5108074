// tests/footage/outliers_test.cpp — flashes and gaps in made-up shots, put there by the test.
#include "footage/outliers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "tests/footage/developing.h"
#include "tests/footage/scene.h"

namespace footage::test {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

class OutliersTest : public testing::Test {
 protected:
  static constexpr int kFrames = 80;

  /// A shot of a place under a wandering camera; treatments by frame.
  std::vector<FrameMeasure> shoot(const std::vector<Treatment>& treatments) {
    std::vector<FrameMeasure> frames;
    for (std::size_t i = 0; i < treatments.size(); ++i) {
      Frame picture(96, 54);
      drawPlace(place_, {.x = 1 + speed_ * static_cast<double>(i), .y = 1.3}, picture);
      frames.push_back(develop(picture, treatments[i], blackWhite_, 1.5, random_));
    }
    return frames;
  }

  /// Every frame's exposure off by up to `flicker`.
  std::vector<Treatment> treatments(double flicker) {
    std::vector<Treatment> all(kFrames);
    for (Treatment& treatment : all) setGain(treatment, 1 + flicker * random_.between(-1, 1));
    return all;
  }

  static void setGain(Treatment& treatment, double gain) { treatment.gain = {gain, gain, gain}; }

  RandomNumbers random_{chosenSeed()};
  Place place_{random_.seed(), {.shapes = 80, .contrast = 0.35, .saturation = 0.2}};
  double speed_ = 0.002;
  bool blackWhite_ = false;
};

TEST_F(OutliersTest, ExposureJumpsAreFoundWithTheirRatio) {
  for (const double gain : {0.6, 0.75, 1.25, 1.4}) {
    for (const int length : {1, 2, 4}) {
      std::vector<Treatment> all = treatments(0.02);
      for (int i = 0; i < length; ++i) setGain(all[static_cast<std::size_t>(40 + i)], gain);
      const std::vector<Outlier> found = findOutliers(shoot(all));
      ASSERT_THAT(found, SizeIs(1)) << gain << ' ' << length;
      EXPECT_EQ(found[0].first, 40);
      EXPECT_EQ(found[0].last, 39 + length);
      EXPECT_EQ(found[0].kind, OutlierKind::exposureJump);
      EXPECT_NEAR(found[0].ratio, gain, 0.06 * gain);
    }
  }
}

TEST_F(OutliersTest, LightningIsRealLight) {
  for (const double side : {0.0, 0.5, 1.0}) {
    for (const int length : {1, 3}) {
      std::vector<Treatment> all = treatments(0.02);
      for (Treatment& treatment : all) setGain(treatment, 0.35 * treatment.gain[0]);  // dusk
      for (int i = 0; i < length; ++i) {
        Treatment& treatment = all[static_cast<std::size_t>(30 + i)];
        treatment.sideGain = random_.between(3, 5);
        treatment.sideX = side;
      }
      const std::vector<Outlier> found = findOutliers(shoot(all));
      ASSERT_THAT(found, SizeIs(1)) << side << ' ' << length;
      EXPECT_EQ(found[0].first, 30);
      EXPECT_EQ(found[0].last, 29 + length);
      EXPECT_EQ(found[0].kind, OutlierKind::realLight);
      EXPECT_GT(found[0].ratio, 1.13);
    }
  }
}

TEST_F(OutliersTest, BlackFramesAreAGapOfAnyLength) {
  for (const int length : {1, 4, 12}) {
    std::vector<Treatment> all = treatments(0.05);
    for (int i = 0; i < length; ++i) all[static_cast<std::size_t>(50 + i)].fade = 0;
    const std::vector<Outlier> found = findOutliers(shoot(all));
    ASSERT_THAT(found, SizeIs(1)) << length;
    EXPECT_EQ(found[0].first, 50);
    EXPECT_EQ(found[0].last, 49 + length);
    EXPECT_EQ(found[0].kind, OutlierKind::black);
  }
}

TEST_F(OutliersTest, TheFirstAndLastFrameMayBeOne) {
  std::vector<Treatment> all = treatments(0.01);
  setGain(all.front(), 1.5);
  setGain(all.back(), 0.6);
  const std::vector<Outlier> found = findOutliers(shoot(all));
  ASSERT_THAT(found, SizeIs(2));
  EXPECT_EQ(found[0].last, 0);
  EXPECT_EQ(found[1].first, kFrames - 1);
  EXPECT_EQ(found[0].kind, OutlierKind::exposureJump);
  EXPECT_EQ(found[1].kind, OutlierKind::exposureJump);
}

TEST_F(OutliersTest, AClipThatFlickersEverywhereHasNone) {
  EXPECT_THAT(findOutliers(shoot(treatments(0.4))), IsEmpty());
}

TEST_F(OutliersTest, NeitherFadesNorStepsNorLongChangesAreOutliers) {
  std::vector<Treatment> fade = treatments(0.01);
  std::vector<Treatment> step = fade;
  std::vector<Treatment> stretch = fade;
  for (std::size_t i = 0; i < fade.size(); ++i) {
    setGain(fade[i], 0.4 + 0.008 * static_cast<double>(i));
    if (i >= 40) setGain(step[i], 0.6);
    if (i >= 40 && i < 50) setGain(stretch[i], 1.3);
  }
  EXPECT_THAT(findOutliers(shoot(fade)), IsEmpty());
  EXPECT_THAT(findOutliers(shoot(step)), IsEmpty());
  EXPECT_THAT(findOutliers(shoot(stretch)), IsEmpty());
}

TEST_F(OutliersTest, AHandheldBlackAndWhiteShotIsJudgedAlike) {
  speed_ = 0.01;
  blackWhite_ = true;
  std::vector<Treatment> all = treatments(0.03);
  for (Treatment& treatment : all) setGain(treatment, 0.35 * treatment.gain[0]);
  setGain(all[20], 1.5 * all[20].gain[0]);
  all[60].sideGain = 5;
  all[60].sideX = 0.3;
  const std::vector<Outlier> found = findOutliers(shoot(all));
  ASSERT_THAT(found, SizeIs(2));
  EXPECT_EQ(found[0].kind, OutlierKind::exposureJump);
  EXPECT_EQ(found[1].kind, OutlierKind::realLight);
}

TEST(Outliers, OfVeryShortShotsAreNone) {
  EXPECT_THAT(findOutliers({}), IsEmpty());
  EXPECT_THAT(findOutliers(std::vector<FrameMeasure>(3)), IsEmpty());
}

TEST(Outliers, HaveNamesAndReasons) {
  for (OutlierKind kind : {OutlierKind::black, OutlierKind::exposureJump, OutlierKind::realLight}) {
    EXPECT_FALSE(name(kind).empty());
    EXPECT_FALSE(reason(kind).empty());
  }
}

}  // namespace
}  // namespace footage::test
