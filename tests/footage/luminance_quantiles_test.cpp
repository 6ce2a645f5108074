// tests/footage/luminance_quantiles_test.cpp — quantiles against the histograms they come from.
#include "footage/luminance_quantiles.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "tests/footage/random_numbers.h"

namespace footage::test {
namespace {

FrameMeasure measureOf(const std::vector<int>& levels) {
  FrameMeasure frame;
  for (const int level : levels) ++frame.histogram[static_cast<std::size_t>(level)];
  frame.sampled = static_cast<std::uint32_t>(levels.size());
  return frame;
}

TEST(LuminanceQuantiles, AreTheMeansOfEqualParts) {
  std::vector<int> levels;
  for (int i = 0; i < 64; ++i) levels.push_back(3 * i);  // two pixels a part
  const LuminanceQuantiles means = quantilesOf(measureOf(levels));
  for (std::size_t i = 0; i < means.size(); ++i) EXPECT_EQ(means[i], 256 * 6 * i + 384) << i;
}

TEST(LuminanceQuantiles, ShareAPixelBetweenParts) {
  // Of three pixels each part gets 3/32: the 11th has 2/3 of its part from the first pixel.
  const LuminanceQuantiles means = quantilesOf(measureOf({0, 96, 192}));
  EXPECT_EQ(means[9], 0);
  EXPECT_EQ(means[10], 256 * 32);
  EXPECT_EQ(means[11], 256 * 96);
  EXPECT_EQ(means[21], 256 * 160);
  EXPECT_EQ(means[31], 256 * 192);
}

TEST(LuminanceQuantiles, OfNoPixelsOrOfWhite) {
  EXPECT_EQ(quantilesOf(FrameMeasure{}), LuminanceQuantiles{});
  const LuminanceQuantiles means = quantilesOf(measureOf(std::vector<int>(7, 255)));
  for (const std::uint16_t mean : means) EXPECT_EQ(mean, 65280);
}

// What they are kept for: where the mean goes under a correction, and how steady that is while the
// light flickers.
TEST(LuminanceQuantiles, TellWhatACurveDoesToTheMean) {
  RandomNumbers random(chosenSeed());
  double squares = 0;
  constexpr int kScenes = 100;
  constexpr int kFrames = 10;
  for (int scene = 0; scene < kScenes; ++scene) {
    std::vector<double> lights;
    const double middle = random.between(20, 220);
    const double spread = random.between(5, 80);
    for (int p = 0; p < 3000; ++p)
      lights.push_back(std::max(0.0, middle + spread * random.normal()));
    double errors = 0;
    double errorSquares = 0;
    for (int frame = 0; frame < kFrames; ++frame) {
      const double exposure = random.between(0.8, 1.2);
      std::vector<int> levels;
      for (const double light : lights) {
        levels.push_back(static_cast<int>(std::min(255.0, exposure * light)));
      }
      const auto curve = [&](double level) {
        return std::min(255.0, 255 * std::pow(level / 255 / exposure, 1.1));
      };
      double exact = 0;
      for (const int level : levels) exact += curve(level) / static_cast<double>(levels.size());
      double told = 0;
      for (const std::uint16_t mean : quantilesOf(measureOf(levels))) {
        told += curve(mean / 256.0) / 32;
      }
      EXPECT_NEAR(told, exact, 0.3) << middle << ' ' << spread << ' ' << exposure;
      errors += told - exact;
      errorSquares += (told - exact) * (told - exact);
    }
    squares += errorSquares / kFrames - errors * errors / (kFrames * kFrames);
  }
  EXPECT_LT(std::sqrt(squares / kScenes), 0.04);
}

}  // namespace
}  // namespace footage::test
