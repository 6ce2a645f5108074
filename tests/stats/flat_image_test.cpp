// tests/stats/flat_image_test.cpp — sound images are read, all others refused.
// (Unary plus copies a packed field out: a reference to it would be misaligned.)
#include "stats/flat_image.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <vector>

#include "tests/stats/image_bytes.h"
#include "tests/stats/random_source.h"
#include "tests/stats/special_values.h"

namespace varilum {
namespace {

using test::ImageBytes;
using test::kInfinity;

constexpr std::size_t kHeader = 5196;

// An image of N frames in which every array element says where it belongs.
ImageBytes soundImage(std::int32_t frames, bool renderOnly = false,
                      std::uint32_t header = kHeader) {
  const auto n = static_cast<std::size_t>(frames);
  ImageBytes image(header + 32 * n + (renderOnly ? 0 : 176 * n + 123000));
  image.put(0, 4).put(4, 2).put(8, 14).put(12, frames).put(16, 30).put(20, header);
  image.put<std::uint32_t>(24, renderOnly ? 0 : static_cast<std::uint32_t>(176 * n));
  image.put<std::uint64_t>(28, 0xDEADBEEFDEADBEEF);
  image.put<std::uint32_t>(36, renderOnly ? 0 : 123000);
  image.put<std::uint64_t>(40, 0xDEADBEEFDEADBEEF);
  image.put<std::uint32_t>(48, static_cast<std::uint32_t>(8 * n));
  for (const std::size_t handle : {52u, 60u, 68u, 76u}) {
    image.put<std::uint64_t>(handle, 0xDEADBEEFDEADBEEF);
  }
  image.put<std::uint8_t>(99, 1);
  for (std::size_t array = 0; array < 4; ++array) {
    for (std::size_t i = 0; i < n; ++i) {
      image.put(header + 8 * (array * n + i), static_cast<double>(array * 60 + i));
    }
  }
  if (!renderOnly) {
    for (std::size_t i = 0; i < n; ++i) {
      image.put(header + 32 * n + 176 * i, static_cast<std::int32_t>(i));
    }
    for (std::size_t slot = 0; slot < 30; ++slot) {
      image.put(header + 208 * n + 4100 * slot, static_cast<std::int32_t>(500 + slot));
    }
  }
  return image;
}

template <class Value>
Value valueAt(std::span<const std::byte> bytes, std::size_t offset) {
  Value value;
  std::memcpy(&value, bytes.subspan(offset, sizeof value).data(), sizeof value);
  return value;
}

// Reads a copy on the heap that is exactly as long as the image, so that the sanitizer sees any
// step beyond it.
bool isRead(const ImageBytes& image) {
  const auto copy = std::make_unique<std::byte[]>(image.size());
  std::memcpy(copy.get(), image.data(), image.size());
  return readFlatImage({copy.get(), image.size()}).has_value();
}

TEST(ImageVersion, IsTheThirdWordOrZero) {
  ImageBytes image(12);
  image.put(8, 13);
  EXPECT_EQ(imageVersion(image), 13);
  image.put(8, -5);
  EXPECT_EQ(imageVersion(image), -5);
  image.resize(11);
  EXPECT_EQ(imageVersion(image), 0);
  EXPECT_EQ(imageVersion({}), 0);
}

TEST(ReadFlatImage, FindsTheHeaderAndEveryPart) {
  const ImageBytes image = [] {
    ImageBytes made = soundImage(7);
    made.put(624, 42.5).put<std::uint8_t>(97, 1).put<std::uint8_t>(100, 1).put(684, 3.25);
    made.put<std::uint8_t>(5195, 0x77);
    return made;
  }();
  const auto read = readFlatImage(image);
  ASSERT_TRUE(read);
  EXPECT_EQ(read->frameCount, 7);
  EXPECT_EQ(read->slotCount, 30);
  EXPECT_EQ(+read->header.clippingPercent, 42.5);
  EXPECT_EQ(read->header.analysisComplete, 1);
  EXPECT_EQ(read->header.refreshPending, 1);
  EXPECT_EQ(+read->header.inputVariance, 3.25);
  EXPECT_EQ(read->header.carried5104[91], 0x77);
  EXPECT_EQ(read->header.flattened, 1);
  const std::span<const std::byte> arrays[] = {read->inputLuminance, read->inputSpread,
                                               read->desiredLuminance, read->desiredSpread};
  for (std::size_t array = 0; array < 4; ++array) {
    ASSERT_EQ(arrays[array].size(), 56u);
    for (std::size_t i = 0; i < 7; ++i) {
      EXPECT_EQ(valueAt<double>(arrays[array], 8 * i), static_cast<double>(array * 60 + i));
    }
  }
  ASSERT_EQ(read->frameStats.size(), 7u * 176u);
  EXPECT_EQ(valueAt<std::int32_t>(read->frameStats, 176 * 6), 6);
  ASSERT_EQ(read->histograms.size(), 123000u);
  EXPECT_EQ(valueAt<std::int32_t>(read->histograms, 4100 * 29), 529);
}

TEST(ReadFlatImage, FollowsNoAddressesAndEndsTheText) {
  ImageBytes image = soundImage(2);
  for (std::size_t i = 357; i < 613; ++i) image.put(i, 'x');
  image.put<std::uint8_t>(613, 3);
  const auto read = readFlatImage(image);
  ASSERT_TRUE(read);
  EXPECT_EQ(+read->header.frameStats, 0u);
  EXPECT_EQ(+read->header.histogramCache, 0u);
  EXPECT_EQ(+read->header.inputLuminance, 0u);
  EXPECT_EQ(+read->header.inputSpread, 0u);
  EXPECT_EQ(+read->header.desiredLuminance, 0u);
  EXPECT_EQ(+read->header.desiredSpread, 0u);
  EXPECT_EQ(std::strlen(read->header.statusText), 255u);
  EXPECT_EQ(read->header.correctionMethod, 3);
}

TEST(ReadFlatImage, TakesImagesWithoutRecordsAndHistograms) {
  const ImageBytes image = soundImage(5, true);
  EXPECT_EQ(image.size(), 5196u + 32u * 5u);
  const auto read = readFlatImage(image);
  ASSERT_TRUE(read);
  EXPECT_TRUE(read->frameStats.empty());
  EXPECT_TRUE(read->histograms.empty());
  EXPECT_EQ(valueAt<double>(read->desiredSpread, 32), 184.0);
}

TEST(ReadFlatImage, TakesRecordsWithoutHistogramsAndTheOtherWayRound) {
  ImageBytes onlyRecords = soundImage(5);
  onlyRecords.put<std::uint32_t>(36, 0).resize(kHeader + 208 * 5);
  const auto records = readFlatImage(onlyRecords);
  ASSERT_TRUE(records);
  EXPECT_EQ(records->frameStats.size(), 880u);
  EXPECT_TRUE(records->histograms.empty());

  ImageBytes onlyHistograms = soundImage(5);
  onlyHistograms.put<std::uint32_t>(24, 0);
  onlyHistograms.put<std::int32_t>(kHeader + 160, 4444);
  const auto histograms = readFlatImage(onlyHistograms);
  ASSERT_TRUE(histograms);
  EXPECT_TRUE(histograms->frameStats.empty());
  EXPECT_EQ(valueAt<std::int32_t>(histograms->histograms, 0), 4444);
}

TEST(ReadFlatImage, TakesNoFramesAndLongerImages) {
  EXPECT_TRUE(isRead(soundImage(0)));
  EXPECT_TRUE(isRead(soundImage(0, true)));
  ImageBytes longer = soundImage(3);
  longer.resize(longer.size() + 1000);
  EXPECT_TRUE(isRead(longer));
}

TEST(ReadFlatImage, FillsTheTailOfAShorterHeaderFromAFreshState) {
  for (const std::uint32_t header : {104u, 110u, 700u, 5195u}) {
    const ImageBytes image = soundImage(4, false, header);
    const auto read = readFlatImage(image);
    ASSERT_TRUE(read) << header;
    EXPECT_EQ(valueAt<double>(read->inputLuminance, 0), 0.0);
    EXPECT_EQ(valueAt<double>(read->inputSpread, 8), 61.0);
    EXPECT_EQ(read->header.correctionTable[255], header < 357 ? 255 : 0);
    EXPECT_EQ(+read->header.clippingPercent, header < 700 ? 99.0 : 0.0);
    EXPECT_EQ(read->header.currentHistogram.frame, header < 1008 ? -1 : 0);
  }
}

TEST(ReadFlatImage, TakesAHeaderSizeOfZeroAsTheWholeHeader) {
  ImageBytes image = soundImage(4);
  image.put<std::uint32_t>(20, 0);
  EXPECT_TRUE(isRead(image));
}

TEST(ReadFlatImage, TakesOtherNumbersOfSlots) {
  ImageBytes image = soundImage(4);
  image.put(16, 2).put<std::uint32_t>(36, 8200).resize(kHeader + 208 * 4 + 8200);
  const auto read = readFlatImage(image);
  ASSERT_TRUE(read);
  EXPECT_EQ(read->slotCount, 2);
  EXPECT_EQ(read->histograms.size(), 8200u);
  image.put(16, 0).put<std::uint32_t>(36, 0);
  EXPECT_TRUE(isRead(image));
}

TEST(ReadFlatImage, RefusesEveryTruncation) {
  const ImageBytes whole = soundImage(2);
  for (std::size_t size = 0; size < whole.size(); size += size < 5400 ? 1 : 997) {
    ImageBytes cut = whole;
    cut.resize(size);
    ASSERT_FALSE(isRead(cut)) << size;
  }
  ImageBytes cut = whole;
  cut.resize(whole.size() - 1);
  EXPECT_FALSE(isRead(cut));
  EXPECT_TRUE(isRead(whole));
}

TEST(ReadFlatImage, RefusesInconsistentHeaders) {
  const auto refuses = [](std::size_t offset, auto value) {
    ImageBytes image = soundImage(4);
    image.put(offset, value);
    return !isRead(image);
  };
  EXPECT_TRUE(refuses(8, 13));
  EXPECT_TRUE(refuses(8, 15));
  EXPECT_TRUE(refuses(99, std::uint8_t{0}));  // live data, not an image
  EXPECT_FALSE(refuses(99, std::uint8_t{255}));
  EXPECT_TRUE(refuses(12, -1));
  EXPECT_TRUE(refuses(12, 3));  // sizes belong to 4 frames
  EXPECT_TRUE(refuses(12, 5));
  EXPECT_TRUE(refuses(12, std::numeric_limits<std::int32_t>::min()));
  EXPECT_TRUE(refuses(12, std::numeric_limits<std::int32_t>::max()));
  EXPECT_TRUE(refuses(12, 24403224));
  EXPECT_TRUE(refuses(16, -1));
  EXPECT_TRUE(refuses(16, 31));
  EXPECT_TRUE(refuses(16, std::numeric_limits<std::int32_t>::max()));
  EXPECT_TRUE(refuses(20, 103u));
  EXPECT_TRUE(refuses(20, 5197u));
  EXPECT_TRUE(refuses(20, 0xFFFFFFFFu));
  EXPECT_TRUE(refuses(24, 175u * 4));
  EXPECT_TRUE(refuses(24, 176u * 5));
  EXPECT_TRUE(refuses(24, 0xFFFFFFFFu));
  EXPECT_TRUE(refuses(36, 122999u));
  EXPECT_TRUE(refuses(36, 4100u * 31));
  EXPECT_TRUE(refuses(48, 0u));
  EXPECT_TRUE(refuses(48, 31u));
  EXPECT_TRUE(refuses(48, 0xFFFFFFFFu));
}

TEST(ReadFlatImage, RefusesSizesThatOnlyFitModulo32Bits) {
  // 2^29 frames: 8 N = 2^32, which a 32-bit size field holds as 0.
  ImageBytes image = soundImage(0);
  image.put(12, 1 << 29);
  EXPECT_FALSE(isRead(image));
  // 1047554 slots of 4100 bytes are 2^32 + 4104.
  ImageBytes slots = soundImage(1);
  slots.put(16, 1047554).put<std::uint32_t>(36, 4104);
  EXPECT_FALSE(isRead(slots));
  // The most frames allowed, in a small image.
  ImageBytes most = soundImage(1);
  most.put(12, 24403223).put<std::uint32_t>(48, 24403223u * 8u);
  most.put<std::uint32_t>(24, 4294967248u);
  EXPECT_FALSE(isRead(most));
}

TEST(ReadFlatImage, SurvivesRandomDamage) {
  test::RandomSource random;
  for (int round = 0; round < 20000; ++round) {
    ImageBytes image = soundImage(random.between(0, 3), random.chance(0.5));
    for (int hits = random.between(1, 4); hits > 0; --hits) {
      const auto offset = static_cast<std::size_t>(random.between(8, 104));
      image.put(offset, random.byte());
    }
    if (random.chance(0.3)) {
      image.resize(static_cast<std::size_t>(
          random.between(0, static_cast<std::int32_t>(image.size()) + 50)));
    }
    const auto copy = std::make_unique<std::byte[]>(image.size());
    std::memcpy(copy.get(), image.data(), image.size());
    const std::span<const std::byte> exact(copy.get(), image.size());
    if (const auto read = readFlatImage(exact)) {
      const auto n = static_cast<std::size_t>(read->frameCount);
      ASSERT_EQ(read->inputLuminance.size(), 8 * n);
      std::vector<double> levels(n);
      restoreDesiredLevels(read->desiredSpread, levels);
      ASSERT_LE(static_cast<const void*>(read->histograms.data() + read->histograms.size()),
                static_cast<const void*>(copy.get() + image.size()));
    }
  }
}

std::vector<std::byte> saved(const std::vector<double>& values) {
  std::vector<std::byte> bytes(values.size() * 8 + 1);
  std::memcpy(bytes.data() + 1, values.data(), values.size() * 8);
  return bytes;  // read from offset 1: unaligned
}

TEST(RestoreLevels, ReplacesWhatIsNoLevel) {
  const std::vector<double> values{0.0,       255.0,      255.0000001,  300.0, -1.0, -1.5,
                                   kInfinity, -kInfinity, std::nan(""), 1e-9,  -0.5};
  const auto bytes = saved(values);
  std::vector<double> input(values.size());
  restoreInputLevels(std::span(bytes).subspan(1), input);
  EXPECT_EQ(input, (std::vector<double>{0.0, 255.0, 255.0000001, 300.0, -1.0, -1.5, -1.0, -1.0,
                                        -1.0, 1e-9, -0.5}));
  std::vector<double> desired(values.size());
  restoreDesiredLevels(std::span(bytes).subspan(1), desired);
  EXPECT_EQ(desired, (std::vector<double>{0.0, 255.0, -1.0, -1.0, -1.0, -1.0, -1.0, -1.0, -1.0,
                                          1e-9, -0.5}));
}

TEST(RestoreLevels, TakesTheShorterOfBothSides) {
  const auto bytes = saved({1.0, 2.0, 3.0});
  std::vector<double> two(2, 9.0);
  restoreInputLevels(std::span(bytes).subspan(1), two);
  EXPECT_EQ(two, (std::vector<double>{1.0, 2.0}));
  std::vector<double> four(4, 9.0);
  restoreInputLevels(std::span(bytes).subspan(1, 23), four);
  EXPECT_EQ(four, (std::vector<double>{1.0, 2.0, 9.0, 9.0}));
  restoreDesiredLevels({}, four);
  EXPECT_EQ(four[0], 1.0);
}

TEST(FlatImageSize, AddsTheStatesSizesInWideNumbers) {
  const auto state = std::make_unique<SequenceState>(freshSequenceState());
  EXPECT_EQ(flatImageSize(*state), 5196u);
  state->levelArrayBytes = 80;
  EXPECT_EQ(flatImageSize(*state), 5196u + 320u);
  state->frameStatsBytes = 1760;
  state->histogramCacheBytes = 123000;
  EXPECT_EQ(flatImageSize(*state), 5196u + 2080u + 123000u);
  state->levelArrayBytes = state->frameStatsBytes = state->histogramCacheBytes = 0xFFFFFFFF;
  EXPECT_EQ(flatImageSize(*state), 5196u + 6ull * 0xFFFFFFFFull);
}

}  // namespace
}  // namespace varilum
