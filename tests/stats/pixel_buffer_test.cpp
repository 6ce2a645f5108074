// tests/stats/pixel_buffer_test.cpp — depths that rows can and cannot hold.
#include "stats/pixel_buffer.h"

#include <gtest/gtest.h>

#include <limits>

namespace varilum {
namespace {

constexpr char kSomewhere = 0;

PixelBuffer view(std::int32_t rowBytes, bool isFloat, bool isDeep, std::int32_t width = 10) {
  return viewPixels(&kSomewhere, rowBytes, width, 7, isFloat, isDeep);
}

TEST(ViewPixels, TakesTheFlagsAtTheirWordWhenTheRowHoldsThem) {
  EXPECT_EQ(view(160, true, false).depth, PixelDepth::float32);
  EXPECT_EQ(view(160, true, true).depth, PixelDepth::float32);
  EXPECT_EQ(view(80, false, true).depth, PixelDepth::bits16);
  EXPECT_EQ(view(40, false, false).depth, PixelDepth::bits8);
  EXPECT_EQ(view(4096, false, false).depth, PixelDepth::bits8);
  const PixelBuffer pixels = view(160, true, false);
  EXPECT_EQ(pixels.data, &kSomewhere);
  EXPECT_EQ(pixels.rowBytes, 160);
  EXPECT_EQ(pixels.width, 10);
  EXPECT_EQ(pixels.height, 7);
}

TEST(ViewPixels, FallsToTheNextLowerDepthThatFits) {
  EXPECT_EQ(view(159, true, false).depth, PixelDepth::bits16);
  EXPECT_EQ(view(80, true, true).depth, PixelDepth::bits16);
  EXPECT_EQ(view(79, true, true).depth, PixelDepth::bits8);
  EXPECT_EQ(view(79, false, true).depth, PixelDepth::bits8);
  EXPECT_NE(view(40, true, true).data, nullptr);
}

TEST(ViewPixels, HasNoDataWhenNoDepthFits) {
  EXPECT_EQ(view(39, false, false).data, nullptr);
  EXPECT_EQ(view(39, true, true).data, nullptr);
  EXPECT_EQ(view(0, false, false).data, nullptr);
  EXPECT_EQ(view(40, false, false, std::numeric_limits<std::int32_t>::max()).data, nullptr);
}

TEST(ViewPixels, MeasuresRowsThatRunUpwardsByTheirLength) {
  EXPECT_EQ(view(-160, true, false).depth, PixelDepth::float32);
  EXPECT_EQ(view(-159, true, false).depth, PixelDepth::bits16);
  EXPECT_EQ(view(-39, false, false).data, nullptr);
  EXPECT_EQ(view(-40, false, false).rowBytes, -40);
  EXPECT_NE(view(std::numeric_limits<std::int32_t>::min(), true, true).data, nullptr);
}

TEST(ViewPixels, KeepsAbsentDataAbsent) {
  EXPECT_EQ(viewPixels(nullptr, 40, 10, 7, false, false).data, nullptr);
}

}  // namespace
}  // namespace varilum
