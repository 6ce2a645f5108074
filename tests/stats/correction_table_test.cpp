// tests/stats/correction_table_test.cpp — the tables of the three methods.
// (Unary plus copies a packed field out: a reference to it would be misaligned.)
#include "stats/correction_table.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <memory>

#include "tests/stats/random_source.h"
#include "tests/stats/special_values.h"

namespace varilum {
namespace {

using test::kInfinity;
using test::kNan;

double naturalLog(double value) {
  return std::log(value);
}

class CorrectionTable : public ::testing::Test {
 protected:
  CorrectionTable() { buildIdentityTable(state); }

  void setLevels(double desired, double input, float desiredSpread = 0, float inputSpread = 0) {
    state.frameDesiredLuminance = desired;
    state.frameInputLuminance = input;
    state.frameDesiredSpread = desiredSpread;
    state.frameInputSpread = inputSpread;
  }
  void setClipping(double percent) {
    state.adjustClipping = 1;
    state.clippingPercent = percent;
  }
  int at(int level) const { return state.correctionTable[level]; }
  bool isIdentity() const {
    for (int i = 0; i < 256; ++i) {
      if (at(i) != i) return false;
    }
    return true;
  }
  bool isAll(int value) const {
    for (int i = 0; i < 256; ++i) {
      if (at(i) != value) return false;
    }
    return true;
  }
  void mark() { std::memset(state.correctionTable, 33, 256); }

  std::unique_ptr<SequenceState> owner = std::make_unique<SequenceState>(freshSequenceState());
  SequenceState& state = *owner;
};

TEST_F(CorrectionTable, IdentityMapsEveryLevelToItself) {
  mark();
  buildIdentityTable(state);
  EXPECT_TRUE(isIdentity());
}

TEST_F(CorrectionTable, NoMethodBuildsWithoutAPositiveInput) {
  for (const double input : {0.0, -1.0, kNan, -kInfinity}) {
    setLevels(100, input);
    mark();
    state.gammaValue = 5.0f;
    EXPECT_FALSE(buildLinearTable(state));
    EXPECT_FALSE(buildShiftTable(state));
    EXPECT_EQ(state.gammaValue, 5.0f);
    EXPECT_FALSE(buildGammaTable(state, naturalLog));
    EXPECT_EQ(state.gammaValue, 1.0f);
    EXPECT_TRUE(isAll(33));
    EXPECT_EQ(+state.currentGain, 1.0);
    EXPECT_EQ(+state.largestGain, 1.0);
    EXPECT_EQ(+state.smallestGain, 1.0);
  }
}

TEST_F(CorrectionTable, LinearWithGainTwoSaturatesFrom128) {
  setLevels(100, 50);
  EXPECT_TRUE(buildLinearTable(state));
  for (int i = 0; i < 256; ++i) EXPECT_EQ(at(i), i < 128 ? 2 * i : 255) << i;
}

TEST_F(CorrectionTable, LinearRoundsHalvesUp) {
  setLevels(50, 100);
  EXPECT_TRUE(buildLinearTable(state));
  EXPECT_EQ(at(1), 1);
  EXPECT_EQ(at(2), 1);
  EXPECT_EQ(at(3), 2);
  EXPECT_EQ(at(255), 128);
}

TEST_F(CorrectionTable, LinearKeepsTheGainsAndTheirExtremes) {
  setLevels(150, 100);
  buildLinearTable(state);
  EXPECT_EQ(+state.currentGain, 1.5);
  EXPECT_EQ(+state.largestGain, 1.5);
  EXPECT_EQ(+state.smallestGain, 1.0);
  setLevels(50, 100);
  buildLinearTable(state);
  EXPECT_EQ(+state.currentGain, 0.5);
  EXPECT_EQ(+state.largestGain, 1.5);
  EXPECT_EQ(+state.smallestGain, 0.5);
  setLevels(80, 100);
  buildGammaTable(state, naturalLog);
  EXPECT_EQ(+state.currentGain, 0.8);
  EXPECT_EQ(+state.largestGain, 1.5);
  EXPECT_EQ(+state.smallestGain, 0.5);
  setLevels(300, 100);
  buildShiftTable(state);
  EXPECT_EQ(+state.currentGain, 0.8);
  EXPECT_EQ(+state.largestGain, 1.5);
}

TEST_F(CorrectionTable, KneeAt99PercentBeginsAbove252) {
  setLevels(90, 100);  // gain 0.9
  setClipping(99.0);
  EXPECT_TRUE(buildLinearTable(state));
  EXPECT_EQ(at(251), 226);  // 225.9
  EXPECT_EQ(at(252), 227);  // 226.8
  // From 226.8 to 255.5 in three steps of 9.5666...
  EXPECT_EQ(at(253), 236);  // 236.3666
  EXPECT_EQ(at(254), 246);  // 245.9333
  EXPECT_EQ(at(255), 255);  // 255.5
}

TEST_F(CorrectionTable, KneeCountsOnlyWhenSwitchedOnAndBelowTheTop) {
  setLevels(50, 100);
  state.clippingPercent = 50.0;
  buildLinearTable(state);
  EXPECT_EQ(at(255), 128);
  for (const double percent : {100.0, 120.0, 99.0 * 65536.0, 1e300, kInfinity}) {
    setClipping(percent);
    buildLinearTable(state);
    EXPECT_EQ(at(255), 128) << percent;
  }
}

TEST_F(CorrectionTable, KneeOfOddPercentagesStaysDefined) {
  setLevels(100, 100);
  for (const double percent : {kNan, 0.0}) {  // knee at level 0: a line from 0 to 255.5
    setClipping(percent);
    buildLinearTable(state);
    EXPECT_EQ(at(0), 0);
    EXPECT_EQ(at(128), 128);  // 128.25
    EXPECT_EQ(at(255), 255);
  }
  for (const double percent : {-1.0, -1e300, -kInfinity}) {
    setClipping(percent);
    buildLinearTable(state);
    EXPECT_EQ(at(255), 255) << percent;
  }
}

TEST_F(CorrectionTable, ShiftMovesTheMeanAndScalesTheSpread) {
  setLevels(120, 100, 30.0f, 20.0f);
  EXPECT_TRUE(buildShiftTable(state));
  EXPECT_EQ(at(100), 120);
  EXPECT_EQ(at(110), 135);
  EXPECT_EQ(at(101), 122);  // 121.5 up
  EXPECT_EQ(at(20), 0);
  EXPECT_EQ(at(0), 0);  // -30
  EXPECT_EQ(at(190), 255);
  EXPECT_EQ(at(255), 255);
}

TEST_F(CorrectionTable, ShiftOnlyMovesWithoutAnInputSpread) {
  for (const float inputSpread : {0.0f, -1.0f, std::numeric_limits<float>::quiet_NaN()}) {
    setLevels(120, 100, 30.0f, inputSpread);
    buildShiftTable(state);
    EXPECT_EQ(at(0), 20);
    EXPECT_EQ(at(100), 120);
    EXPECT_EQ(at(235), 255);
  }
}

TEST_F(CorrectionTable, ShiftHasTheKneeToo) {
  setLevels(80, 100, 0, 0);
  setClipping(99.0);
  buildShiftTable(state);
  EXPECT_EQ(at(252), 232);
  EXPECT_EQ(at(253), 240);  // 232 + 7.8333
  EXPECT_EQ(at(254), 248);  // 232 + 15.6666
  EXPECT_EQ(at(255), 255);
}

TEST_F(CorrectionTable, GammaMapsTheInputOntoTheDesiredLevel) {
  setLevels(128, 64);
  EXPECT_TRUE(buildGammaTable(state, naturalLog));
  EXPECT_EQ(at(64), 128);
  EXPECT_EQ(at(0), 0);
  EXPECT_EQ(at(255), 255);
  const float expected =
      static_cast<float>(std::log(double{64.0f / 255.0f}) / std::log(double{128.0f / 255.0f}));
  EXPECT_EQ(state.gammaValue, expected);
}

TEST_F(CorrectionTable, GammaIgnoresTheKnee) {
  setLevels(100, 150);
  buildGammaTable(state, naturalLog);
  std::uint8_t plain[256];
  std::memcpy(plain, state.correctionTable, 256);
  setClipping(50.0);
  buildGammaTable(state, naturalLog);
  EXPECT_EQ(std::memcmp(plain, state.correctionTable, 256), 0);
}

TEST_F(CorrectionTable, GammaTakesTheLogarithmItIsGiven) {
  setLevels(128, 64);
  buildGammaTable(state, [](double value) { return value < 0.4 ? -3.0 : -1.5; });
  EXPECT_EQ(state.gammaValue, 2.0f);
  EXPECT_EQ(at(64), 128);  // sqrt(64 / 255) x 255 = 127.7
  EXPECT_EQ(at(4), 32);    // 31.9
}

TEST_F(CorrectionTable, GammaWithoutAPositiveTargetIsBlackAndTakesNoLogarithm) {
  for (const double desired : {0.0, -1.0, kNan, -kInfinity}) {
    setLevels(desired, 100);
    mark();
    EXPECT_TRUE(buildGammaTable(state, [](double) -> double {
      ADD_FAILURE() << "logarithm taken";
      return 0.0;
    }));
    EXPECT_EQ(state.gammaValue, 0.0f);
    EXPECT_TRUE(isAll(0));
  }
}

TEST_F(CorrectionTable, GammaAtWhite) {
  setLevels(255, 255);
  mark();
  EXPECT_TRUE(buildGammaTable(state, naturalLog));
  EXPECT_TRUE(isIdentity());
  EXPECT_EQ(state.gammaValue, 1.0f);

  setLevels(255, 100);
  EXPECT_TRUE(buildGammaTable(state, naturalLog));
  EXPECT_TRUE(isAll(255));
  EXPECT_EQ(state.gammaValue, -std::numeric_limits<float>::infinity());

  setLevels(100, 255);
  mark();
  EXPECT_TRUE(buildGammaTable(state, naturalLog));
  EXPECT_TRUE(isAll(255));
  EXPECT_EQ(state.gammaValue, 0.0f);
  EXPECT_TRUE(std::signbit(static_cast<float>(state.gammaValue)));
}

TEST_F(CorrectionTable, ChoosesTheMethod) {
  setLevels(100, 50, 10.0f, 10.0f);
  state.correctionMethod = kCorrectionGamma;
  buildCorrectionTable(state, false, naturalLog);
  EXPECT_EQ(at(0), 0);
  EXPECT_NE(state.gammaValue, 0.0f);
  EXPECT_EQ(at(50), 100);
  EXPECT_EQ(at(255), 255);
  EXPECT_LT(at(128), 200);
  state.correctionMethod = kCorrectionShift;
  buildCorrectionTable(state, false, naturalLog);
  EXPECT_EQ(at(0), 50);
  for (const int method : {1, 0, 4, 255}) {
    state.correctionMethod = static_cast<std::uint8_t>(method);
    mark();
    buildCorrectionTable(state, false, naturalLog);
    EXPECT_EQ(at(0), 0);
    EXPECT_EQ(at(127), 254);
    mark();
    buildCorrectionTable(state, true, naturalLog);
    EXPECT_TRUE(isIdentity());
  }
}

// The rule written out with nothing shared with the builders.
int plainEntry(double out) {
  const double sum = out + 0.5;
  if (std::isnan(sum) || sum < 0) return 0;
  return sum >= 255 ? 255 : static_cast<int>(sum);
}

TEST_F(CorrectionTable, LinearAndShiftEqualThePlainRuleForRandomLevels) {
  test::RandomSource random;
  for (int round = 0; round < 20000; ++round) {
    const double d = random.real(-10, 260);
    const double in = random.real(0.01, 255);
    const auto sd = static_cast<float>(random.real(0, 60));
    const auto si = static_cast<float>(random.chance(0.1) ? 0.0 : random.real(0, 60));
    const double percent = random.real(1, 101);
    const bool adjust = random.chance(0.5);
    setLevels(d, in, sd, si);
    state.adjustClipping = adjust;
    state.clippingPercent = percent;
    int knee = static_cast<int>(percent * 255.0 / 100.0);
    if (!adjust || knee > 255) knee = 255;
    for (const bool shift : {false, true}) {
      const double k = si > 0 ? static_cast<double>(sd) / static_cast<double>(si) : 1.0;
      const double gain = d / in;
      const auto straight = [&](int i) { return shift ? (i - in) * k + d : i * gain; };
      ASSERT_TRUE(shift ? buildShiftTable(state) : buildLinearTable(state));
      for (int i = 0; i < 256; ++i) {
        const double atKnee = straight(knee);
        const double out =
            i <= knee ? straight(i) : (i - knee) * (255.5 - atKnee) / (255 - knee) + atKnee;
        ASSERT_EQ(at(i), plainEntry(out)) << "level " << i << " of " << d << ' ' << in;
      }
    }
  }
}

TEST_F(CorrectionTable, GammaEqualsThePlainRuleForRandomLevels) {
  test::RandomSource random;
  for (int round = 0; round < 3000; ++round) {
    const double d = random.real(0.5, 300);
    const double in = random.real(0.5, 254);
    setLevels(d, in);
    ASSERT_TRUE(buildGammaTable(state, naturalLog));
    const float qa = static_cast<float>(in) / 255.0f;
    const float qb = static_cast<float>(d) / 255.0f;
    const auto g =
        static_cast<float>(std::log(static_cast<double>(qa)) / std::log(static_cast<double>(qb)));
    ASSERT_EQ(state.gammaValue, g);
    for (int i = 0; i < 256; ++i) {
      ASSERT_EQ(at(i), plainEntry(std::pow(i / 255.0, 1.0 / static_cast<double>(g)) * 255));
    }
  }
}

}  // namespace
}  // namespace varilum
