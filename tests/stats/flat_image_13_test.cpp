// tests/stats/flat_image_13_test.cpp — what an image of the previous version brings along.
// (Unary plus copies a packed field out: a reference to it would be misaligned.)
#include "stats/flat_image_13.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <memory>

#include "tests/stats/image_bytes.h"

namespace varilum {
namespace {

using test::ImageBytes;

ImageBytes imageOf(std::size_t frames, std::size_t extra = 0) {
  ImageBytes image(1068 + 4428 * frames + extra);
  image.put(8, 13);
  return image;
}

TEST(FitsFlatImage13, WantsTheDataOfExactlyTheLayersFrames) {
  EXPECT_TRUE(fitsFlatImage13(imageOf(5), 5));
  EXPECT_FALSE(fitsFlatImage13(imageOf(5), 6));
  EXPECT_FALSE(fitsFlatImage13(imageOf(5), 4));  // an image of another layer
  EXPECT_FALSE(fitsFlatImage13(imageOf(5), 0));
  EXPECT_TRUE(fitsFlatImage13(imageOf(0), 0));
  EXPECT_FALSE(fitsFlatImage13(imageOf(0), 1));
  EXPECT_FALSE(fitsFlatImage13(imageOf(5), -1));
  EXPECT_FALSE(fitsFlatImage13(imageOf(5), 2147483647));
}

TEST(FitsFlatImage13, AllowsLooseBytesAtTheEnd) {
  EXPECT_TRUE(fitsFlatImage13(imageOf(5, 100), 5));
  EXPECT_TRUE(fitsFlatImage13(imageOf(6, 100), 5));
  EXPECT_FALSE(fitsFlatImage13(imageOf(4, 4427), 5));
}

TEST(FitsFlatImage13, RefusesShortHeadersAndOtherVersions) {
  ImageBytes image = imageOf(0);
  image.resize(1067);
  EXPECT_FALSE(fitsFlatImage13(image, 0));
  EXPECT_FALSE(fitsFlatImage13({}, 0));
  ImageBytes other = imageOf(2);
  other.put(8, 14);
  EXPECT_FALSE(fitsFlatImage13(other, 2));
}

TEST(ReadHeader13, MovesEveryFieldThatBothVersionsKnow) {
  ImageBytes image = imageOf(1);
  image.put(12, 1.5f).put(16, 2.5f);
  image.put<std::uint8_t>(20, 3).put<std::uint8_t>(21, 1).put<std::uint8_t>(22, 3);
  image.put(24, 0.75f).put(28, 2);
  image.put<std::uint8_t>(40, 6).put<std::uint8_t>(41, 1).put<std::uint8_t>(42, 7);
  image.put<std::uint8_t>(43, 8).put<std::uint8_t>(44, 9).put<std::uint8_t>(45, 10);
  image.put(48, 88.5).put(56, 120.25).put(64, 130.5);
  for (std::size_t i = 0; i < 5; ++i) image.put(72 + 8 * i, 2.0 + static_cast<double>(i));
  image.put<std::uint8_t>(549, 11);
  image.put(548, std::uint8_t{0xEE}).put(550, std::uint8_t{0xEE}).put(112, 0xEEEEEEEEu);

  const auto expected = std::make_unique<SequenceState>(freshSequenceState());
  expected->frameCount = 1;
  const auto put = [&](std::size_t offset, auto value) {
    std::memcpy(reinterpret_cast<std::byte*>(expected.get()) + offset, &value, sizeof value);
  };
  put(652, 1.5f);
  put(656, 2.5f);
  put(96, std::uint8_t{3});
  put(97, std::uint8_t{1});
  put(613, std::uint8_t{3});
  put(616, 0.75f);
  put(620, 2);
  put(98, std::uint8_t{6});
  put(99, std::uint8_t{0});
  put(100, std::uint8_t{7});
  put(632, std::uint8_t{8});
  put(85, std::uint8_t{9});
  put(86, std::uint8_t{10});
  put(624, 88.5);
  put(636, 120.25);
  put(644, 130.5);
  for (std::size_t i = 0; i < 5; ++i) put(660 + 8 * i, 2.0 + static_cast<double>(i));
  put(84, std::uint8_t{11});

  const auto state = std::make_unique<SequenceState>(freshSequenceState());
  state->frameCount = 1;
  readHeader13(image, *state);
  EXPECT_EQ(std::memcmp(state.get(), expected.get(), sizeof *state), 0);
}

TEST(ReadHeader13, CopiesTheTwoSpreadsAsRawPatterns) {
  ImageBytes image = imageOf(0);
  image.put(12, 0x7FA00001u).put(16, 0xFFFFFFFFu);  // signalling and quiet NaN
  const auto state = std::make_unique<SequenceState>(freshSequenceState());
  readHeader13(image, *state);
  std::uint32_t patterns[2];
  std::memcpy(patterns, reinterpret_cast<const std::byte*>(state.get()) + 652, 8);
  EXPECT_EQ(patterns[0], 0x7FA00001u);
  EXPECT_EQ(patterns[1], 0xFFFFFFFFu);
}

TEST(ReadHeader13, ReplacesSmallClippingPercentages) {
  const auto state = std::make_unique<SequenceState>(freshSequenceState());
  for (const auto& [saved, restored] :
       {std::pair{0.0, 99.0}, {9.99, 99.0}, {10.0, 10.0}, {-5.0, 99.0}, {std::nan(""), 99.0}}) {
    ImageBytes image = imageOf(0);
    image.put(48, saved);
    readHeader13(image, *state);
    EXPECT_EQ(+state->clippingPercent, restored) << saved;
  }
}

TEST(Levels13, LieOneAfterTheOtherBehindTheHeader) {
  ImageBytes image = imageOf(3);
  for (std::size_t i = 0; i < 12; ++i) image.put(1068 + 8 * i, static_cast<double>(i));
  const LevelImages13 levels = levels13(image, 3);
  const auto first = [](std::span<const std::byte> bytes) {
    EXPECT_EQ(bytes.size(), 24u);
    double value;
    std::memcpy(&value, bytes.data(), sizeof value);
    return value;
  };
  EXPECT_EQ(first(levels.inputLuminance), 0.0);
  EXPECT_EQ(first(levels.inputSpread), 3.0);
  EXPECT_EQ(first(levels.desiredLuminance), 6.0);
  EXPECT_EQ(first(levels.desiredSpread), 9.0);
}

TEST(ReadFrame13, MovesEveryFieldOfTheEntry) {
  ImageBytes image = imageOf(3);
  const std::size_t entry = 1068 + 3 * 32 + 2 * 4396;  // the last frame, up to the last byte
  for (std::size_t i = entry; i < entry + 4396; ++i) image.put(i, std::uint8_t{0xEE});
  for (std::uint32_t i = 0; i < 256; ++i) {
    image.put(entry + 4 * i, 1000 + i);
    image.put(entry + 1048 + 4 * i, 2000 + i);
    image.put(entry + 2072 + 4 * i, 3000 + i);
    image.put(entry + 3096 + 4 * i, 4000 + i);
  }
  image.put(entry + 1024, 11).put(entry + 1028, 12).put(entry + 1032, 13).put(entry + 1036, 14);
  image.put(entry + 1040, 15.5).put(entry + 4120, 16).put(entry + 4128, 17.5);
  image.put<std::uint8_t>(entry + 4136, 1).put<std::uint8_t>(entry + 4137, 2);
  image.put(entry + 4144, 18).put(entry + 4148, 19).put(entry + 4152, 20);
  image.put<std::uint8_t>(entry + 4158, 21).put<std::uint8_t>(entry + 4159, 22);
  for (std::size_t i = 0; i < 8; ++i) {
    image.put(entry + 4160 + 4 * i, static_cast<std::int32_t>(23 + i));
  }

  FrameStats stats;
  FrameHistogram histogram;
  std::memset(&stats, 0x33, sizeof stats);
  std::memset(&histogram, 0x33, sizeof histogram);
  readFrame13(image, 3, 2, stats, histogram);

  std::byte expected[176] = {};
  const auto put = [&](std::size_t offset, auto value) {
    std::memcpy(expected + offset, &value, sizeof value);
  };
  put(0, 2);
  put(4, -1);
  put(8, std::uint8_t{1});
  put(9, std::uint8_t{2});
  put(12, 11);
  put(16, 16);
  put(20, 12);
  put(24, 13);
  put(28, 14);
  put(32, 15.5);
  put(40, 17.5);
  put(48, 18);
  put(52, 19);
  put(56, 20);
  put(60, std::uint8_t{21});
  put(61, std::uint8_t{22});
  for (std::size_t i = 0; i < 8; ++i) put(64 + 4 * i, static_cast<std::int32_t>(23 + i));
  EXPECT_EQ(std::memcmp(&stats, expected, sizeof expected), 0);
  EXPECT_EQ(histogram.frame, 2);
  for (std::uint32_t i = 0; i < 256; ++i) {
    ASSERT_EQ(histogram.luminance[i], 1000 + i);
    ASSERT_EQ(histogram.red[i], 2000 + i);
    ASSERT_EQ(histogram.green[i], 3000 + i);
    ASSERT_EQ(histogram.blue[i], 4000 + i);
  }
}

}  // namespace
}  // namespace varilum
