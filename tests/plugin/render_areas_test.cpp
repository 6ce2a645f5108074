// tests/plugin/render_areas_test.cpp — rectangles of an output frame.
#include "render/render_areas.h"

#include <gtest/gtest.h>

#include <limits>

namespace varilum {
namespace {

PF_EffectWorld world(std::int32_t width, std::int32_t height) {
  PF_EffectWorld result{};
  result.width = width;
  result.height = height;
  return result;
}

bool sameRect(const PF_LRect& a, const PF_LRect& b) {
  return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

TEST(BannerRect, SpansTheWidthAndIsCentred) {
  EXPECT_EQ(bannerRect({0, 0, 1920, 1080}), (Rect{0, 420, 1920, 660}));
  EXPECT_EQ(bannerRect({10, 20, 640, 480}), (Rect{10, 220, 650, 300}));
}

TEST(BannerRect, DividesInWholeNumbers) {
  // 1 / 8 is nothing; 15 / 8 is 1, and (7 - 1) / 2 is 3.
  EXPECT_EQ(bannerRect({0, 0, 1, 1}), (Rect{0, 0, 1, 0}));
  EXPECT_EQ(bannerRect({0, 0, 15, 7}), (Rect{0, 3, 15, 4}));
  // A band higher than the frame: (10 - 100) / 2 is -45.
  EXPECT_EQ(bannerRect({0, 0, 800, 10}), (Rect{0, -45, 800, 55}));
}

TEST(BannerRect, StaysDefinedForAnySize) {
  const std::int32_t most = std::numeric_limits<std::int32_t>::max();
  const Rect rect = bannerRect({most, most, most, most});
  EXPECT_EQ(rect.right, most);
  EXPECT_EQ(rect.bottom, most);
}

TEST(CornerRect, IsAQuarterWideAndATenthOfThatHigh) {
  EXPECT_EQ(cornerRect({5, 6, 1920, 1080}), (Rect{5, 6, 485, 54}));
}

TEST(ClippedArea, StaysWithinBothImages) {
  EXPECT_TRUE(sameRect(clippedArea({0, 0, 1920, 1080}, world(1920, 1000), world(1900, 1080)),
                       {0, 0, 1900, 1000}));
  EXPECT_TRUE(
      sameRect(clippedArea({-5, 3, 100, 100}, world(50, 200), world(60, 60)), {0, 3, 50, 60}));
  EXPECT_TRUE(isEmpty(clippedArea({200, 0, 100, 100}, world(50, 200), world(60, 60))));
}

TEST(UniteWith, IgnoresEmptyRectangles) {
  PF_LRect rect{};
  uniteWith(rect, {10, 20, 30, 40});
  EXPECT_TRUE(sameRect(rect, {10, 20, 30, 40}));
  uniteWith(rect, {0, 25, 15, 60});
  EXPECT_TRUE(sameRect(rect, {0, 20, 30, 60}));
  uniteWith(rect, {500, 500, 500, 600});
  EXPECT_TRUE(sameRect(rect, {0, 20, 30, 60}));
}

}  // namespace
}  // namespace varilum
