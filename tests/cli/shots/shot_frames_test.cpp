// tests/cli/shots/shot_frames_test.cpp — frames and the pictures they show, against counting them
// out.
#include "cli/shots/shot_frames.h"

#include <gtest/gtest.h>

#include <random>
#include <stdexcept>

namespace cli {
namespace {

TEST(ShotFrames, WithoutDuplicatesCountFromTheirFirst) {
  const ShotFrames shot(100, 5);
  EXPECT_EQ(shot.last(), 104);
  EXPECT_EQ(shot.pictureCount(), 5);
  EXPECT_TRUE(shot.holds(100) && shot.holds(104));
  EXPECT_FALSE(shot.holds(99) || shot.holds(105));
  EXPECT_EQ(shot.pictureOf(103), 3);
  EXPECT_EQ(shot.frameOf(3), 103);
  EXPECT_EQ(shot.originalOf(103), 103);
}

TEST(ShotFrames, ShowAnyPatternOfRepeats) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  for (int round = 0; round < 200; ++round) {
    const auto first = static_cast<std::int64_t>(random() % 1000);
    const auto count = static_cast<std::int64_t>(1 + random() % 40);
    std::vector<std::int64_t> duplicates;
    std::vector<std::int64_t> originals{first};  // of each picture
    std::vector<std::int32_t> pictures{0};       // of each frame
    for (std::int64_t frame = first + 1; frame < first + count; ++frame) {
      if (random() % 3 == 0) {
        duplicates.push_back(frame);
      } else {
        originals.push_back(frame);
      }
      pictures.push_back(static_cast<std::int32_t>(originals.size()) - 1);
    }
    const ShotFrames shot(first, count, duplicates);
    ASSERT_EQ(shot.pictureCount(), static_cast<std::int32_t>(originals.size()));
    for (std::int64_t frame = first; frame < first + count; ++frame) {
      const std::int32_t picture = pictures[static_cast<std::size_t>(frame - first)];
      ASSERT_EQ(shot.pictureOf(frame), picture) << "frame " << frame;
      ASSERT_EQ(shot.originalOf(frame), originals[static_cast<std::size_t>(picture)]);
    }
    for (std::int32_t p = 0; p < shot.pictureCount(); ++p) {
      ASSERT_EQ(shot.frameOf(p), originals[static_cast<std::size_t>(p)]) << "picture " << p;
    }
  }
}

TEST(ShotFrames, RefuseWhatCannotBe) {
  EXPECT_THROW(ShotFrames(0, 0), std::invalid_argument);
  EXPECT_THROW(ShotFrames(-1, 5), std::invalid_argument);
  EXPECT_THROW(ShotFrames(0, 1LL << 31), std::invalid_argument);
  EXPECT_THROW(ShotFrames(10, 5, {10}), std::invalid_argument);
  EXPECT_THROW(ShotFrames(10, 5, {15}), std::invalid_argument);
  EXPECT_THROW(ShotFrames(10, 5, {12, 12}), std::invalid_argument);
  EXPECT_THROW(ShotFrames(10, 5, {13, 12}), std::invalid_argument);
  EXPECT_NO_THROW(ShotFrames(10, 5, {11, 12, 13, 14}));
}

}  // namespace
}  // namespace cli
