// tests/cli/job/frame_level_test.cpp — mean brightness at every depth.
#include "cli/job/frame_level.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <vector>

namespace cli {
namespace {

template <typename Component>
media::ConstArgbView view(const std::vector<Component>& pixels, int width, int height,
                          media::Depth depth) {
  return {pixels.data(), static_cast<std::ptrdiff_t>(sizeof(Component)) * 4 * width, width, height,
          depth};
}

TEST(FrameLevel, WeighsTheColoursAndIgnoresAlpha) {
  const std::vector<std::uint8_t> pixels{9, 100, 0, 0, 255, 0, 100, 0, 0, 0, 0, 100, 7, 10, 10, 10};
  const double expected = (30.0 + 59.0 + 11.0 + 10.0) / 4.0;
  EXPECT_NEAR(frameLevel(view(pixels, 2, 2, media::Depth::eight), {}), expected, 1e-9);
}

TEST(FrameLevel, HasOneScaleAtEveryDepth) {
  const std::vector<std::uint16_t> deep(4, 32768);
  EXPECT_NEAR(frameLevel(view(deep, 1, 1, media::Depth::sixteen), {}), 255.0, 1e-9);
  const std::vector<float> floating(4, 0.5F);
  EXPECT_NEAR(frameLevel(view(floating, 1, 1, media::Depth::floating), {}), 127.5, 1e-5);
}

TEST(FrameLevel, MeasuresTheAreaOnly) {
  std::vector<std::uint8_t> pixels(4 * 4 * 4, 50);
  for (std::size_t i = 0; i < 4; ++i) pixels[(1 * 4 + 2) * 4 + i] = 250;
  EXPECT_NEAR(frameLevel(view(pixels, 4, 4, media::Depth::eight), {2, 1, 3, 2, false}), 250.0,
              1e-9);
  EXPECT_NEAR(frameLevel(view(pixels, 4, 4, media::Depth::eight), {1, 1, 3, 2, false}), 150.0,
              1e-9);
}

TEST(FrameLevel, FavorsBrighterPixelsWhenAsked) {
  const std::vector<std::uint8_t> pixels{255, 0, 0, 0, 255, 200, 200, 200};
  EXPECT_NEAR(frameLevel(view(pixels, 2, 1, media::Depth::eight), {0, 0, 0, 0, true}), 200.0, 1e-9);
  EXPECT_NEAR(frameLevel(view(pixels, 2, 1, media::Depth::eight), {}), 100.0, 1e-9);
}

TEST(FrameLevel, IsTheMeanOfRandomPicturesAtEveryDepthAndWidth) {
  const auto seed = std::random_device{}();
  SCOPED_TRACE(seed);
  std::mt19937 random(seed);
  const auto compare = [&](auto white, media::Depth depth, int width, bool favorBrighter) {
    using Component = decltype(white);
    std::vector<Component> pixels(static_cast<std::size_t>(width) * 5 * 4);
    for (Component& c : pixels) {
      c = static_cast<Component>(static_cast<double>(white) * static_cast<double>(random() % 4096) /
                                 4095.0);
    }
    double level = 0.0;
    double square = 0.0;
    for (std::size_t i = 0; i < pixels.size(); i += 4) {
      const double value =
          255.0 / static_cast<double>(white) *
          (0.3 * static_cast<double>(pixels[i + 1]) + 0.59 * static_cast<double>(pixels[i + 2]) +
           0.11 * static_cast<double>(pixels[i + 3]));
      level += value;
      square += value * value;
    }
    const double expected = favorBrighter ? square / level : level / (5.0 * width);
    EXPECT_NEAR(frameLevel(view(pixels, width, 5, depth), {0, 0, 0, 0, favorBrighter}), expected,
                1e-6)
        << width;
  };
  for (const int width : {1, 7, 64, 1923}) {
    for (const bool favorBrighter : {false, true}) {
      compare(std::uint8_t{255}, media::Depth::eight, width, favorBrighter);
      compare(std::uint16_t{32768}, media::Depth::sixteen, width, favorBrighter);
      compare(1.0F, media::Depth::floating, width, favorBrighter);
    }
  }
}

TEST(FrameLevel, ReadsTheWholeRangeOfBytes) {
  for (const int width : {3, 1024, 1025, 5000}) {
    const std::vector<std::uint8_t> white(static_cast<std::size_t>(width) * 4, 255);
    EXPECT_NEAR(frameLevel(view(white, width, 1, media::Depth::eight), {}), 255.0, 1e-9) << width;
  }
}

TEST(FrameLevel, ReadsEveryThirdRowOfTallFramesAndSoBothFields) {
  constexpr int kHeight = 1080;
  std::vector<std::uint8_t> pixels(std::size_t{4} * kHeight);
  for (std::size_t y = 0; y < kHeight; ++y) {
    // What must not count is white; of what counts, the fields differ.
    const std::uint8_t level = y % 3 != 0 ? 255 : y % 2 == 0 ? 40 : 60;
    std::fill_n(pixels.begin() + static_cast<std::ptrdiff_t>(4 * y), 4, level);
  }
  EXPECT_NEAR(frameLevel(view(pixels, 1, kHeight, media::Depth::eight), {}), 50.0, 1e-9);
  EXPECT_NEAR(frameLevel(view(pixels, 1, 720, media::Depth::eight), {}), (255.0 * 2 + 50.0) / 3,
              1e-9);
}

TEST(FrameLevel, IsAlwaysANumber) {
  const std::vector<float> bad(4, std::numeric_limits<float>::quiet_NaN());
  EXPECT_EQ(frameLevel(view(bad, 1, 1, media::Depth::floating), {}), 0.0);
}

}  // namespace
}  // namespace cli
