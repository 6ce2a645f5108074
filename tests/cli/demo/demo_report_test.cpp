// tests/cli/demo/demo_report_test.cpp — the demo's figures and table from levels made up by hand.
#include "cli/demo/demo_report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "cli/demo/demo_flicker.h"

namespace {

using testing::HasSubstr;

/// Clean 100; input swings by +-10, output by +-1, the target does not move.
cli::DemoLevels swinging() {
  cli::DemoLevels levels;
  for (int i = 0; i < cli::kDemoFrames; ++i) {
    const double sign = i % 2 == 0 ? 1.0 : -1.0;
    levels.clean.push_back(100.0);
    levels.input.push_back(100.0 + 10.0 * sign);
    levels.desired.push_back(100.0);
    levels.output.push_back(100.0 + sign);
  }
  return levels;
}

TEST(DemoReport, FiguresOfEveryPartAndTheWhole) {
  const auto figures = cli::demoFigures(swinging());
  ASSERT_EQ(figures.size(), cli::kFlickerParts.size() + 1);
  for (const auto& f : figures) {
    EXPECT_NEAR(f.changeInput, 20.0, 1e-9) << f.name;
    EXPECT_NEAR(f.changeOutput, 2.0, 1e-9) << f.name;
    EXPECT_NEAR(f.factor(), 10.0, 1e-9) << f.name;
    EXPECT_EQ(f.changeDesired, 0.0) << f.name;
  }
  EXPECT_EQ(figures[1].first, 100);
  EXPECT_EQ(figures[1].last, 199);
  EXPECT_EQ(figures.back().last, cli::kDemoFrames - 1);
}

// Of 15 alternating frames 7 stand on the middle one's side: the mean is 0.1 / 15 beyond 1 on the
// other, so frames deviate by 1.1 / 0.99333 - 1 = 10.74 % and 1 - 0.9 / 1.00667 = 10.60 % in turn.
TEST(DemoReport, ErrorLeavesTheSceneOut) {
  cli::DemoLevels levels = swinging();
  for (std::size_t i = 0; i < levels.clean.size(); ++i) {
    const double scene = i % 3 == 0 ? 0.5 : 1.0;  // a scene that jumps by itself
    for (auto* curve : {&levels.clean, &levels.output, &levels.input}) (*curve)[i] *= scene;
    levels.output[i] = levels.clean[i];
  }
  for (const auto& f : cli::demoFigures(levels)) {
    EXPECT_NEAR(f.errorOutput, 0.0, 1e-9) << f.name;
    EXPECT_NEAR(f.errorInput, 10.67, 0.05) << f.name;
  }
}

TEST(DemoReport, NothingLeftIsNoDivisionByZero) {
  cli::DemoLevels levels = swinging();
  levels.output = levels.clean;
  EXPECT_EQ(cli::demoFigures(levels)[0].factor(), 0.0);
}

TEST(DemoReport, TableNamesEveryPart) {
  const auto table = cli::demoTable(cli::demoFigures(swinging()));
  ASSERT_EQ(table.size(), 2 + cli::kFlickerParts.size() + 1);
  EXPECT_THAT(table[2], HasSubstr("Per-frame random"));
  EXPECT_THAT(table[2], HasSubstr("20.00%"));
  EXPECT_THAT(table[2], HasSubstr("10.0"));
  EXPECT_THAT(table.back(), HasSubstr("Whole clip"));
  for (const auto& line : table) EXPECT_LE(line.size(), 110U);
}

TEST(DemoReport, RemainderStatesTheWindow) {
  const auto figures = cli::demoFigures(swinging());
  std::string text;
  for (const auto& line : cli::demoRemainder(figures, 30, 1.0, 1.5)) {
    EXPECT_LE(line.size(), 110U) << line;
    text += line + "\n";
  }
  EXPECT_THAT(text, HasSubstr("mean of 61 frames"));
  EXPECT_THAT(text, HasSubstr("1/7.8"));  // sqrt(61)
  EXPECT_THAT(text, HasSubstr("1.00 of 255 levels before and 1.50 after"));
}

TEST(DemoReport, CsvHasOneLineAFrame) {
  const std::vector<double> gains(static_cast<std::size_t>(cli::kDemoFrames), 1.25);
  const std::string csv = cli::demoCsv(swinging(), gains);
  EXPECT_EQ(std::count(csv.begin(), csv.end(), '\n'), cli::kDemoFrames + 1);
  EXPECT_THAT(csv,
              HasSubstr("\n25,1.00,Per-frame random,1.250000,100.0000,90.0000,100.0000,99.0000\n"));
}

}  // namespace
