// tests/cli/terminal/progress_test.cpp — how progress is told.
#include "cli/terminal/progress.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

namespace cli {
namespace {

TEST(ClockText, ShowsHoursOnlyWhenThereAreAny) {
  EXPECT_EQ(clockText(0.2), "0:00");
  EXPECT_EQ(clockText(75.0), "1:15");
  EXPECT_EQ(clockText(3723.0), "1:02:03");
  EXPECT_EQ(clockText(-5.0), "0:00");
}

TEST(Progress, JsonIsOneObjectAFrame) {
  testing::internal::CaptureStdout();
  {
    Progress progress(ProgressStyle::json);
    progress.begin("Analyzing", 2);
    progress.update(1);
    progress.update(1);
    progress.update(2);
    progress.end();
  }
  std::istringstream lines(testing::internal::GetCapturedStdout());
  std::string line;
  for (int done = 1; done <= 2; ++done) {
    ASSERT_TRUE(std::getline(lines, line));
    const auto object = nlohmann::json::parse(line);
    EXPECT_EQ(object.at("event"), "progress");
    EXPECT_EQ(object.at("phase"), "Analyzing");
    EXPECT_EQ(object.at("done"), done);
    EXPECT_EQ(object.at("total"), 2);
    EXPECT_GE(object.at("remainingSeconds").get<double>(), 0.0);
  }
  EXPECT_FALSE(std::getline(lines, line));
}

TEST(Progress, BarShowsPhaseCountsAndSpeed) {
  testing::internal::CaptureStderr();
  {
    Progress progress(ProgressStyle::bar);
    progress.begin("Rendering", 4);
    progress.update(4);
    progress.end();
  }
  const std::string text = testing::internal::GetCapturedStderr();
  EXPECT_NE(text.find("Rendering ["), std::string::npos) << text;
  EXPECT_NE(text.find("100%  4/4 frames"), std::string::npos) << text;
  EXPECT_NE(text.find(" fps"), std::string::npos) << text;
  EXPECT_EQ(text.back(), '\n');
}

TEST(Progress, SaysNothingWhenOff) {
  testing::internal::CaptureStderr();
  testing::internal::CaptureStdout();
  {
    Progress progress(ProgressStyle::none);
    progress.begin("Rendering", 4);
    progress.update(4);
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

}  // namespace
}  // namespace cli
