// tests/footage/luma_profile_test.cpp — lumas behind curves against pixels carried through them.
#include "footage/luma_profile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <random>
#include <utility>
#include <vector>

namespace footage {
namespace {

constexpr LumaWeights kBt709{0.2126, 0.7152, 0.0722};

struct Painting {
  int width;
  int height;
  std::vector<std::uint8_t> bytes;

  ArgbRows rows() const { return {bytes.data(), std::ptrdiff_t{4} * width, width, height}; }
};

double lumaOf(const Painting& picture, const std::array<double, 256>& curve) {
  double sum = 0;
  for (std::size_t at = 0; at < picture.bytes.size(); at += 4) {
    sum += 0.2126 * curve[picture.bytes[at + 1]] + 0.7152 * curve[picture.bytes[at + 2]] +
           0.0722 * curve[picture.bytes[at + 3]];
  }
  return sum / (static_cast<double>(picture.bytes.size()) / 4);
}

std::array<double, 256> gainCurve(double gain) {
  std::array<double, 256> curve{};
  for (std::size_t i = 0; i < curve.size(); ++i) {
    curve[i] = std::min(255.0, gain * static_cast<double>(i));
  }
  return curve;
}

// Red runs up to white over the width, green and blue are middling, with grain.
Painting sunset(int width, int height, unsigned seed) {
  std::mt19937 random(seed);
  std::normal_distribution<double> grain(0, 6);
  Painting picture{width, height, {}};
  const auto byte = [](double v) { return static_cast<std::uint8_t>(std::clamp(v, 0.0, 255.0)); };
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      picture.bytes.push_back(255);
      picture.bytes.push_back(byte(270.0 * x / width + grain(random)));
      picture.bytes.push_back(byte(90 + 40.0 * y / height + grain(random)));
      picture.bytes.push_back(byte(40 + grain(random)));
    }
  }
  return picture;
}

TEST(LumaProfile, NothingHasNone) {
  const LumaProfile profile = profileLuma({}, kBt709);
  EXPECT_EQ(profile.mean, 0);
  EXPECT_EQ(lumaBehind(profile, gainCurve(2)), 0);
}

TEST(LumaProfile, MeanIsThatOfAllPixels) {
  for (const auto& [width, height] : {std::pair{1, 1}, {3, 2}, {640, 360}, {1, 70'000}}) {
    const Painting picture = sunset(width, height, 3);
    EXPECT_NEAR(profileLuma(picture.rows(), kBt709).mean, lumaOf(picture, gainCurve(1)), 1e-6)
        << width << " x " << height;
  }
}

TEST(LumaProfile, AFlatColourComesOutExactly) {
  const Painting picture{2,
                         2,
                         {255, 200, 100, 50, 255, 200, 100, 50,  //
                          255, 200, 100, 50, 255, 200, 100, 50}};
  const LumaProfile profile = profileLuma(picture.rows(), kBt709);
  EXPECT_NEAR(profile.mean, 0.2126 * 200 + 0.7152 * 100 + 0.0722 * 50, 1e-9);
  // Green and blue are doubled, red stops at white; 32nds round the shares.
  EXPECT_NEAR(lumaBehind(profile, gainCurve(2)), 0.2126 * 255 + 0.7152 * 200 + 0.0722 * 100, 0.5);
  EXPECT_NEAR(lumaBehind(profile, gainCurve(0.5)), profile.mean / 2, 1e-9);
}

TEST(LumaProfile, LumaBehindAGainIsThatOfThePixelsBehindIt) {
  for (const unsigned seed : {1U, 2U, 3U}) {
    const Painting picture = sunset(640, 360, seed);
    const LumaProfile profile = profileLuma(picture.rows(), kBt709);
    for (const double gain : {0.8, 0.95, 1.0, 1.05, 1.2, 1.6}) {
      const double is = lumaOf(picture, gainCurve(gain));
      EXPECT_NEAR(lumaBehind(profile, gainCurve(gain)), is, 0.0015 * is)
          << gain << ", seed " << seed;
    }
  }
}

TEST(LumaProfile, BlackBecomesWhatTheCurveMakesOfIt) {
  Painting picture{4, 4, std::vector<std::uint8_t>(64)};
  std::array<double, 256> curve = gainCurve(1);
  curve[0] = 7;
  EXPECT_NEAR(lumaBehind(profileLuma(picture.rows(), kBt709), curve), 7, 1e-9);
}

}  // namespace
}  // namespace footage
