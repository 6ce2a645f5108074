// tests/stats/sequence_state_test.cpp — every byte of a new instance's header.
#include "stats/sequence_state.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>

namespace varilum {
namespace {

using Bytes = std::array<std::uint8_t, 5196>;

template <class Value>
void put(Bytes& bytes, std::size_t offset, Value value) {
  std::memcpy(bytes.data() + offset, &value, sizeof value);
}

TEST(FreshSequenceState, HasTheCreationValuesAtTheSavedOffsetsAndZeroElsewhere) {
  Bytes expected{};
  put<std::int32_t>(expected, 0, 4);
  put<std::int32_t>(expected, 4, 2);
  put<std::int32_t>(expected, 8, 14);
  put<std::int32_t>(expected, 16, 30);
  put<std::uint8_t>(expected, 98, 1);
  for (int i = 0; i < 256; ++i) {
    put(expected, 101 + static_cast<std::size_t>(i), static_cast<std::uint8_t>(i));
  }
  put<std::uint8_t>(expected, 613, 2);
  put<std::int32_t>(expected, 620, 1);
  put(expected, 624, 99.0);
  put(expected, 660, 1.0);
  put(expected, 668, 1.0);
  put(expected, 676, 1.0);
  put<std::int32_t>(expected, 828, -1);   // the statistics' frame
  put<std::int32_t>(expected, 832, -1);   // and slot
  put<std::int32_t>(expected, 1004, -1);  // the histogram's frame

  const SequenceState state = freshSequenceState();
  Bytes actual{};
  static_assert(sizeof state == sizeof actual);
  std::memcpy(actual.data(), &state, sizeof state);
  for (std::size_t i = 0; i < actual.size(); ++i) {
    ASSERT_EQ(actual[i], expected[i]) << "byte " << i;
  }
}

TEST(FrameRecords, AreAllZeroButForTheIndicesWhenFresh) {
  FrameStats stats;
  std::memset(&stats, 0x5A, sizeof stats);
  resetFrameStats(stats);
  std::array<std::uint8_t, 176> expectedStats{};
  std::memset(expectedStats.data(), 0xFF, 8);
  EXPECT_EQ(std::memcmp(&stats, expectedStats.data(), sizeof stats), 0);

  FrameHistogram histogram;
  std::memset(&histogram, 0x5A, sizeof histogram);
  resetFrameHistogram(histogram);
  std::array<std::uint8_t, 4100> expectedHistogram{};
  std::memset(expectedHistogram.data(), 0xFF, 4);
  EXPECT_EQ(std::memcmp(&histogram, expectedHistogram.data(), sizeof histogram), 0);
}

}  // namespace
}  // namespace varilum
