// tests/stats/fast_power_test.cpp — bits of the approximated power.
#include "stats/fast_power.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

#include "tests/stats/random_source.h"

namespace varilum {
namespace {

std::uint64_t bitsOf(double value) {
  std::uint64_t bits;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

// The rule written out with wide integers and long double range checks.
std::uint64_t expectedBits(double a, double p) {
  std::int64_t h = static_cast<std::int64_t>(bitsOf(a) >> 32);
  if (h >= 2147483648LL) h -= 4294967296LL;
  std::int64_t d = h - 1072632447LL;
  if (d < -2147483648LL) d += 4294967296LL;  // wraps like 32 bits
  const double t = static_cast<double>(d) * p + 1072632447.0;
  std::int64_t whole = -2147483648LL;
  if (!std::isnan(t) && std::trunc(t) >= -2147483648.0 && std::trunc(t) <= 2147483647.0) {
    whole = static_cast<std::int64_t>(t);
  }
  return (static_cast<std::uint64_t>(whole) & 0xFFFFFFFFu) << 32;
}

TEST(FastPower, KnownBits) {
  // 1.0 has the upper half 1072693248, 60801 above the constant.
  EXPECT_EQ(bitsOf(fastPower(1.0, 1.0)), std::uint64_t{1072693248} << 32);
  EXPECT_EQ(bitsOf(fastPower(1.0, 0.5)), std::uint64_t{1072632447 + 30400} << 32);
  EXPECT_EQ(bitsOf(fastPower(1.0, 0.0)), std::uint64_t{1072632447} << 32);
  EXPECT_EQ(bitsOf(fastPower(0.0, 1.0)), 0u);
}

TEST(FastPower, LosesTheLowerHalfOfTheNumber) {
  const double third = 1.0 / 3.0;
  EXPECT_EQ(bitsOf(fastPower(third, 1.0)), bitsOf(third) >> 32 << 32);
}

TEST(FastPower, IsMinusZeroOutOfRangeAndForNan) {
  const std::uint64_t minusZero = std::uint64_t{1} << 63;
  EXPECT_EQ(bitsOf(fastPower(0.0, 100.0)), minusZero);
  EXPECT_EQ(bitsOf(fastPower(1e300, 1e6)), minusZero);
  EXPECT_EQ(bitsOf(fastPower(0.5, std::nan(""))), minusZero);
  EXPECT_EQ(bitsOf(fastPower(0.5, std::numeric_limits<double>::infinity())), minusZero);
  EXPECT_EQ(bitsOf(fastPower(0.5, -std::numeric_limits<double>::infinity())), minusZero);
}

TEST(FastPower, OfZeroJustAboveOneIsNoNumber) {
  EXPECT_TRUE(std::isnan(fastPower(0.0, 1.0005)));
}

TEST(FastPower, WrapsTheDistanceOfNegativeNumbers) {
  EXPECT_EQ(bitsOf(fastPower(-0.0, 1.0)), expectedBits(-0.0, 1.0));
  EXPECT_EQ(bitsOf(fastPower(-0.0, 0.5)), expectedBits(-0.0, 0.5));
  EXPECT_GT(fastPower(-0.0, 0.5), 1e100);
}

TEST(FastPower, FollowsTheRuleForRandomBits) {
  test::RandomSource random;
  for (int i = 0; i < 300000; ++i) {
    const std::uint64_t bits = random.bits();
    double a;
    std::memcpy(&a, &bits, sizeof a);
    if (i % 2 == 0) a = random.real(0.0, 1.0);
    const double p = random.chance(0.5) ? random.real(0.0, 3.0) : random.real(-100.0, 100.0);
    ASSERT_EQ(bitsOf(fastPower(a, p)), expectedBits(a, p)) << a << " ^ " << p;
  }
}

TEST(FastPower, IsNearThePowerForShares) {
  for (double p = 0.5; p <= 2.0; p += 0.25) {
    for (double a = 0.05; a <= 1.0; a += 0.05) {
      EXPECT_NEAR(fastPower(a, p), std::pow(a, p), 0.12 * std::pow(a, p)) << a << " ^ " << p;
    }
  }
}

}  // namespace
}  // namespace varilum
