// tests/cli/job/clip_source_test.cpp — any frame in any order, whatever the memory; and loans.
#include "cli/job/clip_source.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <thread>
#include <vector>

#include "media/clip_writer.h"
#include "media/pixel_conversion.h"
#include "tests/cli/clip_name.h"
#include "tests/cli/scratch_folder.h"

namespace cli {
namespace {

constexpr int kFrames = 40;
constexpr std::uint64_t kPlenty = 1U << 30U;

// Frame i of the clip is grey level 3 i + 20.
int levelOf(std::int64_t frame) {
  return static_cast<int>(3 * frame + 20);
}

media::Picture greyPicture(std::int64_t frame, int level) {
  media::ClipInfo info;
  info.width = info.height = 16;
  info.pixelFormat = "gray";
  info.colourRange = "pc";
  std::vector<std::uint8_t> pixels(16 * 16 * 4, static_cast<std::uint8_t>(level));
  const media::ConstArgbView view(pixels.data(), 64, 16, 16, media::Depth::eight);
  return media::fromArgb(view, media::Picture::blank(info, frame));
}

class ClipSourceTest : public testing::Test {
 protected:
  void SetUp() override {
    media::ClipInfo info;
    info.width = info.height = 16;
    info.pixelFormat = "gray";
    info.colourRange = "pc";
    info.codec = "ffv1";
    media::WriteOptions options;
#ifndef VARILUM_PLAIN_FOOTAGE
    options.encoderOptions = {{"g", "10"}};
#endif
    media::ClipWriter writer(clip_.path, info, options);
    for (int i = 0; i < kFrames; ++i) writer.write(greyPicture(i, levelOf(i)));
    writer.finish();
  }

  static int levelRead(ClipSource& source, std::int32_t frame) {
    host::Image image(16, 16, host::Depth::bits8);
    source.read(frame, image);
    return static_cast<const std::uint8_t*>(viewOf(std::as_const(image)).row(15))[15 * 4 + 2];
  }

  test::ScratchFolder folder_;
  ClipOptions clip_{folder_ / test::clip("clip"), {}};
};

TEST_F(ClipSourceTest, GivesEveryFrameInAnyOrderWithAnyMemory) {
  const std::uint64_t one = greyPicture(0, 0).bytes();
  const auto seed = std::random_device{}();
  SCOPED_TRACE(seed);
  std::mt19937 random(seed);
  for (const std::uint64_t memory : {std::uint64_t{0}, 7 * one, kPlenty}) {
    ClipSource source(clip_, 2, memory);
    for (int round = 0; round < 3; ++round) {
      std::vector<std::int32_t> order;
      for (int i = 0; i < kFrames; ++i) order.push_back(i);
      if (round > 0) std::shuffle(order.begin(), order.end(), random);
      for (const std::int32_t frame : order) {
        EXPECT_EQ(source.picture(frame).index(), frame);
        EXPECT_EQ(levelRead(source, frame), levelOf(frame));
      }
    }
  }
}

TEST_F(ClipSourceTest, DecodesAClipThatFitsOnce) {
  ClipSource source(clip_, 1, kPlenty);
  std::vector<media::Picture> first;
  for (int i = 0; i < kFrames; ++i) first.push_back(source.picture(i));
  for (int i = kFrames - 1; i >= 0; --i) {
    // The very pixels, not others like them.
    EXPECT_EQ(source.picture(i).frame(), first[static_cast<std::size_t>(i)].frame());
    EXPECT_TRUE(source.kept(i));
  }
}

TEST_F(ClipSourceTest, KeepsTheHeadOfAClipThatDoesNotFit) {
  std::uint64_t one = 0;
  {
    ClipSource all(clip_, 1, kPlenty);
    one = all.picture(0).bytes();
  }
  ClipSource source(clip_, 1, 5 * one);
  for (int round = 0; round < 2; ++round) {
    for (int i = 0; i < kFrames; ++i) source.picture(i);
    for (int i = 0; i < kFrames; ++i) EXPECT_EQ(source.kept(i).has_value(), i < 5) << i;
  }
}

TEST_F(ClipSourceTest, ServesSeveralThreads) {
  ClipSource source(clip_, 2, kPlenty / 2);
  std::vector<int> wrong(3);
  {
    std::vector<std::jthread> threads;
    for (std::size_t t = 0; t < wrong.size(); ++t) {
      threads.emplace_back([&, t] {
        for (int i = 0; i < kFrames; ++i) {
          const auto frame =
              static_cast<std::int32_t>((i * 7 + static_cast<int>(t) * 11) % kFrames);
          if (levelRead(source, frame) != levelOf(frame)) ++wrong[t];
        }
      });
    }
  }
  EXPECT_EQ(wrong, std::vector<int>(3));
}

TEST_F(ClipSourceTest, ALoanStandsInForItsThreadAloneAndAsLongAsItLives) {
  ClipSource source(clip_, 1, kPlenty);
  const media::Picture other = greyPicture(30, 201);
  {
    const PictureLoan loan(source, 4, other, {});
    EXPECT_FALSE(loan.level());
    EXPECT_EQ(levelRead(source, 5), levelOf(5));
    EXPECT_FALSE(loan.level());
    int elsewhere = 0;
    std::thread([&] { elsewhere = levelRead(source, 4); }).join();
    EXPECT_EQ(elsewhere, levelOf(4));
    EXPECT_FALSE(loan.level());
    EXPECT_EQ(levelRead(source, 4), 201);
    ASSERT_TRUE(loan.level());
    EXPECT_NEAR(*loan.level(), 201.0, 1e-9);
  }
  EXPECT_EQ(levelRead(source, 4), levelOf(4));
}

TEST_F(ClipSourceTest, LetsOthersHaveTheReaderAfterwards) {
  ClipSource source(clip_, 1, 0);
  source.picture(3);
  source.endReading();
  EXPECT_EQ(source.reader().frameAt(20).index(), 20);
  EXPECT_EQ(levelRead(source, 4), levelOf(4));
}

}  // namespace
}  // namespace cli
