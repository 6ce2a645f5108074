// tests/cli/job/job_result_test.cpp — figures of shots and what is worse.
#include "cli/job/job_result.h"

#include <gtest/gtest.h>

#include <cmath>

#include "footage/flicker.h"

namespace cli {
namespace {

TEST(JobResult, FiguresPassOverCuts) {
  // Two steady shots far apart: any figure taken across the cut would be large.
  std::vector<double> levels(20, 40.0);
  levels.insert(levels.end(), 20, 200.0);
  const std::vector<ShotFindings> shots{{{0, 20}, {}, {}}, {{20, 20}, {}, {}}};
  EXPECT_GT(figuresOf(levels).flicker, 10.0);
  EXPECT_EQ(figuresOf(levels, shots).flicker, 0.0);
  EXPECT_EQ(figuresOf(levels, shots).jerk, 0.0);
}

TEST(JobResult, ShotsCountByTheirFrames) {
  JobResult job;
  job.shots.resize(2);
  const std::vector<double> shaking{100, 110, 100, 110, 100, 110};
  for (const double level : shaking)
    job.frames.push_back({level, level, level, 0, 0, false, false});
  for (int i = 0; i < 18; ++i) job.frames.push_back({50.0, 50.0, 50.0, 1, 0, false, false});
  measureShots(job);
  EXPECT_DOUBLE_EQ(job.shots[0].before.flicker, footage::flickerRms(shaking));
  EXPECT_EQ(job.shots[1].before.flicker, 0.0);
  // A quarter of the frames shakes: half of its root mean square, a quarter of its jerk.
  EXPECT_NEAR(figuresBefore(job).flicker, job.shots[0].before.flicker / 2.0, 1e-12);
  EXPECT_NEAR(figuresAfter(job).jerk, job.shots[0].after.jerk / 4.0, 1e-12);
}

TEST(JobResult, WorseIsMoreFlickerOrMoreJerkForLittle) {
  EXPECT_FALSE(isWorse({1.0, 1.0}, {1.0, 1.0}));
  EXPECT_FALSE(isWorse({1.005, 1.005}, {1.0, 1.0}));
  EXPECT_TRUE(isWorse({1.02, 0.9}, {1.0, 1.0}));
  EXPECT_FALSE(isWorse({1.02, 0.2}, {1.0, 1.0}));
  EXPECT_TRUE(isWorse({0.99, 1.05}, {1.0, 1.0}));
  EXPECT_FALSE(isWorse({0.2, 1.05}, {1.0, 1.0}));
  EXPECT_FALSE(isWorse({0.5, 0.5}, {1.0, 1.0}));
}

}  // namespace
}  // namespace cli
