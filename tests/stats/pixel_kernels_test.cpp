// tests/stats/pixel_kernels_test.cpp — corrected pixels and the banner at three depths.
#include "stats/pixel_kernels.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

#include "hostapi/commands.h"
#include "resources/banner_mask.h"
#include "stats/fast_power.h"
#include "stats/sequence_state.h"
#include "tests/stats/random_source.h"

namespace varilum {
namespace {

using test::RandomSource;

constexpr float kFloatInfinity = std::numeric_limits<float>::infinity();
constexpr float kFloatNan = std::numeric_limits<float>::quiet_NaN();

PF_Pixel run(const FrameCorrection& correction, PF_Pixel in, int x = 0, int y = 0) {
  FrameCorrection context = correction;
  PF_Pixel out{1, 2, 3, 4};
  EXPECT_EQ(pixelKernel8(correction)(&context, x, y, &in, &out), 0);
  return out;
}
PF_Pixel16 run(const FrameCorrection& correction, PF_Pixel16 in, int x = 0, int y = 0) {
  FrameCorrection context = correction;
  PF_Pixel16 out{1, 2, 3, 4};
  EXPECT_EQ(pixelKernel16(correction)(&context, x, y, &in, &out), 0);
  return out;
}
PF_PixelFloat run(const FrameCorrection& correction, PF_PixelFloat in, int x = 0, int y = 0) {
  FrameCorrection context = correction;
  PF_PixelFloat out{1, 2, 3, 4};
  EXPECT_EQ(pixelKernelFloat(correction)(&context, x, y, &in, &out), 0);
  return out;
}

template <class Pixel>
void expectSame(const Pixel& actual, const Pixel& expected) {
  EXPECT_EQ(std::memcmp(&actual, &expected, sizeof expected), 0)
      << +actual.alpha << ' ' << +actual.red << ' ' << +actual.green << ' ' << +actual.blue
      << " instead of " << +expected.alpha << ' ' << +expected.red << ' ' << +expected.green << ' '
      << +expected.blue;
}

FrameCorrection prepared(int method, const FrameLevels& levels) {
  FrameCorrection correction;
  correction.analyzed = true;
  correction.method = static_cast<std::uint8_t>(method);
  for (int i = 0; i < kLevels; ++i) correction.table[i] = static_cast<std::uint8_t>(255 - i);
  prepareCorrection(correction, levels);
  return correction;
}

FrameLevels levelsOf(double desired, double input, float desiredSpread = 0, float inputSpread = 0,
                     float gamma = 1) {
  return {desired, input, desiredSpread, inputSpread, gamma};
}

TEST(PixelKernels, RefuseAMissingContextAndLeaveThePixel) {
  PF_Pixel in8{9, 9, 9, 9}, out8{1, 2, 3, 4};
  PF_Pixel16 in16{9, 9, 9, 9}, out16{1, 2, 3, 4};
  PF_PixelFloat inF{9, 9, 9, 9}, outF{1, 2, 3, 4};
  FrameCorrection correction;
  for (const bool analyzed : {false, true}) {
    for (const int method : {1, 2, 3}) {
      correction.analyzed = analyzed;
      correction.method = static_cast<std::uint8_t>(method);
      EXPECT_EQ(pixelKernel8(correction)(nullptr, 0, 0, &in8, &out8), 516);
      EXPECT_EQ(pixelKernel16(correction)(nullptr, 0, 0, &in16, &out16), 516);
      EXPECT_EQ(pixelKernelFloat(correction)(nullptr, 0, 0, &inF, &outF), 516);
    }
  }
  expectSame(out8, {1, 2, 3, 4});
  expectSame(out16, {1, 2, 3, 4});
  expectSame(outF, {1, 2, 3, 4});
}

TEST(PixelKernels, SendEightBitChannelsThroughTheTableAndCopyAlpha) {
  const FrameCorrection correction = prepared(kCorrectionLinear, levelsOf(1, 1));
  expectSame(run(correction, PF_Pixel{77, 0, 100, 255}), {77, 255, 155, 0});
}

TEST(PixelKernels, CopyEverythingOfAFrameThatMustNotBeDeflickered) {
  FrameCorrection correction = prepared(kCorrectionShift, levelsOf(200, 10, 9, 3));
  correction.dontDeflicker = true;
  expectSame(run(correction, PF_Pixel{77, 0, 100, 255}), {77, 0, 100, 255});
  expectSame(run(correction, PF_Pixel16{77, 32768, 40000, 65535}), {77, 32768, 40000, 65535});
  expectSame(run(correction, PF_PixelFloat{0.5f, -3.0f, 99999.0f, -0.0f}),
             {0.5f, -3.0f, 99999.0f, -0.0f});
}

TEST(PixelKernels, WorkInPlace) {
  FrameCorrection correction = prepared(kCorrectionLinear, levelsOf(50, 100));
  PF_Pixel pixel8{7, 0, 100, 255};
  pixelKernel8(correction)(&correction, 0, 0, &pixel8, &pixel8);
  expectSame(pixel8, {7, 255, 155, 0});
  PF_Pixel16 pixel16{7, 10, 100, 1000};
  pixelKernel16(correction)(&correction, 0, 0, &pixel16, &pixel16);
  expectSame(pixel16, {7, 5, 50, 500});
}

TEST(PixelKernels, ClampSixteenBitsOneBelowWhite) {
  const FrameCorrection correction = prepared(kCorrectionLinear, levelsOf(90, 90));
  expectSame(run(correction, PF_Pixel16{32768, 32768, 32767, 65535}), {32768, 32767, 32767, 32767});
  const FrameCorrection doubled = prepared(kCorrectionLinear, levelsOf(180, 90));
  expectSame(run(doubled, PF_Pixel16{5, 16383, 16384, 1}), {5, 32766, 32767, 2});
}

TEST(PixelKernels, ClampFloatOnlyFarAboveWhite) {
  const FrameCorrection correction = prepared(kCorrectionLinear, levelsOf(90, 90));
  expectSame(run(correction, PF_PixelFloat{-2.0f, 2.0f, -0.5f, 40000.0f}),
             {-2.0f, 2.0f, 0.0f, 32767.0f});
  expectSame(run(correction, PF_PixelFloat{kFloatNan, kFloatNan, kFloatInfinity, -kFloatInfinity}),
             {kFloatNan, 0.0f, 32767.0f, 0.0f});
}

TEST(PixelKernels, LinearWithoutAPositiveInputKeepsTheColours) {
  for (const double input : {0.0, -1.0, std::nan("")}) {
    const FrameCorrection correction = prepared(kCorrectionLinear, levelsOf(50, input));
    expectSame(run(correction, PF_Pixel16{1, 10, 20, 30}), {1, 10, 20, 30});
    expectSame(run(correction, PF_PixelFloat{1, 0.1f, 0.2f, 0.3f}), {1, 0.1f, 0.2f, 0.3f});
  }
}

TEST(PixelKernels, TakeUnknownMethodsAsLinear) {
  for (const int method : {0, 1, 4, 255}) {
    const FrameCorrection correction = prepared(method, levelsOf(50, 100));
    expectSame(run(correction, PF_Pixel16{1, 10, 20, 30}), {1, 5, 10, 15});
    expectSame(run(correction, PF_PixelFloat{1, 0.5f, 0.25f, 2}), {1, 0.25f, 0.125f, 1});
  }
}

TEST(PixelKernels, GammaBelowAHundredthIsLinear) {
  for (const float gamma : {0.005f, 0.0f, -0.0f, -1.0f, -kFloatInfinity, kFloatNan}) {
    const FrameCorrection correction = prepared(kCorrectionGamma, levelsOf(50, 100, 0, 0, gamma));
    expectSame(run(correction, PF_Pixel16{1, 10, 20, 30}), {1, 5, 10, 15});
    expectSame(run(correction, PF_PixelFloat{1, 0.5f, 0.25f, 2}), {1, 0.25f, 0.125f, 1});
  }
  const FrameCorrection steep = prepared(kCorrectionGamma, levelsOf(50, 100, 0, 0, 0.0101f));
  EXPECT_EQ(run(steep, PF_Pixel16{1, 10, 20, 30}).red, 0);
}

TEST(PixelKernels, GammaOneOnlyLosesTheLowerHalfOfEachNumber) {
  const FrameCorrection correction = prepared(kCorrectionGamma, levelsOf(50, 50, 0, 0, 1.0f));
  const PF_Pixel16 out = run(correction, PF_Pixel16{1, 0, 16384, 32767});
  EXPECT_EQ(out.red, 0);
  EXPECT_NEAR(out.green, 16384, 1);
  EXPECT_EQ(out.blue, 32767);
}

TEST(PixelKernels, GammaKeepsFloatBlackBlackWhateverItsSign) {
  for (const float gamma : {0.5f, 0.9995f, 1.0f, 1.5f, 3.0f}) {
    const FrameCorrection correction = prepared(kCorrectionGamma, levelsOf(60, 50, 0, 0, gamma));
    expectSame(run(correction, PF_PixelFloat{1, 0.0f, -0.0f, 0.0f}), {1, 0, 0, 0});
    expectSame(run(correction, PF_Pixel16{1, 0, 0, 0}), {1, 0, 0, 0});
  }
}

// The rules for a channel, written out step by step in the precisions they name.
float plainChannel(int method, const FrameLevels& levels, float value, bool deep) {
  const double scale = deep ? 32767.0 : 1.0;
  float result;
  if (method == 3 && static_cast<double>(levels.gammaValue) >= 0.01) {
    const double share =
        deep ? static_cast<double>(value) / 32767.0 : static_cast<double>(value) + 0.0;
    const double power = fastPower(share, 1.0 / static_cast<double>(levels.gammaValue));
    result = static_cast<float>(deep ? power * 32767.0 : power);
  } else if (method == 2) {
    const float k = levels.inputSpread > 0 ? levels.desiredSpread / levels.inputSpread : 1.0f;
    const auto input = static_cast<float>(levels.inputLuminance / 255.0 * scale);
    const auto desired = static_cast<float>(levels.desiredLuminance / 255.0 * scale);
    const float centred = value - input;
    const float scaled = centred * k;
    result = scaled + desired;
  } else {
    const double ratio =
        levels.inputLuminance > 0 ? levels.desiredLuminance / levels.inputLuminance : 1.0;
    result = value * static_cast<float>(ratio);
  }
  if (std::isnan(result) || result <= 0) return 0.0f;
  return result > 32767.0f ? 32767.0f : result;
}

FrameLevels randomLevels(RandomSource& random) {
  FrameLevels levels;
  levels.desiredLuminance = random.chance(0.1) ? -1.0 : random.real(0, 255);
  levels.inputLuminance = random.chance(0.1) ? random.between(-1, 0) : random.real(0.01, 255);
  levels.desiredSpread = static_cast<float>(random.real(0, 60));
  levels.inputSpread = random.chance(0.2) ? 0.0f : static_cast<float>(random.real(0, 60));
  levels.gammaValue = static_cast<float>(random.real(0, random.chance(0.3) ? 0.03 : 4));
  return levels;
}

TEST(PixelKernels, EqualTheRulesForEverySixteenBitValue) {
  RandomSource random;
  for (int round = 0; round < 12; ++round) {
    const FrameLevels levels = randomLevels(random);
    for (const int method : {1, 2, 3}) {
      const FrameCorrection correction = prepared(method, levels);
      for (int value = 0; value < 65536; ++value) {
        const auto channel = static_cast<std::uint16_t>(value);
        const PF_Pixel16 out = run(correction, PF_Pixel16{channel, channel, 0, channel});
        const auto expected = static_cast<std::uint16_t>(
            plainChannel(method, levels, static_cast<float>(value), true));
        ASSERT_EQ(out.red, expected) << value << " method " << method;
        ASSERT_EQ(out.blue, expected);
        ASSERT_EQ(out.alpha, channel);
      }
    }
  }
}

TEST(PixelKernels, EqualTheRulesForRandomFloats) {
  RandomSource random;
  for (int round = 0; round < 300; ++round) {
    const FrameLevels levels = randomLevels(random);
    for (const int method : {1, 2, 3}) {
      const FrameCorrection correction = prepared(method, levels);
      for (int i = 0; i < 100; ++i) {
        const auto value = static_cast<float>(random.chance(0.1) ? random.real(-1e5, 1e5)
                                                                 : random.real(-0.1, 1.2));
        const PF_PixelFloat out = run(correction, PF_PixelFloat{value, value, 0, 0});
        const float expected = plainChannel(method, levels, value, false);
        ASSERT_EQ(std::memcmp(&out.red, &expected, sizeof expected), 0)
            << value << " method " << method << ": " << out.red << " not " << expected;
        ASSERT_EQ(out.alpha, value);
      }
    }
  }
}

// Any bits: infinities, tiny numbers, NaN with all kinds of payload in every channel.
TEST(PixelKernels, VectorsGiveTheSameBitsAsPlainNumbers) {
  RandomSource random;
  for (int round = 0; round < 300; ++round) {
    FrameLevels levels = randomLevels(random);
    if (random.chance(0.1)) levels.gammaValue = kFloatInfinity;
    for (const int method : {1, 2, 3}) {
      FrameCorrection correction = prepared(method, levels);
      for (int i = 0; i < 200; ++i) {
        const std::uint64_t bits[2] = {random.bits(), random.bits()};
        PF_PixelFloat inF, outF, plainF;
        std::memcpy(&inF, bits, sizeof inF);
        if (random.chance(0.3)) inF.red = random.chance(0.5) ? -0.0f : 1.0f;
        if (random.chance(0.3)) inF.blue = static_cast<float>(random.real(0, 1));
        pixelKernelFloat(correction)(&correction, 0, 0, &inF, &outF);
        plainPixelKernelFloat(correction)(&correction, 0, 0, &inF, &plainF);
        ASSERT_EQ(std::memcmp(&outF, &plainF, sizeof outF), 0)
            << "method " << method << ": " << inF.red << ' ' << inF.green << ' ' << inF.blue;
        PF_Pixel16 in16, out16, plain16;
        std::memcpy(&in16, bits, sizeof in16);
        pixelKernel16(correction)(&correction, 0, 0, &in16, &out16);
        plainPixelKernel16(correction)(&correction, 0, 0, &in16, &plain16);
        expectSame(out16, plain16);
      }
    }
  }
}

class Banner : public ::testing::Test {
 protected:
  Banner() {
    correction = prepared(kCorrectionLinear, levelsOf(200, 10));
    correction.analyzed = false;
    correction.banner = placeBanner({-20, 30, 300, 70});
  }
  static bool isInk(int row, int column) { return kBannerMask.pixels[row * 2149 + column] != 0; }
  FrameCorrection correction;
};

TEST_F(Banner, PicturePartsAreBothPresent) {
  int ink = 0;
  for (const std::uint8_t pixel : kBannerMask.pixels) ink += pixel != 0;
  EXPECT_GT(ink, 1000);
  EXPECT_LT(ink, 2149 * 200 / 2);
}

TEST_F(Banner, LeavesEightBitColoursOutsideIt) {
  for (const auto& [x, y] :
       {std::pair{-21, 40}, {300, 40}, {0, 29}, {0, 70}, {-2000000000, 40}, {0, 2147483647}}) {
    expectSame(run(correction, PF_Pixel{5, 0, 128, 255}, x, y), {5, 0, 128, 255});
  }
}

TEST_F(Banner, OutsideItStillClampsTheOtherDepths) {
  expectSame(run(correction, PF_Pixel16{5, 0, 32768, 65535}, 0, 29), {5, 0, 32767, 32767});
  expectSame(run(correction, PF_PixelFloat{5, -1, 0.5f, 40000}, 0, 29), {5, 0, 0.5f, 32767});
}

TEST_F(Banner, IsDrawnForFramesThatMustNotBeDeflickeredToo) {
  correction.dontDeflicker = true;
  const PF_Pixel out = run(correction, PF_Pixel{5, 10, 10, 10}, -20, 30);
  expectSame(out, isInk(0, 0) ? PF_Pixel{5, 255, 255, 255} : PF_Pixel{5, 20, 62, 120});
}

TEST_F(Banner, PaintsEachPixelByTheMaskAtAllDepths) {
  int inks = 0;
  for (int y = 30; y < 70; ++y) {
    for (int x = -20; x < 300; ++x) {
      const int row = 200 * (y - 30) / 40;
      const int column = 2149 * (x + 20) / 320;
      const bool ink = isInk(row, column);
      inks += ink;
      const PF_Pixel in8{9, 255, 3, 100};
      expectSame(run(correction, in8, x, y),
                 ink ? PF_Pixel{9, 255, 255, 255} : PF_Pixel{9, 142, 58, 165});
      const PF_Pixel16 in16{9, 32768, 1, 20000};  // first clamped: 32767, 1, 20000
      const PF_Pixel16 tinted{9, (32767 | 0x1FFE) >> 1, (1 | 0x73FE) >> 1, (20000 | 0xE6FF) >> 1};
      expectSame(run(correction, in16, x, y), ink ? PF_Pixel16{9, 65535, 65535, 65535} : tinted);
      const PF_PixelFloat inF{0.5f, -1.0f, 0.5f, 2.0f};
      expectSame(run(correction, inF, x, y),
                 ink ? PF_PixelFloat{0.5f, 1, 1, 1}
                     : PF_PixelFloat{0.5f, 0.060546f, 0.25f + 0.224609f, 1.0f + 0.449218f});
    }
  }
  EXPECT_GT(inks, 100);
}

TEST_F(Banner, IsAbsentWhenItsRectangleIsEmptyOrReversed) {
  for (const Rect rect :
       {Rect{0, 0, 0, 50}, Rect{0, 0, 50, 0}, Rect{50, 50, 0, 0},
        Rect{std::numeric_limits<int>::max(), 0, std::numeric_limits<int>::min(), 9}}) {
    correction.banner = placeBanner(rect);
    expectSame(run(correction, PF_Pixel{5, 6, 7, 8}, 0, 0), {5, 6, 7, 8});
  }
}

TEST_F(Banner, FindsItsPlaceInTheLargestRectangle) {
  const int least = std::numeric_limits<int>::min();
  const int most = std::numeric_limits<int>::max();
  correction.banner = placeBanner({least, least, most, most});
  for (const auto& [x, y] : {std::pair{least, least}, {most - 1, most - 1}, {0, 0}, {12345, -99}}) {
    const long long extent = 4294967295LL;
    const auto row = static_cast<int>(200 * (y - static_cast<long long>(least)) / extent);
    const auto column = static_cast<int>(2149 * (x - static_cast<long long>(least)) / extent);
    expectSame(run(correction, PF_Pixel{5, 0, 0, 0}, x, y),
               isInk(row, column) ? PF_Pixel{5, 255, 255, 255} : PF_Pixel{5, 15, 57, 115});
  }
}

}  // namespace
}  // namespace varilum
