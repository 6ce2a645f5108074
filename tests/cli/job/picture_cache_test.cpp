// tests/cli/job/picture_cache_test.cpp — what came first stays, within the budget.
#include "cli/job/picture_cache.h"

#include <gtest/gtest.h>

namespace cli {
namespace {

media::Picture pictureOf(std::int64_t frame) {
  media::ClipInfo info;
  info.width = 64;
  info.height = 32;
  info.pixelFormat = "gray";
  return media::Picture::blank(info, frame);
}

TEST(PictureCache, KeepsTheFirstThatFit) {
  const std::uint64_t one = pictureOf(0).bytes();
  ASSERT_GE(one, 64U * 32U);
  PictureCache cache(3 * one + one / 2);
  for (const std::int64_t frame : {7, 3, 9, 1}) cache.offer(pictureOf(frame));
  for (const std::int64_t frame : {7, 3, 9}) {
    const auto found = cache.find(frame);
    ASSERT_TRUE(found) << frame;
    EXPECT_EQ(found->index(), frame);
  }
  EXPECT_FALSE(cache.find(1));
  EXPECT_FALSE(cache.find(0));
  EXPECT_EQ(cache.size(), 3 * one);
}

TEST(PictureCache, CountsAFrameOnce) {
  const std::uint64_t one = pictureOf(0).bytes();
  PictureCache cache(2 * one);
  const media::Picture first = pictureOf(5);
  cache.offer(first);
  cache.offer(pictureOf(5));
  EXPECT_EQ(cache.size(), one);
  EXPECT_EQ(cache.find(5)->frame(), first.frame());
  cache.offer(pictureOf(6));
  EXPECT_TRUE(cache.find(6));
}

TEST(PictureCache, KeepsNothingWithoutABudget) {
  PictureCache cache(0);
  cache.offer(pictureOf(0));
  EXPECT_FALSE(cache.find(0));
  EXPECT_EQ(cache.size(), 0U);
}

}  // namespace
}  // namespace cli
