// tests/cli/shots/shot_settings_test.cpp — the clip's frames in options become pictures of a shot.
#include "cli/shots/shot_settings.h"

#include <gtest/gtest.h>

namespace cli {
namespace {

using Spans = std::vector<FrameSpan>;

ShotFindings shotOf(ShotFrames frames) {
  return {std::move(frames), {}, {}};
}

EffectOptions leaving(Spans spans) {
  EffectOptions options;
  options.dontDeflicker = Switch<Spans>{true, std::move(spans)};
  return options;
}

void expectKeys(const std::vector<LevelKey>& keys,
                const std::vector<std::pair<std::int64_t, double>>& expected) {
  ASSERT_EQ(keys.size(), expected.size());
  for (std::size_t i = 0; i < keys.size(); ++i) {
    EXPECT_EQ(keys[i].frame, expected[i].first) << i;
    EXPECT_NEAR(keys[i].value, expected[i].second, 1e-9) << i;
  }
}

TEST(ShotSettings, OneLevelHoldsEverywhere) {
  EffectOptions clip;
  clip.luminance = {{std::nullopt, 90.0}};
  const auto keys = optionsWithin(shotOf({50, 10}), clip).luminance;
  ASSERT_EQ(keys.size(), 1U);
  EXPECT_FALSE(keys[0].frame);
  EXPECT_EQ(keys[0].value, 90.0);
}

TEST(ShotSettings, KeyframesOfAWholeClipStay) {
  EffectOptions clip;
  clip.luminance = {{5, 110.0}, {1, 70.0}};
  expectKeys(optionsWithin(shotOf({0, 10}), clip).luminance, {{1, 70.0}, {5, 110.0}});
}

TEST(ShotSettings, ACurveGoesOnAcrossCuts) {
  EffectOptions clip;
  clip.luminance = {{0, 100.0}, {20, 140.0}};  // 2 a frame
  expectKeys(optionsWithin(shotOf({0, 10}), clip).luminance, {{0, 100.0}, {9, 118.0}});
  expectKeys(optionsWithin(shotOf({10, 5}), clip).luminance, {{0, 120.0}, {4, 128.0}});
  expectKeys(optionsWithin(shotOf({15, 20}), clip).luminance, {{0, 130.0}, {5, 140.0}});
  expectKeys(optionsWithin(shotOf({35, 5}), clip).luminance, {{0, 140.0}});
}

TEST(ShotSettings, AHeldPictureTakesItsFirstFramesLevel) {
  EffectOptions clip;
  clip.luminance = {{10, 100.0}, {15, 150.0}};  // 10 a frame
  // Frames 10 11 11' 11" 14 15 are pictures 0 1 1 1 2 3.
  expectKeys(optionsWithin(shotOf({10, 6, {12, 13}}), clip).luminance,
             {{0, 100.0}, {1, 110.0}, {2, 140.0}, {3, 150.0}});
}

TEST(ShotSettings, FramesToBeLeftCountInPictures) {
  const ShotFindings shot = shotOf({10, 6, {12, 13}});
  EXPECT_EQ(optionsWithin(shot, leaving({{0, 9}})).dontDeflicker->value, Spans{});
  EXPECT_EQ(optionsWithin(shot, leaving({{16, std::nullopt}})).dontDeflicker->value, Spans{});
  EXPECT_EQ(optionsWithin(shot, leaving({{0, 10}})).dontDeflicker->value, (Spans{{0, 0}}));
  // A frame that repeats another is the other's picture.
  EXPECT_EQ(optionsWithin(shot, leaving({{13, 13}})).dontDeflicker->value, (Spans{{1, 1}}));
  EXPECT_EQ(optionsWithin(shot, leaving({{14, std::nullopt}})).dontDeflicker->value,
            (Spans{{2, 3}}));
}

TEST(ShotSettings, OutliersThatAreLeftJoinThem) {
  ShotFindings shot = shotOf({100, 50});
  EXPECT_FALSE(optionsWithin(shot, {}).dontDeflicker);
  shot.outliers = {{{110, 112, footage::OutlierKind::realLight, 1.8}, true},
                   {{120, 120, footage::OutlierKind::exposureJump, 1.3}, false}};
  EXPECT_EQ(optionsWithin(shot, {}).dontDeflicker->value, (Spans{{10, 12}}));
  EXPECT_EQ(optionsWithin(shot, leaving({{140, 140}})).dontDeflicker->value,
            (Spans{{40, 40}, {10, 12}}));
}

TEST(ShotSettings, PointsOfATargetAreKeyframes) {
  EffectOptions clip;
  clip.target = Target{Target::Kind::points, 0, 0, {{0, 100.0}, {20, 140.0}}};
  expectKeys(optionsWithin(shotOf({10, 5}), clip).luminance, {{0, 120.0}, {4, 128.0}});
}

}  // namespace
}  // namespace cli
