// tests/cli/plot/plot_scale_test.cpp — ranges, ticks and thinning of a plot's curves.
#include "cli/plot/plot_scale.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <vector>

namespace {

using testing::DoubleNear;
using testing::ElementsAre;
using testing::Pointwise;

TEST(PlotScale, RangeHoldsAllCurvesWithMargin) {
  const std::vector<std::vector<double>> curves{{100.0, 140.0}, {}, {-1.0, 120.0}};
  const cli::ScaleRange range = cli::levelRange(curves, 4.0);
  EXPECT_DOUBLE_EQ(range.low, 98.0);
  EXPECT_DOUBLE_EQ(range.high, 142.0);
}

TEST(PlotScale, SteadyClipStillGetsRange) {
  const std::vector<std::vector<double>> curves{{90.0, 90.0}};
  const cli::ScaleRange range = cli::levelRange(curves, 4.0);
  EXPECT_DOUBLE_EQ(range.low, 88.0);
  EXPECT_DOUBLE_EQ(range.high, 92.0);
}

TEST(PlotScale, NothingMeasuredShowsWholeScale) {
  const std::vector<std::vector<double>> curves{{-1.0, std::numeric_limits<double>::quiet_NaN()}};
  EXPECT_EQ(cli::levelRange(curves, 4.0).low, 0.0);
  EXPECT_EQ(cli::levelRange(curves, 4.0).high, 255.0);
}

TEST(PlotScale, TicksAreRound) {
  EXPECT_THAT(cli::roundTicks({73.0, 122.0}, 7),
              Pointwise(DoubleNear(1e-9), {80.0, 90.0, 100.0, 110.0, 120.0}));
  EXPECT_THAT(cli::roundTicks({0.0, 0.23}, 4), Pointwise(DoubleNear(1e-9), {0.0, 0.1, 0.2}));
}

TEST(PlotScale, FrameTicksAreWholeFrames) {
  EXPECT_THAT(cli::roundTicks({0.0, 3.0}, 14, true), ElementsAre(0.0, 1.0, 2.0, 3.0));
  EXPECT_THAT(cli::roundTicks({0.0, 1e-3}, 14, true), ElementsAre(0.0));
}

TEST(PlotScale, NeverMoreTicksThanAskedFor) {
  for (int frames = 2; frames < 200000; frames += 1 + frames / 7) {
    EXPECT_LE(cli::roundTicks({0.0, frames - 1.0}, 14, true).size(), 14U) << frames;
    EXPECT_GE(cli::roundTicks({0.0, frames - 1.0}, 14, true).size(), 2U) << frames;
    EXPECT_LE(cli::clockTicks(frames / 25.0, 14).size(), 14U) << frames;
  }
}

TEST(PlotScale, ClockTicksAreStepsOfAClock) {
  EXPECT_THAT(cli::clockTicks(100.0, 11), ElementsAre(0, 10, 20, 30, 40, 50, 60, 70, 80, 90, 100));
  EXPECT_THAT(cli::clockTicks(600.0, 12),
              ElementsAre(0, 60, 120, 180, 240, 300, 360, 420, 480, 540, 600));
}

TEST(PlotScale, ClockLabelsGrowWithTheClip) {
  EXPECT_EQ(cli::clockLabel(2.5, 12.0), "2.5 s");
  EXPECT_EQ(cli::clockLabel(270.0, 600.0), "4:30");
  EXPECT_EQ(cli::clockLabel(3750.0, 9000.0), "1:02:30");
}

TEST(PlotScale, FewFramesAreKeptAsTheyAre) {
  const std::vector<double> values{5.0, 7.0, 6.0};
  const auto lines = cli::thinnedCurve(values, 100);
  ASSERT_EQ(lines.size(), 1U);
  ASSERT_EQ(lines[0].size(), 3U);
  EXPECT_EQ(lines[0][1].frame, 1.0);
  EXPECT_EQ(lines[0][1].value, 7.0);
}

TEST(PlotScale, UnmeasuredFramesBreakTheCurve) {
  const std::vector<double> values{-1.0, 5.0, 7.0, -1.0, -1.0, 6.0};
  const auto lines = cli::thinnedCurve(values, 100);
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0].front().frame, 1.0);
  EXPECT_EQ(lines[0].back().frame, 2.0);
  EXPECT_EQ(lines[1].front().frame, 5.0);
}

TEST(PlotScale, ThinningKeepsExtremesOfEveryColumn) {
  std::vector<double> values(10000, 50.0);
  values[1234] = 200.0;  // one bright and one dark frame must stay visible
  values[1239] = 3.0;
  const auto lines = cli::thinnedCurve(values, 100);
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_LE(lines[0].size(), 400U);
  const auto has = [&](double frame, double value) {
    return std::any_of(lines[0].begin(), lines[0].end(), [&](const cli::CurvePoint& p) {
      return p.frame == frame && p.value == value;
    });
  };
  EXPECT_TRUE(has(1234.0, 200.0));
  EXPECT_TRUE(has(1239.0, 3.0));
  EXPECT_TRUE(std::is_sorted(lines[0].begin(), lines[0].end(),
                             [](const auto& a, const auto& b) { return a.frame < b.frame; }));
}

// Mean of 40, 60, 50 is 50: changes of 20 and 10 are 40 % and 20 %.
TEST(PlotScale, ChangesAreRelativeToTheMean) {
  const std::vector<double> levels{40.0, 60.0, 50.0};
  EXPECT_THAT(cli::frameChanges(levels), Pointwise(DoubleNear(1e-12), {-1.0, 40.0, 20.0}));
}

TEST(PlotScale, NoChangeAcrossUnmeasuredFrames) {
  const std::vector<double> levels{40.0, -1.0, 40.0};
  EXPECT_THAT(cli::frameChanges(levels), ElementsAre(-1.0, -1.0, -1.0));
}

TEST(PlotScale, BlackClipHasNoChange) {
  const std::vector<double> levels{0.0, 0.0};
  EXPECT_THAT(cli::frameChanges(levels), ElementsAre(-1.0, 0.0));
}

}  // namespace
