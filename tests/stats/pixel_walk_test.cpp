// tests/stats/pixel_walk_test.cpp — the walk against the plain rule, pixel by pixel.
#include "stats/pixel_walk.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

#include "tests/stats/random_source.h"
#include "tests/stats/test_picture.h"

namespace varilum {
namespace {

using test::RandomSource;
using test::RowOrder;
using test::TestPicture;

int plainLevel(std::uint8_t value) {
  return value;
}
int plainLevel(std::uint16_t value) {
  return (value >> 7) & 255;
}
int plainLevel(float value) {
  const double scaled = static_cast<double>(value) * 255.0;
  if (std::isnan(scaled) || std::trunc(scaled) < -2147483648.0 ||
      std::trunc(scaled) > 2147483647.0) {
    return 0;
  }
  return static_cast<int>(static_cast<std::int64_t>(scaled) & 255);
}

int plainLuminance(int red, int green, int blue) {
  const double wr = red * 0.3;
  const double wg = green * 0.59;
  const double wb = blue * 0.11;
  return static_cast<int>(wr + wg + wb + 0.5);
}

template <class Pixel>
FrameHistogram plainWalk(const TestPicture<Pixel>& picture, const Rect& rect, std::int32_t step) {
  FrameHistogram histogram;
  resetFrameHistogram(histogram);
  for (std::int64_t y = rect.top; y < rect.bottom; y += step) {
    for (std::int64_t x = rect.left; x < rect.right; x += step) {
      const Pixel pixel = picture.get(static_cast<std::int32_t>(x), static_cast<std::int32_t>(y));
      const int red = plainLevel(pixel.red);
      const int green = plainLevel(pixel.green);
      const int blue = plainLevel(pixel.blue);
      ++histogram.red[red];
      ++histogram.green[green];
      ++histogram.blue[blue];
      ++histogram.luminance[plainLuminance(red, green, blue)];
    }
  }
  return histogram;
}

template <class Pixel>
void expectPlainWalk(const TestPicture<Pixel>& picture, const Rect& rect, std::int32_t step) {
  const auto before = picture.bytes();
  FrameHistogram actual;
  resetFrameHistogram(actual);
  walkPixels(picture.view(), rect, step, actual);
  const FrameHistogram expected = plainWalk(picture, rect, step);
  EXPECT_EQ(std::memcmp(&actual, &expected, sizeof expected), 0)
      << "rect " << rect.left << ' ' << rect.top << ' ' << rect.right << ' ' << rect.bottom
      << ", step " << step;
  EXPECT_EQ(picture.bytes(), before);
}

PF_Pixel randomPixel(RandomSource& random, const PF_Pixel*) {
  return {random.byte(), random.byte(), random.byte(), random.byte()};
}
PF_Pixel16 randomPixel(RandomSource& random, const PF_Pixel16*) {
  const auto channel = [&] {
    return static_cast<std::uint16_t>(random.between(0, random.chance(0.1) ? 65535 : 32768));
  };
  return {channel(), channel(), channel(), channel()};
}
PF_PixelFloat randomPixel(RandomSource& random, const PF_PixelFloat*) {
  const auto channel = [&] {
    if (random.chance(0.1)) {  // any bits: infinities, NaN, huge and tiny numbers
      const auto bits = static_cast<std::uint32_t>(random.bits());
      float value;
      std::memcpy(&value, &bits, sizeof value);
      return value;
    }
    return static_cast<float>(random.real(-0.2, 1.5));
  };
  return {channel(), channel(), channel(), channel()};
}

template <class Pixel>
class PixelWalk : public ::testing::Test {};
using Pixels = ::testing::Types<PF_Pixel, PF_Pixel16, PF_PixelFloat>;
TYPED_TEST_SUITE(PixelWalk, Pixels);

TYPED_TEST(PixelWalk, EqualsThePlainRuleOnRandomPicturesRectanglesAndSteps) {
  RandomSource random;
  for (int round = 0; round < 150; ++round) {
    const std::int32_t width = random.between(1, round % 10 == 0 ? 1700 : 90);
    const std::int32_t height = random.between(1, 40);
    TestPicture<TypeParam> picture(width, height, random.between(0, 3) * 7,
                                   random.chance(0.5) ? RowOrder::topDown : RowOrder::bottomUp,
                                   static_cast<std::size_t>(random.between(0, 3)));
    for (std::int32_t y = 0; y < height; ++y) {
      for (std::int32_t x = 0; x < width; ++x) {
        picture.set(x, y, randomPixel(random, static_cast<const TypeParam*>(nullptr)));
      }
    }
    const std::int32_t left = random.between(0, width);
    const std::int32_t top = random.between(0, height);
    const Rect rect{left, top, random.between(left, width), random.between(top, height)};
    expectPlainWalk(picture, {0, 0, width, height}, 1);
    expectPlainWalk(picture, rect, random.between(1, 6));
  }
}

// So many pixels that red and blue are counted together; with step 2 too few again.
TYPED_TEST(PixelWalk, EqualsThePlainRuleOnALargePicture) {
  RandomSource random;
  const std::int32_t width = random.between(701, 720);
  TestPicture<TypeParam> picture(width, 300, 7, RowOrder::bottomUp);
  auto pixel = randomPixel(random, static_cast<const TypeParam*>(nullptr));
  for (std::int32_t y = 0; y < 300; ++y) {
    for (std::int32_t x = 0; x < width; ++x) {
      const bool isFlat = x / 40 % 3 == 0;  // stretches of one colour among those of many
      if (!isFlat) pixel = randomPixel(random, static_cast<const TypeParam*>(nullptr));
      picture.set(x, y, pixel);
    }
  }
  for (const std::int32_t step : {1, 2}) {
    expectPlainWalk(picture, {0, 0, width, 300}, step);
    expectPlainWalk(picture, {3, 2, width - 1, 299}, step);
  }
}

TYPED_TEST(PixelWalk, TakesEveryWidthAroundItsInnerPieces) {
  RandomSource random;
  for (const std::int32_t width :
       {1, 2, 3, 4, 5, 7, 8, 9, 15, 16, 17, 255, 256, 257, 511, 512, 513, 1023, 1024, 1025}) {
    TestPicture<TypeParam> picture(width, 2, 5);
    for (std::int32_t x = 0; x < width; ++x) {
      picture.set(x, 0, randomPixel(random, static_cast<const TypeParam*>(nullptr)));
      picture.set(x, 1, randomPixel(random, static_cast<const TypeParam*>(nullptr)));
    }
    for (const std::int32_t step : {1, 2, 3, 5}) expectPlainWalk(picture, {0, 0, width, 2}, step);
  }
}

TYPED_TEST(PixelWalk, SamplesTheFirstPixelOnlyWithAGiantStep) {
  TestPicture<TypeParam> picture(9, 9);
  FrameHistogram histogram;
  resetFrameHistogram(histogram);
  walkPixels(picture.view(), {2, 3, 9, 9}, std::numeric_limits<std::int32_t>::max(), histogram);
  EXPECT_EQ(histogram.luminance[0], 1u);
}

TYPED_TEST(PixelWalk, CountsNothingInEmptyRectanglesOrWithoutData) {
  TestPicture<TypeParam> picture(9, 9);
  FrameHistogram histogram;
  resetFrameHistogram(histogram);
  for (const Rect rect : {Rect{3, 0, 3, 9}, Rect{5, 0, 3, 9}, Rect{0, 4, 9, 4}, Rect{0, 9, 9, 0}}) {
    walkPixels(picture.view(), rect, 1, histogram);
  }
  PixelBuffer absent = picture.view();
  absent.data = nullptr;
  walkPixels(absent, {0, 0, 9, 9}, 1, histogram);
  FrameHistogram fresh;
  resetFrameHistogram(fresh);
  EXPECT_EQ(std::memcmp(&histogram, &fresh, sizeof fresh), 0);
}

TYPED_TEST(PixelWalk, AddsToWhatIsThereAndLeavesTheFrameIndex) {
  TestPicture<TypeParam> picture(10, 10);
  FrameHistogram histogram;
  resetFrameHistogram(histogram);
  histogram.frame = 77;
  histogram.green[0] = 5;
  walkPixels(picture.view(), {0, 0, 10, 10}, 1, histogram);
  walkPixels(picture.view(), {0, 0, 10, 10}, 1, histogram);
  EXPECT_EQ(histogram.frame, 77);
  EXPECT_EQ(histogram.green[0], 205u);
  EXPECT_EQ(histogram.luminance[0], 200u);
}

TEST(PixelWalk16, CountsWhiteInBinZero) {
  TestPicture<PF_Pixel16> picture(4, 1);
  picture.fill({32768, 32768, 32768, 32768});
  picture.set(0, 0, {0, 32767, 128, 127});
  FrameHistogram histogram;
  resetFrameHistogram(histogram);
  walkPixels(picture.view(), {0, 0, 4, 1}, 1, histogram);
  EXPECT_EQ(histogram.red[0], 3u);
  EXPECT_EQ(histogram.red[255], 1u);
  EXPECT_EQ(histogram.green[1], 1u);
  EXPECT_EQ(histogram.blue[0], 4u);
  EXPECT_EQ(histogram.luminance[0], 3u);
  EXPECT_EQ(histogram.luminance[77], 1u);  // 255 x 0.3 + 0.59 = 77.09
}

TEST(PixelWalkFloat, WrapsBeyondWhiteAndCountsTheUnreadableAsZero) {
  const struct {
    float value;
    int level;
  } cases[] = {{0.0f, 0},      {1.0f, 255},        {1.01f, 1},
               {1.5f, 126},    {-0.001f, 0},       {-0.01f, 254},
               {1e9f, 0},      {-1e9f, 0},         {std::numeric_limits<float>::quiet_NaN(), 0},
               {0.5f, 127},    {8421504.0f, 128},  {std::numeric_limits<float>::infinity(), 0},
               {1e38f, 0},     {-8421504.0f, 128}, {-std::numeric_limits<float>::infinity(), 0},
               {8421505.0f, 0}};
  for (const auto& [value, level] : cases) {
    TestPicture<PF_PixelFloat> picture(1, 1);
    picture.fill({1.0f, value, value, value});
    FrameHistogram histogram;
    resetFrameHistogram(histogram);
    walkPixels(picture.view(), {0, 0, 1, 1}, 1, histogram);
    EXPECT_EQ(histogram.red[level], 1u) << value;
    EXPECT_EQ(histogram.green[level], 1u) << value;
    EXPECT_EQ(histogram.blue[level], 1u) << value;
    EXPECT_EQ(histogram.luminance[level], 1u) << value;
  }
}

}  // namespace
}  // namespace varilum
