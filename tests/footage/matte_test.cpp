// tests/footage/matte_test.cpp — bars that the test itself laid over made-up shots.
#include "footage/matte.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "tests/footage/scene.h"

namespace footage::test {
namespace {

constexpr int kMatteWidth = 320;
constexpr int kMatteHeight = 180;
// Nowhere dark: a bar beside a dark picture cannot be told.
constexpr PlaceStyle kLit{.contrast = 0.4, .saturation = 0.2};

struct Bars {
  Rectangle live{0, 0, kMatteWidth, kMatteHeight};
  double level = 0;
  double noise = 0;
  double flicker = 0;  ///< of picture and bars
};

class MatteTest : public testing::Test {
 protected:
  std::vector<FrameMeasure> shoot(const PlaceStyle& style, const Bars& bars, int frames = 10) {
    const Place place(random_.seed(), style);
    std::vector<FrameMeasure> measures;
    for (int i = 0; i < frames; ++i) {
      Frame picture(kMatteWidth, kMatteHeight);
      drawPlace(place, {.x = 1 + 0.004 * i, .y = 1.3}, picture);
      measures.push_back(develop(picture, bars));
    }
    return measures;
  }

  FrameMeasure develop(const Frame& picture, const Bars& bars) {
    const double gain = 1 + bars.flicker * random_.between(-1, 1);
    std::vector<std::uint8_t> bytes(4 * picture.pixels.size());
    for (int y = 0; y < kMatteHeight; ++y) {
      for (int x = 0; x < kMatteWidth; ++x) {
        const auto at = static_cast<std::size_t>(y * kMatteWidth + x);
        const Rectangle& live = bars.live;
        const bool inside = x >= live.left && x < live.right && y >= live.top && y < live.bottom;
        const double noise = bars.noise == 0 ? 0 : bars.noise * random_.normal();
        for (std::size_t c = 0; c < 3; ++c) {
          const double level = inside ? static_cast<double>(picture.pixels[at][c]) : bars.level;
          bytes[4 * at + 1 + c] =
              static_cast<std::uint8_t>(std::lround(std::clamp(level * gain + noise, 0.0, 255.0)));
        }
      }
    }
    return measureFrame({bytes.data(), 4 * kMatteWidth, kMatteWidth, kMatteHeight});
  }

  RandomNumbers random_{chosenSeed()};
};

TEST_F(MatteTest, IsFoundToThePixel) {
  for (const Rectangle& live :
       {Rectangle{0, 22, 320, 158}, Rectangle{40, 0, 280, 180}, Rectangle{30, 20, 290, 160},
        Rectangle{0, 12, 320, 168}, Rectangle{109, 0, 211, 180}}) {
    EXPECT_EQ(findMatte(shoot(kLit, {.live = live})), live) << live.left << ' ' << live.top;
  }
}

TEST_F(MatteTest, MayBeGreyGrainyAndFlicker) {
  const Rectangle live{40, 0, 280, 180};
  const auto found =
      findMatte(shoot(kLit, {.live = live, .level = 22, .noise = 2.5, .flicker = 0.15}));
  ASSERT_TRUE(found.has_value());
  EXPECT_NEAR(found->left, live.left, 1);
  EXPECT_NEAR(found->right, live.right, 1);
  EXPECT_EQ(found->top, 0);
  EXPECT_EQ(found->bottom, kMatteHeight);
}

TEST_F(MatteTest, MayBeOfOneSide) {
  const Rectangle live{0, 0, 320, 150};
  EXPECT_EQ(findMatte(shoot(kLit, {.live = live})), live);
}

TEST_F(MatteTest, IsNotSeenInPicturesWithoutBars) {
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(findMatte(shoot({}, {})), std::nullopt);
    EXPECT_EQ(findMatte(shoot({.night = true}, {.noise = 1})), std::nullopt);
  }
}

// A night sky, even and all but black, over a skyline that is not straight.
TEST_F(MatteTest, IsNotANightSky) {
  std::vector<FrameMeasure> measures;
  for (int i = 0; i < 10; ++i) {
    Frame picture(kMatteWidth, kMatteHeight);
    for (int y = 0; y < kMatteHeight; ++y) {
      for (int x = 0; x < kMatteWidth; ++x) {
        const double skyline = 60 + 25 * std::sin(0.03 * x) + 12 * std::sin(0.11 * x + 1);
        const float level = y > skyline ? 60.0F : 6.0F;
        picture.pixels[static_cast<std::size_t>(y * kMatteWidth + x)] = {level, level, level};
      }
    }
    measures.push_back(develop(picture, {.noise = 1}));
  }
  EXPECT_EQ(findMatte(measures), std::nullopt);
}

TEST_F(MatteTest, CannotBeToldInTheDark) {
  EXPECT_EQ(findMatte(std::vector<FrameMeasure>(5, develop(Frame(kMatteWidth, kMatteHeight), {}))),
            std::nullopt);
  EXPECT_EQ(findMatte({}), std::nullopt);
}

TEST_F(MatteTest, OutlastsDarkAndSpoiledFrames) {
  const Rectangle live{0, 22, 320, 158};
  std::vector<FrameMeasure> frames = shoot(kLit, {.live = live}, 40);
  for (std::size_t i = 0; i < 15; ++i) {
    frames[i] = develop(Frame(kMatteWidth, kMatteHeight), {.noise = 1});  // faded out
  }
  frames[20] = shoot({}, {}, 1)[0];  // a frame without bars
  frames.push_back(measureFrame({}));
  EXPECT_EQ(findMatte(frames), live);
}

}  // namespace
}  // namespace footage::test
