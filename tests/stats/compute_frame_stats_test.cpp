// tests/stats/compute_frame_stats_test.cpp — levels, spreads, counts and reuse.
// (Unary plus copies a packed field out: a reference to it would be misaligned.)
#include "stats/compute_frame_stats.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

#include "tests/stats/random_source.h"
#include "tests/stats/test_picture.h"

namespace varilum {
namespace {

using test::TestPicture;

struct Measured {
  FrameStats stats;
  FrameHistogram histogram;
  Rect rect;
};

Measured fresh(const Rect& rect) {
  Measured measured{};
  resetFrameStats(measured.stats);
  resetFrameHistogram(measured.histogram);
  measured.rect = rect;
  return measured;
}

Measured measure(const PixelBuffer& pixels, const Rect& rect, bool favorBrighter = false,
                 std::int32_t step = 1) {
  Measured measured = fresh(rect);
  computeFrameStats(measured.stats, measured.histogram, pixels, measured.rect, 12, favorBrighter,
                    step);
  return measured;
}

PF_Pixel grey(int level) {
  const auto value = static_cast<std::uint8_t>(level);
  return {255, value, value, value};
}

TestPicture<PF_Pixel> halves(int left, int right) {
  TestPicture<PF_Pixel> picture(20, 10);
  for (int y = 0; y < 10; ++y) {
    for (int x = 0; x < 20; ++x) picture.set(x, y, grey(x < 10 ? left : right));
  }
  return picture;
}

TEST(ComputeFrameStats, FillsEveryFieldOfTheRecord) {
  const auto picture = halves(100, 255);
  const Measured m = measure(picture.view(), {5, 2, 18, 9}, false, 2);
  // Columns 5, 7, 9 at 100 and 11, 13, 15, 17 at 255; rows 2, 4, 6, 8.
  EXPECT_EQ(m.stats.frame, 12);
  EXPECT_EQ(m.stats.slot, -1);
  EXPECT_EQ(m.stats.analyzed, 1);
  EXPECT_EQ(m.stats.walked, 1);
  EXPECT_EQ(m.stats.pixelCount, 28);
  EXPECT_EQ(m.stats.belowTopCount, 12);
  EXPECT_EQ(m.stats.peak, 12);
  EXPECT_EQ(m.stats.luminanceSum, 12 * 100 + 16 * 255);
  EXPECT_EQ(m.stats.totalPixels, 200);
  const double mean = static_cast<float>(5280.0 / 28.0);
  EXPECT_EQ(+m.stats.inputLuminance, mean);
  EXPECT_EQ(+m.stats.inputSpread, 12 * std::fabs(100 - mean) / 28);
  EXPECT_EQ(m.stats.step, 2u);
  EXPECT_EQ(m.stats.rect, (Rect{5, 2, 18, 9}));
  EXPECT_EQ(m.stats.width, 20);
  EXPECT_EQ(m.stats.height, 10);
  EXPECT_EQ(m.histogram.frame, -1);
  EXPECT_EQ(m.histogram.luminance[100], 12u);
  EXPECT_EQ(m.histogram.blue[255], 16u);
}

TEST(ComputeFrameStats, WeighsBrightPixelsMoreOnlyWhenAsked) {
  const auto picture = halves(0, 200);
  EXPECT_EQ(+measure(picture.view(), {0, 0, 20, 10}, false).stats.inputLuminance, 100.0);
  EXPECT_EQ(+measure(picture.view(), {0, 0, 20, 10}, true).stats.inputLuminance, 200.0);
}

TEST(ComputeFrameStats, KeepsThePlainMeanInSinglePrecisionAndTheWeightedInDouble) {
  TestPicture<PF_Pixel> picture(3, 1);
  picture.set(0, 0, grey(10));
  picture.set(1, 0, grey(10));
  picture.set(2, 0, grey(11));
  EXPECT_EQ(+measure(picture.view(), {0, 0, 3, 1}, false).stats.inputLuminance,
            static_cast<double>(static_cast<float>(31.0 / 3.0)));
  EXPECT_NE(+measure(picture.view(), {0, 0, 3, 1}, false).stats.inputLuminance, 31.0 / 3.0);
  EXPECT_EQ(+measure(picture.view(), {0, 0, 3, 1}, true).stats.inputLuminance, 321.0 / 31.0);
}

TEST(ComputeFrameStats, FallsBackToThePlainMeanForBlackFrames) {
  const Measured m = measure(halves(0, 0).view(), {0, 0, 20, 10}, true);
  EXPECT_EQ(+m.stats.inputLuminance, 0.0);
  EXPECT_EQ(+m.stats.inputSpread, 0.0);
  EXPECT_EQ(m.stats.analyzed, 1);
  EXPECT_EQ(m.stats.belowTopCount, 200);
  EXPECT_EQ(m.stats.peak, 0);
}

TEST(ComputeFrameStats, LeavesBlackAndWhiteOutOfSpreadAndPeak) {
  const Measured white = measure(halves(255, 255).view(), {0, 0, 20, 10});
  EXPECT_EQ(+white.stats.inputSpread, 0.0);
  EXPECT_EQ(white.stats.peak, 0);
  EXPECT_EQ(white.stats.belowTopCount, 0);
  EXPECT_EQ(white.stats.pixelCount, 200);
  const Measured mixed = measure(halves(0, 100).view(), {0, 0, 20, 10});
  EXPECT_EQ(+mixed.stats.inputSpread, 100 * 50.0 / 200);
  EXPECT_EQ(mixed.stats.peak, 100);
}

TEST(ComputeFrameStats, ClampsTheRectangleAndWritesItBack) {
  const auto picture = halves(50, 60);
  const Measured m = measure(picture.view(), {-5, -1, 500, std::numeric_limits<int>::max()});
  EXPECT_EQ(m.rect, (Rect{0, 0, 20, 10}));
  EXPECT_EQ(m.stats.rect, m.rect);
  EXPECT_EQ(m.stats.pixelCount, 200);
}

TEST(ComputeFrameStats, WalksEmptyRectanglesWithoutAnalysingThem) {
  const auto picture = halves(50, 60);
  for (const Rect rect :
       {Rect{4, 4, 4, 8}, Rect{9, 0, 3, 10}, Rect{30, 0, 40, 10}, Rect{-9, 0, -3, 10},
        Rect{std::numeric_limits<int>::max(), 0, std::numeric_limits<int>::min(), 5}}) {
    const Measured m = measure(picture.view(), rect, true, 3);
    EXPECT_EQ(m.stats.analyzed, 0);
    EXPECT_EQ(m.stats.walked, 1);
    EXPECT_EQ(m.stats.pixelCount, 0);
    EXPECT_EQ(+m.stats.inputLuminance, 0.0);
    EXPECT_EQ(+m.stats.inputSpread, 0.0);
    EXPECT_EQ(m.stats.frame, 12);
    EXPECT_EQ(m.stats.step, 3u);
  }
}

TEST(ComputeFrameStats, ReusesAWalkWithTheSameStepAndClampedRectangle) {
  const auto picture = halves(50, 60);
  Measured m = measure(picture.view(), {0, 0, 20, 10}, false, 2);
  m.stats.analyzed = 0;
  m.stats.inputLuminance = 1234.0;
  m.histogram.red[3] = 99;
  m.rect = {-3, -3, 99, 99};
  computeFrameStats(m.stats, m.histogram, picture.view(), m.rect, 700, true, 2);
  EXPECT_EQ(m.stats.analyzed, 1);
  EXPECT_EQ(+m.stats.inputLuminance, 1234.0);
  EXPECT_EQ(m.stats.frame, 12);
  EXPECT_EQ(m.histogram.red[3], 99u);
  EXPECT_EQ(m.rect, (Rect{0, 0, 20, 10}));
}

TEST(ComputeFrameStats, WalksAnewWhenStepOrRectangleDiffer) {
  const auto picture = halves(50, 60);
  const Measured first = measure(picture.view(), {0, 0, 20, 10}, false, 2);
  for (const Rect rect :
       {Rect{1, 0, 20, 10}, Rect{0, 1, 20, 10}, Rect{0, 0, 19, 10}, Rect{0, 0, 20, 9}}) {
    Measured m = first;
    m.rect = rect;
    computeFrameStats(m.stats, m.histogram, picture.view(), m.rect, 700, false, 2);
    EXPECT_EQ(m.stats.frame, 700);
  }
  Measured m = first;
  m.stats.slot = 4;
  m.stats.carried96[7] = 1;
  computeFrameStats(m.stats, m.histogram, picture.view(), m.rect, 700, false, 3);
  EXPECT_EQ(m.stats.frame, 700);
  EXPECT_EQ(m.stats.slot, -1);
  EXPECT_EQ(m.stats.carried96[7], 0);
  EXPECT_EQ(m.histogram.luminance[50] + m.histogram.luminance[60], 4u * 7u);
}

TEST(ComputeFrameStats, CountsAStepBelowOneAsOne) {
  const auto picture = halves(50, 60);
  for (const std::int32_t step : {0, -1, std::numeric_limits<std::int32_t>::min()}) {
    const Measured m = measure(picture.view(), {0, 0, 20, 10}, false, step);
    EXPECT_EQ(m.stats.pixelCount, 200);
    EXPECT_EQ(m.stats.step, 1u);
  }
}

TEST(ComputeFrameStats, LeavesTheRecordsFreshWithoutPixels) {
  PixelBuffer pixels = halves(1, 2).view();
  pixels.data = nullptr;
  Measured m = fresh({0, 0, 20, 10});
  m.stats.inputLuminance = 3.0;
  m.histogram.blue[9] = 1;
  computeFrameStats(m.stats, m.histogram, pixels, m.rect, 12, false, 1);
  const Measured expected = fresh({0, 0, 20, 10});
  EXPECT_EQ(std::memcmp(&m.stats, &expected.stats, sizeof m.stats), 0);
  EXPECT_EQ(std::memcmp(&m.histogram, &expected.histogram, sizeof m.histogram), 0);
}

// A single row, shown many times over by a row length of 0, stands for a frame that is too large to
// keep: its sums pass 32 bits.
TEST(ComputeFrameStats, KeepsSumsBeyond32Bits) {
  TestPicture<PF_Pixel> row(4096, 1);
  row.fill(grey(254));
  PixelBuffer pixels = row.view();
  pixels.rowBytes = 0;
  pixels.height = 2200;
  const Measured m = measure(pixels, {0, 0, 4096, 2200});
  EXPECT_EQ(m.stats.pixelCount, 4096 * 2200);
  EXPECT_EQ(m.stats.luminanceSum, std::numeric_limits<std::int32_t>::max());
  EXPECT_EQ(+m.stats.inputLuminance, 254.0);
  EXPECT_EQ(m.stats.peak, 4096 * 2200);
  EXPECT_EQ(+measure(pixels, {0, 0, 4096, 2200}, true).stats.inputLuminance, 254.0);
}

TEST(ComputeFrameStats, EqualsThePlainRuleOnRandomPictures) {
  test::RandomSource random;
  for (int round = 0; round < 60; ++round) {
    const std::int32_t width = random.between(1, 80);
    const std::int32_t height = random.between(1, 60);
    TestPicture<PF_Pixel> picture(width, height, 3);
    for (std::int32_t y = 0; y < height; ++y) {
      for (std::int32_t x = 0; x < width; ++x) {
        picture.set(x, y, {0, random.byte(), random.byte(), random.byte()});
      }
    }
    const bool favor = random.chance(0.5);
    const std::int32_t step = random.between(1, 4);

    double sum = 0;
    double sumL = 0;
    double sumL2 = 0;
    std::uint32_t bins[256] = {};
    int count = 0;
    for (std::int32_t y = 0; y < height; y += step) {
      for (std::int32_t x = 0; x < width; x += step) {
        const PF_Pixel p = picture.get(x, y);
        const double wr = p.red * 0.3;
        const double wg = p.green * 0.59;
        const double wb = p.blue * 0.11;
        const int level = static_cast<int>(wr + wg + wb + 0.5);
        ++bins[level];
        ++count;
        sum += level;
        sumL += level;
        sumL2 += static_cast<double>(level) * level;
      }
    }
    const double mean =
        favor && sumL > 0 ? sumL2 / sumL : static_cast<double>(static_cast<float>(sum / count));
    double deviation = 0;
    for (int k = 1; k <= 254; ++k) deviation += bins[k] * std::fabs(k - mean);

    const Measured m = measure(picture.view(), {0, 0, width, height}, favor, step);
    ASSERT_EQ(m.stats.pixelCount, count);
    ASSERT_EQ(+m.stats.inputLuminance, mean);
    ASSERT_EQ(+m.stats.inputSpread, deviation / count);
    ASSERT_EQ(m.stats.luminanceSum, static_cast<std::int32_t>(sum));
  }
}

}  // namespace
}  // namespace varilum
