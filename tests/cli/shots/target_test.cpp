// tests/cli/shots/target_test.cpp — targets as they are written, and the courses they give.
#include "cli/shots/target.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "cli/error.h"
#include "tests/cli/scratch_folder.h"

namespace cli {
namespace {

using test::ScratchFolder;
using test::writeFile;

std::string refusal(const std::string& text) {
  try {
    parseTarget(text);
  } catch (const UsageError& error) {
    return error.what();
  }
  return "none";
}

TEST(Target, IsReadAndWrittenTheSame) {
  for (const char* text : {"smoothing", "loess", "median", "savitzky-golay", "constant",
                           "ramp:0..250", "ramp:17..18"}) {
    const Target target = parseTarget(text);
    EXPECT_EQ(toText(target), text);
    EXPECT_EQ(toText(targetFromProject(text)), text);
    EXPECT_EQ(isCurve(target), std::string(text) != "smoothing");
  }
  EXPECT_EQ(parseTarget("ramp:3..90").from, 3);
  EXPECT_EQ(parseTarget("ramp:3..90").to, 90);
}

TEST(Target, RefusesWhatItDoesNotKnow) {
  EXPECT_NE(refusal("medain").find("'medain' is none of: smoothing, loess, median"),
            std::string::npos);
  for (const char* text : {"ramp:", "ramp:5", "ramp:5..5", "ramp:9..5", "ramp:a..b", "ramp:5.."}) {
    EXPECT_NE(refusal(text).find("is no ramp between two frames"), std::string::npos) << text;
  }
  EXPECT_THROW(targetFromProject("medain"), UsageError);
}

TEST(Target, ReadsPointsFromAFile) {
  const ScratchFolder folder;
  const std::string path = folder / "curve.txt";
  writeFile(path, "# dusk\n0 100\n\n10=90.5   # darker\r\n 20, 80\n");
  const Target target = parseTarget(path);
  ASSERT_EQ(target.points.size(), 3U);
  EXPECT_EQ(target.points[1].frame, 10);
  EXPECT_EQ(target.points[1].level, 90.5);
  EXPECT_EQ(target.points[2].level, 80.0);
  EXPECT_FALSE(isCurve(target));
  EXPECT_EQ(targetFromProject(toText(target)).kind, Target::Kind::points);
}

TEST(Target, SaysWhichLineOfAFileIsWrong) {
  const ScratchFolder folder;
  const std::string path = folder / "curve.txt";
  const auto expectRefused = [&](const std::string& text, const std::string& part) {
    writeFile(path, text);
    EXPECT_NE(refusal(path).find(part), std::string::npos) << text << refusal(path);
  };
  expectRefused("0 100\nten 90\n", "line 2 of");
  expectRefused("0 100\n\n5\n", "line 3 of");
  expectRefused("0 256\n", "line 1 of");
  expectRefused("0 nan\n", "line 1 of");
  expectRefused("-1 20\n", "line 1 of");
  expectRefused("5 100\n5 90\n", "frame 5 in line 2");
  expectRefused("# nothing\n", "holds no frame with a level");
}

TEST(Target, RampIsStraightInTheClipsTime) {
  // Ten pictures of level 50 to 140; the fifth is held for eleven frames.
  std::vector<std::int64_t> held;
  for (std::int64_t f = 5; f < 15; ++f) held.push_back(100 + f);
  const ShotFrames frames(100, 20, held);
  ASSERT_EQ(frames.pictureCount(), 10);
  std::vector<double> levels;
  for (int p = 0; p < 10; ++p) levels.push_back(50.0 + 10.0 * p);
  const auto wanted = targetLevels({Target::Kind::ramp, 100, 119, {}}, frames, levels, 1);
  ASSERT_EQ(wanted.size(), 10U);
  const double slope = (wanted[9] - wanted[0]) / 19.0;
  EXPECT_GT(slope, 4.0);
  for (std::int32_t p = 0; p < 10; ++p) {
    const double at = wanted[0] + slope * static_cast<double>(frames.frameOf(p) - 100);
    EXPECT_NEAR(wanted[static_cast<std::size_t>(p)], at, 1e-9) << "picture " << p;
  }
}

TEST(Target, CurvesHaveALevelForEachPicture) {
  const ShotFrames frames(7, 41, {9, 20});
  std::vector<double> levels;
  for (int p = 0; p < frames.pictureCount(); ++p) levels.push_back(100.0 + (p % 2 == 0 ? 8 : -8));
  for (const char* name : {"median", "savitzky-golay", "constant", "ramp:10..40"}) {
    const auto wanted = targetLevels(parseTarget(name), frames, levels, 10);
    ASSERT_EQ(wanted.size(), levels.size()) << name;
    const auto [low, high] = std::minmax_element(wanted.begin(), wanted.end());
    // The levels swing by 16 from one to the next.
    EXPECT_LT(*high - *low, 10.0) << name;
    for (std::size_t i = 1; i < wanted.size(); ++i) {
      EXPECT_LT(std::abs(wanted[i] - wanted[i - 1]), 2.0) << name << " picture " << i;
    }
    EXPECT_GE(*low, 92.0 - 0.1) << name;
    EXPECT_LE(*high, 108.0 + 0.1) << name;
  }
  EXPECT_TRUE(targetLevels({}, frames, levels, 10).empty());
}

}  // namespace
}  // namespace cli
