// tests/stats/luminance_test.cpp — the luminance of every colour there is.
#include "stats/luminance.h"

#include <gtest/gtest.h>

#include <memory>

namespace varilum {
namespace {

TEST(LuminanceWeights, AreTheProductsOfLevelAndWeight) {
  const auto weights = std::make_unique<LuminanceWeights>();
  fillLuminanceWeights(*weights);
  for (int i = 0; i < 256; ++i) {
    ASSERT_EQ(weights->red[i], i * 0.3) << i;
    ASSERT_EQ(weights->green[i], i * 0.59) << i;
    ASSERT_EQ(weights->blue[i], i * 0.11) << i;
  }
}

TEST(LuminanceLevel, IsTheRoundedSumOfTheDoubleWeightsForAllColours) {
  double table[768];
  for (int i = 0; i < 256; ++i) {
    table[i] = i * 0.3;
    table[256 + i] = i * 0.59;
    table[512 + i] = i * 0.11;
  }
  std::int64_t wrong = 0;
  for (int r = 0; r < 256; ++r) {
    for (int g = 0; g < 256; ++g) {
      for (int b = 0; b < 256; ++b) {
        int level = static_cast<int>(table[r] + table[256 + g] + table[512 + b] + 0.5);
        if (level < 0) level = 0;
        if (level > 255) level = 255;
        const int actual =
            luminanceLevel(static_cast<std::uint8_t>(r), static_cast<std::uint8_t>(g),
                           static_cast<std::uint8_t>(b));
        if (actual != level && wrong++ < 5) {
          ADD_FAILURE() << r << ' ' << g << ' ' << b << ": " << actual << " not " << level;
        }
      }
    }
  }
  EXPECT_EQ(wrong, 0);
}

TEST(LuminanceLevel, IsTheLevelItselfForGreys) {
  for (int v = 0; v < 256; ++v) {
    const auto level = static_cast<std::uint8_t>(v);
    ASSERT_EQ(luminanceLevel(level, level, level), level);
  }
}

}  // namespace
}  // namespace varilum
