// tests/stats/moving_window_test.cpp — moving means against adding up anew.
#include "stats/moving_window.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

#include "tests/stats/random_source.h"

namespace varilum {
namespace {

using test::RandomSource;

// The rule, one level after the other.
double addedUp(const std::vector<double>& levels, std::size_t first, std::size_t end,
               double fallback) {
  double sum = 0.0;
  int count = 0;
  for (std::size_t i = first; i < end; ++i) {
    if (!(levels[i] > 0.0)) continue;
    sum += levels[i];
    ++count;
  }
  return count > 0 ? sum / count : fallback;
}

enum class Kind { single, fine, tiny, nearlyEqual, hostile };

double levelOf(Kind kind, RandomSource& random) {
  switch (kind) {
    case Kind::single:
      return static_cast<float>(random.real(0.02, 255));
    case Kind::fine:
      return random.real(0.02, 255);
    case Kind::tiny:
      return random.real(0, 1) * std::ldexp(1.0, random.between(-60, 0));
    case Kind::nearlyEqual:  // means on the boundary between two floats
      return 1.0 + std::ldexp(random.between(-1, 3), -25);
    case Kind::hostile:
      break;
  }
  const double values[] = {std::nan(""),
                           std::numeric_limits<double>::infinity(),
                           -std::numeric_limits<double>::infinity(),
                           1e300,
                           std::numeric_limits<double>::denorm_min(),
                           511.99999,
                           512.0,
                           -0.0,
                           70.0};
  return values[random.between(0, 8)];
}

bool sameBits(double a, double b) {
  return std::memcmp(&a, &b, sizeof a) == 0 || (std::isnan(a) && std::isnan(b));
}

TEST(MovingMeans, EqualAddingUpAnewBitForBit) {
  RandomSource random;
  for (const Kind kind : {Kind::single, Kind::fine, Kind::tiny, Kind::nearlyEqual, Kind::hostile}) {
    for (int round = 0; round < 40; ++round) {
      std::vector<double> levels(static_cast<std::size_t>(random.between(1, 400)));
      for (double& level : levels) {
        const bool asOrdered = random.chance(kind == Kind::hostile ? 0.03 : 0.9);
        level = asOrdered ? levelOf(kind, random) : random.chance(0.5) ? -1.0 : 12.5;
      }
      LevelMeans means(levels);
      RoundedMeans rounded(levels);
      std::size_t first = 0;
      std::size_t end = 1;
      for (int step = 0; step < 200; ++step) {
        const auto size = static_cast<std::int32_t>(levels.size());
        if (random.chance(0.05)) {  // anywhere
          first = static_cast<std::size_t>(random.between(0, size - 1));
          end = first + 1 +
                static_cast<std::size_t>(random.between(0, size - 1)) % (levels.size() - first);
        } else {  // on by a little, either way at either end
          const auto moved = [&](std::size_t at) {
            return static_cast<std::size_t>(
                std::clamp(static_cast<std::int32_t>(at) + random.between(-1, 2), 0, size));
          };
          first = std::min(moved(first), levels.size() - 1);
          end = std::max(moved(end), first + 1);
        }
        const double expected = addedUp(levels, first, end, 3.25);
        ASSERT_TRUE(sameBits(means.over(first, end, 3.25), expected)) << first << ' ' << end;
        ASSERT_TRUE(
            sameBits(double{rounded.over(first, end, 3.25)}, double{static_cast<float>(expected)}))
            << first << ' ' << end;
      }
    }
  }
}

TEST(MovingWindow, KnowsWhenItsSumIsExact) {
  const std::vector<double> levels = {1.5, -1.0, 0.25, 0x1p-31, 600.0, 3.0};
  MovingWindow<30> window(levels);
  window.moveTo(0, 3);
  EXPECT_TRUE(window.isExact());
  EXPECT_EQ(window.sum(), 1.75);
  EXPECT_EQ(window.count(), 2);
  window.moveTo(1, 4);
  EXPECT_FALSE(window.isExact());
  EXPECT_TRUE(window.isKnown());
  EXPECT_EQ(window.sum(), 0.25);
  EXPECT_EQ(window.uncertainty(), 0x1p-30);
  window.moveTo(2, 5);
  EXPECT_FALSE(window.isKnown());
  window.moveTo(5, 6);
  EXPECT_TRUE(window.isExact());
  EXPECT_EQ(window.sum(), 3.0);
}

// 2^53 units and more: a double may round while it adds.
TEST(MovingWindow, IsNotExactBeyondWhatADoubleHolds) {
  const std::vector<double> levels(40000, 255.0);
  MovingWindow<30> window(levels);
  window.moveTo(0, 32000);
  EXPECT_TRUE(window.isExact());
  EXPECT_EQ(window.sum(), 32000 * 255.0);
  window.moveTo(0, 33000);  // 255 x 33000 > 2^23
  EXPECT_FALSE(window.isExact());
  EXPECT_TRUE(window.isKnown());
  EXPECT_EQ(window.uncertainty(), 0.0);
}

}  // namespace
}  // namespace varilum
