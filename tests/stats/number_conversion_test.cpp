// tests/stats/number_conversion_test.cpp — conversions at and beyond their ends.
#include "stats/number_conversion.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/stats/special_values.h"

namespace varilum {
namespace {

using test::kInfinity;

TEST(TruncateToInt, CutsTowardZero) {
  EXPECT_EQ(truncateToInt(0.0), 0);
  EXPECT_EQ(truncateToInt(2.999), 2);
  EXPECT_EQ(truncateToInt(-2.999), -2);
  EXPECT_EQ(truncateToInt(-0.5), 0);
  EXPECT_EQ(truncateToInt(252.45), 252);
}

TEST(TruncateToInt, SaturatesAndTakesNanAsZero) {
  EXPECT_EQ(truncateToInt(std::nan("")), 0);
  EXPECT_EQ(truncateToInt(kInfinity), 2147483647);
  EXPECT_EQ(truncateToInt(-kInfinity), -2147483647 - 1);
  EXPECT_EQ(truncateToInt(1e300), 2147483647);
  EXPECT_EQ(truncateToInt(2147483646.9), 2147483646);
  EXPECT_EQ(truncateToInt(2147483647.0), 2147483647);
  EXPECT_EQ(truncateToInt(2147483648.0), 2147483647);
  EXPECT_EQ(truncateToInt(-2147483647.5), -2147483647);
  EXPECT_EQ(truncateToInt(-2147483648.0), -2147483647 - 1);
  EXPECT_EQ(truncateToInt(-2147483649.0), -2147483647 - 1);
}

TEST(RoundFixed, GoesToTheNearestWholeNumber) {
  EXPECT_EQ(roundFixed(0), 0);
  EXPECT_EQ(roundFixed(32767), 0);
  EXPECT_EQ(roundFixed(32768), 1);
  EXPECT_EQ(roundFixed(5 * 65536), 5);
  EXPECT_EQ(roundFixed(-32768), 0);
  EXPECT_EQ(roundFixed(-32769), -1);
  EXPECT_EQ(roundFixed(std::numeric_limits<std::int32_t>::max()), 32768);
}

TEST(FixedToDouble, IsExact) {
  EXPECT_EQ(fixedToDouble(65536), 1.0);
  EXPECT_EQ(fixedToDouble(99 * 65536 + 32768), 99.5);
  EXPECT_EQ(fixedToDouble(-1), -1.52587890625e-05);
}

}  // namespace
}  // namespace varilum
