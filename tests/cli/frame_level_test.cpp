// tests/cli/frame_level_test.cpp — mean brightness at every depth.
#include "cli/frame_level.h"

#include <gtest/gtest.h>

#include <limits>
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

TEST(FrameLevel, IsAlwaysANumber) {
  const std::vector<float> bad(4, std::numeric_limits<float>::quiet_NaN());
  EXPECT_EQ(frameLevel(view(bad, 1, 1, media::Depth::floating), {}), 0.0);
}

}  // namespace
}  // namespace cli
