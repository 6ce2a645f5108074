// tests/stats/pixel_walk_kernels_test.cpp — every set of kernels against the plain rule.
#include "stats/pixel_walk_kernels.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "stats/pixel_walk.h"
#include "tests/stats/random_source.h"
#include "tests/stats/test_picture.h"

namespace varilum {
namespace {

using test::RandomSource;
using test::RowOrder;
using test::TestPicture;

// Those that this processor runs.
std::vector<const WalkKernels*> runnableKernels() {
  std::vector<const WalkKernels*> all = {&kPlainWalk};
#if defined(__x86_64__)
  all.push_back(&kSse2Walk);
  if (canRunAvx2Walk()) all.push_back(&kAvx2Walk);
#endif
  return all;
}

int ruleOf(int red, int green, int blue) {
  const double wr = red * 0.3;
  const double wg = green * 0.59;
  const double wb = blue * 0.11;
  return static_cast<int>(wr + wg + wb + 0.5);
}

TEST(WalkKernels, TheQuickestIsChosen) {
#if defined(__x86_64__)
  EXPECT_EQ(&bestWalkKernels(), canRunAvx2Walk() ? &kAvx2Walk : &kSse2Walk);
#else
  EXPECT_EQ(&bestWalkKernels(), &kPlainWalk);
#endif
}

TEST(WalkKernels, PairAllColoursByTheRuleButForMarkedTies) {
  for (const WalkKernels* kernels : runnableKernels()) {
    std::int64_t wrong = 0;
    std::uint8_t pixels[kWalkPiece][4];
    WalkPairs pairs;
    for (int red = 0; red < 256; ++red) {
      for (int green = 0; green < 256; ++green) {
        for (int blue = 0; blue < 256; ++blue) {
          const int channels[4] = {red ^ green ^ blue, red, green, blue};
          for (int i = 0; i < 4; ++i) pixels[blue][i] = static_cast<std::uint8_t>(channels[i]);
        }
        kernels->pair(reinterpret_cast<const std::byte*>(pixels), kWalkPiece, pairs);
        for (int blue = 0; blue < 256; ++blue) {
          const bool isTie = pairs.ties[blue / 16] >> blue % 16 & 1;
          const int exact = 30 * red + 59 * green + 11 * blue + 50;
          const int level = isTie ? exact / 100 : ruleOf(red, green, blue);
          if (pairs.greenLuminance[blue] != 105 * green + level || (isTie && exact % 100 != 0) ||
              pairs.redBlue[blue] != 256 * red + blue) {
            ++wrong;
          }
        }
      }
    }
    EXPECT_EQ(wrong, 0) << kernels->name;
  }
}

TEST(WalkKernels, NoTwoPairsShareAnIndex) {
  std::vector<int> owner(kGreenPairs, -1);
  for (int green = 0; green < 256; ++green) {
    for (int level = ruleOf(0, green, 0); level <= ruleOf(255, green, 255); ++level) {
      int& pair = owner.at(static_cast<std::size_t>(kGreenStride * green + level));
      EXPECT_EQ(pair, -1) << green << ' ' << level;
      pair = green;
    }
  }
}

// Kernels that count the pixels they are given and pass them on.
const WalkKernels* g_inner = nullptr;
std::int64_t g_paired = 0;
std::int64_t g_read = 0;
const WalkKernels kCounting = {"counting",
                               [](const std::byte* pixels, int count, WalkPairs& pairs) {
                                 g_paired += count;
                                 g_inner->pair(pixels, count, pairs);
                               },
                               [](const std::byte* pixels, int count, LevelWord* words) {
                                 g_read += count;
                                 g_inner->read16(pixels, count, words);
                               },
                               [](const std::byte* pixels, int count, LevelWord* words) {
                                 g_read += count;
                                 g_inner->readFloat(pixels, count, words);
                               }};

PF_Pixel anyPixel(RandomSource& random, const PF_Pixel*) {
  const std::uint64_t bits = random.bits();
  PF_Pixel pixel;
  std::memcpy(&pixel, &bits, sizeof pixel);
  if (random.chance(0.2)) pixel.red = pixel.green = pixel.blue = random.chance(0.5) ? 255 : 0;
  return pixel;
}
PF_Pixel16 anyPixel(RandomSource& random, const PF_Pixel16*) {
  const std::uint64_t bits = random.bits();
  PF_Pixel16 pixel;
  std::memcpy(&pixel, &bits, sizeof pixel);
  if (random.chance(0.2)) pixel.red = pixel.green = pixel.blue = random.chance(0.5) ? 32768 : 0;
  return pixel;
}
PF_PixelFloat anyPixel(RandomSource& random, const PF_PixelFloat*) {
  PF_PixelFloat pixel;
  float channels[4];
  for (float& channel : channels) {
    const auto bits = static_cast<std::uint32_t>(random.bits());
    std::memcpy(&channel, &bits, sizeof channel);
    if (random.chance(0.7)) {
      channel = static_cast<float>(random.real(-0.1, 1.1));
    } else if (random.chance(0.5)) {  // levels to the hair
      channel = static_cast<float>(random.between(-300, 300) / 255.0);
    } else if (random.chance(0.3)) {  // around what 32 bits hold
      channel = 8421504.5f + static_cast<float>(random.between(-8, 8));
    }
  }
  std::memcpy(&pixel, channels, sizeof pixel);
  return pixel;
}

template <class Pixel>
class WalkKernelsOn : public ::testing::Test {};
using Pixels = ::testing::Types<PF_Pixel, PF_Pixel16, PF_PixelFloat>;
TYPED_TEST_SUITE(WalkKernelsOn, Pixels);

// Random and extreme levels, runs of one colour, odd widths, padded and misaligned rows, either way
// up.
TYPED_TEST(WalkKernelsOn, CountLikeThePlainOnesAndAreThoseThatRan) {
  RandomSource random;
  for (const WalkKernels* kernels : runnableKernels()) {
    g_inner = kernels;
    g_paired = g_read = 0;
    for (int round = 0; round < 60; ++round) {
      const bool isLarge = round == 0;  // enough for counting red with blue
      const std::int32_t width =
          isLarge ? random.between(600, 700) : random.between(1, round % 6 == 0 ? 1200 : 80);
      const std::int32_t height = isLarge ? 230 : random.between(1, 20);
      TestPicture<TypeParam> picture(width, height, random.between(0, 3) * 5,
                                     random.chance(0.5) ? RowOrder::topDown : RowOrder::bottomUp,
                                     static_cast<std::size_t>(random.between(0, 3)));
      const double change = random.chance(0.5) ? 1.0 : 0.03;
      TypeParam pixel = anyPixel(random, static_cast<const TypeParam*>(nullptr));
      for (std::int32_t y = 0; y < height; ++y) {
        for (std::int32_t x = 0; x < width; ++x) {
          if (random.chance(change)) {
            pixel = anyPixel(random, static_cast<const TypeParam*>(nullptr));
          }
          picture.set(x, y, pixel);
        }
      }
      for (const std::int32_t step : {1, 3}) {
        FrameHistogram expected;
        FrameHistogram actual;
        resetFrameHistogram(expected);
        resetFrameHistogram(actual);
        walkPixels(picture.view(), {0, 0, width, height}, step, expected, kPlainWalk);
        walkPixels(picture.view(), {0, 0, width, height}, step, actual, kCounting);
        ASSERT_EQ(std::memcmp(&actual, &expected, sizeof expected), 0)
            << kernels->name << ' ' << width << " x " << height << ", step " << step;
      }
    }
    EXPECT_GT(g_paired, 0) << kernels->name;
    EXPECT_EQ(g_read > 0, sizeof(TypeParam) > sizeof(PF_Pixel)) << kernels->name;
  }
}

}  // namespace
}  // namespace varilum
