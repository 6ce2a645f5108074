// tests/report/report_json_test.cpp — the report for programs.
#include "report/report_json.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/report/sample_report.h"

namespace report::test {
namespace {

using Json = nlohmann::json;

TEST(JsonReport, TellsOfClipAndFigures) {
  const Json json = Json::parse(jsonReport(sampleReport()));
  EXPECT_EQ(json["input"], "lamp <&> \"day\".mp4");
  EXPECT_EQ(json["clipFrames"], 12);
  EXPECT_EQ(json["flickerPercent"], Json({{"before", 6.5}, {"after", 0.25}}));
  EXPECT_EQ(json["jerkPercent"], Json({{"before", 11.0}, {"after", 0.5}}));
  EXPECT_EQ(json["settings"]["smoothing frames"], "30");
  EXPECT_EQ(json["versions"]["varilum4"], "4.2.0");
}

TEST(JsonReport, ListsLevelsInColumnsOfFourDecimals) {
  const Json frames = Json::parse(jsonReport(sampleReport()))["frames"];
  EXPECT_EQ(frames["first"], 4);
  EXPECT_EQ(frames["input"].size(), 6U);
  EXPECT_EQ(frames["input"][0], 100.1235);
  EXPECT_EQ(frames["target"][3], 50.5);
  EXPECT_EQ(frames["output"][5], 52.0);
}

TEST(JsonReport, NumbersRepeatsAndUntouchedFramesInTheClip) {
  const Json frames = Json::parse(jsonReport(sampleReport()))["frames"];
  EXPECT_EQ(frames["repeats"], Json::parse("[[6, 5]]"));
  EXPECT_EQ(frames["untouched"], Json::parse("[[8, 9]]"));
}

TEST(JsonReport, TellsOfEachShot) {
  const Json shots = Json::parse(jsonReport(sampleReport()))["shots"];
  ASSERT_EQ(shots.size(), 2U);
  EXPECT_EQ(shots[0]["last"], 6);
  EXPECT_EQ(shots[0]["matte"], Json::parse("[0, 40, 640, 320]"));
  EXPECT_EQ(shots[0]["outliers"][0]["kind"], "exposure jump");
  EXPECT_EQ(shots[0]["outliers"][0]["left"], false);
  EXPECT_TRUE(shots[1]["matte"].is_null());
  EXPECT_EQ(shots[1]["passedThrough"], true);
}

TEST(JsonReport, KeepsWhatIsNoNumberOut) {
  Report report = sampleReport();
  report.frames[0].input = std::numeric_limits<double>::quiet_NaN();
  report.figures.jerkAfter = std::numeric_limits<double>::infinity();
  const Json json = Json::parse(jsonReport(report));
  EXPECT_TRUE(json["frames"]["input"][0].is_null());
  EXPECT_TRUE(json["jerkPercent"]["after"].is_null());
}

TEST(JsonReport, SurvivesNamesThatAreNoUtf8) {
  Report report = sampleReport();
  report.input = "caf\xe9.mp4";
  EXPECT_EQ(Json::parse(jsonReport(report))["input"], "caf\xef\xbf\xbd.mp4");
}

}  // namespace
}  // namespace report::test
