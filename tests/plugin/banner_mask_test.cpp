// tests/plugin/banner_mask_test.cpp — size, ink and margins of the notice.
#include "resources/banner_mask.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace varilum {
namespace {

bool isInk(int x, int y) {
  return kBannerMask.pixels[y * kBannerWidth + x] == kBannerInk;
}

TEST(BannerMask, HoldsInkAndBackgroundOnly) {
  EXPECT_EQ(kBannerMask.width, 2149);
  EXPECT_EQ(kBannerMask.height, 200);
  EXPECT_TRUE(std::ranges::all_of(kBannerMask.pixels,
                                  [](std::uint8_t pixel) { return pixel == 0 || pixel == 127; }));
}

// Generous lettering: it spans nearly the whole width, and covers a good part of the band.
TEST(BannerMask, FillsTheBandWithoutTouchingItsEdges) {
  int left = kBannerWidth, right = 0, top = kBannerHeight, bottom = 0;
  long ink = 0;
  for (int y = 0; y < kBannerHeight; ++y) {
    for (int x = 0; x < kBannerWidth; ++x) {
      if (!isInk(x, y)) continue;
      ++ink;
      left = std::min(left, x);
      right = std::max(right, x);
      top = std::min(top, y);
      bottom = std::max(bottom, y);
    }
  }
  EXPECT_GT(left, 20);
  EXPECT_LT(left, 120);
  EXPECT_LT(right, kBannerWidth - 20);
  EXPECT_GT(right, kBannerWidth - 120);
  EXPECT_NEAR(left, kBannerWidth - 1 - right, 4) << "centred from side to side";
  EXPECT_NEAR(top, kBannerHeight - 1 - bottom, 4) << "centred from top to bottom";
  EXPECT_GT(bottom - top, kBannerHeight * 2 / 5);
  const double share = static_cast<double>(ink) / (kBannerWidth * kBannerHeight);
  EXPECT_GT(share, 0.08);
  EXPECT_LT(share, 0.35);
}

// Five words, four gaps between them that are wider than any gap between letters.
TEST(BannerMask, SpellsFiveWords) {
  std::array<bool, kBannerWidth> column{};
  for (int x = 0; x < kBannerWidth; ++x) {
    for (int y = 0; y < kBannerHeight; ++y) column[static_cast<std::size_t>(x)] |= isInk(x, y);
  }
  int wideGaps = 0;
  int gap = 0;
  bool started = false;
  for (const bool inked : column) {
    if (inked) {
      if (started && gap >= 25) ++wideGaps;
      gap = 0;
      started = true;
    } else {
      ++gap;
    }
  }
  EXPECT_EQ(wideGaps, 4);
}

}  // namespace
}  // namespace varilum
