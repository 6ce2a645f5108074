// tests/stats/status_text_test.cpp — the words shown while frames are counted.
#include "stats/status_text.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <memory>

namespace varilum {
namespace {

TEST(StatusText, NamesBothCounts) {
  const auto state = std::make_unique<SequenceState>(freshSequenceState());
  formatStatusText(*state, 3, 120);
  EXPECT_STREQ(state->statusText, "3 of 120 frames analyzed");
  formatStatusText(*state, 0, 0);
  EXPECT_STREQ(state->statusText, "0 of 0 frames analyzed");
}

TEST(StatusText, StaysInItsFieldWithTheLongestNumbers) {
  const auto state = std::make_unique<SequenceState>(freshSequenceState());
  std::memset(state->statusText, 'x', sizeof state->statusText);
  const std::int32_t least = std::numeric_limits<std::int32_t>::min();
  formatStatusText(*state, least, least);
  EXPECT_STREQ(state->statusText, "-2147483648 of -2147483648 frames analyzed");
  EXPECT_EQ(state->correctionMethod, kCorrectionShift);
  EXPECT_EQ(state->correctionTable[255], 255);
}

}  // namespace
}  // namespace varilum
