// tests/cli/shots/shots_test.cpp — clips of several shots, with repeats, flashes and bars.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "tests/cli/program.h"
#include "tests/cli/scratch_folder.h"
#include "tests/cli/striped_clip.h"

namespace cli::test {
namespace {

double mean(const Stripes& s) {
  return (s[0] + s[1] + s[2] + s[3]) / 4.0;
}

// A picture under the given gains.
Frames under(const Stripes& picture, const std::vector<double>& gains) {
  Frames frames;
  for (const double gain : gains) {
    Stripes frame{};
    for (std::size_t s = 0; s < frame.size(); ++s) {
      frame[s] = std::clamp(std::floor(picture[s] * gain + 0.5), 0.0, 255.0);
    }
    frames.push_back(frame);
  }
  return frames;
}

// Small irregular flicker without two equal neighbours.
std::vector<double> gains(std::size_t count, double size = 0.06) {
  std::vector<double> list;
  for (std::size_t i = 0; i < count; ++i) {
    list.push_back(1.0 + size * std::sin(2.4 * static_cast<double>(i) + 0.3));
  }
  return list;
}

Frames joined(Frames first, const Frames& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

const Stripes kDay{180.0, 60.0, 100.0, 140.0};
const Stripes kNight{20.0, 90.0, 30.0, 60.0};

class Shots : public testing::Test {
 protected:
  Outcome ok(std::vector<std::string> arguments) {
    const Outcome outcome = varilum(std::move(arguments));
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    return outcome;
  }
  Frames deflickered(const Frames& frames, const std::vector<std::string>& options = {},
                     std::string* err = nullptr) {
    writeLossless(folder_ / clip("in"), frames);
    std::vector<std::string> arguments{"deflicker", folder_ / clip("in"), folder_ / clip("out"),
                                       "--force"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const Outcome outcome = ok(arguments);
    if (err != nullptr) *err = outcome.err;
    return readStripes(folder_ / clip("out"), kEight);
  }
  std::string list(const std::string& text) {
    writeFile(folder_ / "cuts.txt", text);
    return folder_ / "cuts.txt";
  }
  nlohmann::json info(const std::string& project) {
    return nlohmann::json::parse(ok({"info", project, "--json"}).out);
  }

  ScratchFolder folder_;
};

TEST_F(Shots, AreSteadiedAsIfEachWereAlone) {
  const Frames day = under(kDay, gains(24));
  const Frames night = under(kNight, gains(19, 0.1));
  const Frames expected =
      joined(deflickered(day, {"--shots", "off"}), deflickered(night, {"--shots", "off"}));
  const Frames both = joined(day, night);
  EXPECT_EQ(deflickered(both, {"--shots", list("24\n")}), expected);
  EXPECT_NE(deflickered(both, {"--shots", "off"}), expected);
}

TEST_F(Shots, AreFound) {
  if (kPlainProgram) GTEST_SKIP() << "takes FFmpeg";
  ffmpeg({"-f", "lavfi", "-i", "testsrc2=s=320x180:r=25:d=1.2", "-f", "lavfi", "-i",
          "mandelbrot=s=320x180:r=25", "-filter_complex",
          "[0]format=yuv420p[a];[1]trim=end_frame=30,format=yuv420p,setpts=PTS-STARTPTS[b];"
          "[a][b]concat",
          "-c:v", "ffv1", folder_ / clip("in")});
  const auto told =
      nlohmann::json::parse(ok({"info", folder_ / clip("in"), "--json", "--shots", "auto"}).out);
  ASSERT_EQ(told.at("shots").size(), 2U);
  EXPECT_EQ(told["shots"][1].at("first"), 30);
  const auto written = [&](const std::string& shots) {
    ok({"deflicker", folder_ / clip("in"), folder_ / clip("out"), "--force", "--shots", shots});
    return ffmpeg({"-i", folder_ / clip("out"), "-f", "framemd5", "-"});
  };
  EXPECT_EQ(written("auto"), written(list("30\n")));
  EXPECT_NE(written("auto"), written("off"));
}

TEST_F(Shots, FramesNextToACutKeepTheirLevel) {
  const Frames day = under(kDay, std::vector<double>(20, 1.0));
  const Frames night = under(kNight, std::vector<double>(20, 1.0));
  const Frames out =
      deflickered(joined(day, night), {"--duplicates", "keep", "--shots", list("20\n")});
  ASSERT_EQ(out.size(), 40U);
  for (std::size_t f = 10; f < 30; ++f) {
    EXPECT_NEAR(mean(out[f]), f < 20 ? mean(kDay) : mean(kNight), 0.5) << "frame " << f;
  }
}

TEST_F(Shots, ListedWronglyAreRefusedByLine) {
  writeLossless(folder_ / clip("in"), under(kDay, gains(10)));
  const auto expectRefused = [&](const std::string& text, const std::string& part) {
    const Outcome outcome =
        varilum({"deflicker", folder_ / clip("in"), folder_ / clip("o"), "--shots", list(text)});
    EXPECT_EQ(outcome.code, 2) << text;
    EXPECT_NE(outcome.err.find(part), std::string::npos) << outcome.err;
    EXPECT_FALSE(std::filesystem::exists(folder_ / clip("o")));
  };
  expectRefused("4\nfive\n", "line 2");
  expectRefused("4\n-5\n", "line 2");
  expectRefused("4 5\n", "line 1");
  expectRefused("10\n", "frame 10 in line 1");
  expectRefused("5\n3\n", "frame 3 in line 2");
  expectRefused("5\n\n# again\n5\n", "frame 5 in line 4");
  const Outcome missing =
      varilum({"deflicker", folder_ / clip("in"), folder_ / clip("o"), "--shots", "nowhere.txt"});
  EXPECT_EQ(missing.code, 1);
  EXPECT_NE(missing.err.find("there is no file nowhere.txt"), std::string::npos) << missing.err;
  EXPECT_EQ(
      varilum({"deflicker", folder_ / clip("in"), folder_ / clip("o"), "--duplicates", "x"}).code,
      2);
}

TEST_F(Shots, KeepTheClipsFrameNumbersInOptions) {
  const Frames day = under(kDay, gains(20));
  const Frames night = under(kNight, gains(20));
  // Levels 100 to 138 over the clip's 40 frames: 1 a frame at most.
  const Frames out =
      deflickered(joined(day, night), {"--shots", list("20\n"), "--luminance", "0=100",
                                       "--luminance", "39=61", "--dont-deflicker", "25..26"});
  ASSERT_EQ(out.size(), 40U);
  for (std::size_t f = 0; f < 40; ++f) {
    if (f == 25 || f == 26) {
      EXPECT_EQ(out[f], night[f - 20]) << "frame " << f;
    } else {
      EXPECT_NEAR(mean(out[f]), 100.0 - static_cast<double>(f), 0.6) << "frame " << f;
    }
  }
}

TEST_F(Shots, HeldPicturesAreCountedOnceAndCorrectedAlike) {
  const Frames distinct = under(kDay, gains(16));
  const Frames alone = deflickered(distinct, {"--smoothing-frames", "3"});
  Frames held;
  Frames expected;
  for (std::size_t i = 0; i < distinct.size(); ++i) {
    for (std::size_t n = 0; n < 2 + i % 2; ++n) {
      held.push_back(distinct[i]);
      expected.push_back(alone[i]);
    }
  }
  EXPECT_EQ(deflickered(held, {"--smoothing-frames", "3"}), expected);
  EXPECT_NE(deflickered(held, {"--smoothing-frames", "3", "--duplicates", "keep"}), expected);
}

TEST_F(Shots, AHeldPictureMayStillFollowLevelsGivenByFrame) {
  const Frames still(20, kDay);
  const Frames out = deflickered(still, {"--luminance", "0=120", "--luminance", "19=82"});
  ASSERT_EQ(out.size(), 20U);
  for (std::size_t f = 0; f < 20; ++f) {
    EXPECT_NEAR(mean(out[f]), 120.0 - 2.0 * static_cast<double>(f), 0.6) << "frame " << f;
  }
}

TEST_F(Shots, LightningIsLeftAndAJumpOfExposureCorrected) {
  Frames frames = under(kDay, gains(60, 0.004));
  frames[20] = under(kDay, {1.35})[0];            // all of it brighter by one factor
  frames[40] = {kDay[0], 250.0, 240.0, kDay[3]};  // light from one side
  std::string err;
  const Frames out = deflickered(frames, {}, &err);
  EXPECT_NEAR(mean(out[20]), mean(out[19]), 1.5);
  EXPECT_EQ(out[40], frames[40]);
  EXPECT_NE(err.find("Frame 20: "), std::string::npos) << err;
  EXPECT_NE(err.find("corrected"), std::string::npos) << err;
  EXPECT_NE(err.find("Frame 40: "), std::string::npos) << err;
  EXPECT_NE(err.find("left as it is"), std::string::npos) << err;
  const Frames left = deflickered(frames, {"--flashes", "leave"});
  EXPECT_EQ(left[20], frames[20]);
  EXPECT_EQ(left[40], frames[40]);
}

TEST_F(Shots, BlackFramesAreListedAndLeft) {
  Frames frames = under(kDay, gains(40));
  frames[25] = {1.0, 1.0, 1.0, 1.0};
  std::string err;
  const Frames out = deflickered(frames, {}, &err);
  EXPECT_EQ(out[25], frames[25]);
  EXPECT_NE(err.find("Frame 25: "), std::string::npos) << err;
}

TEST_F(Shots, BarsCanBeKeptOutOfTheMeasurement) {
  Frames frames = under({0.0, 60.0, 100.0, 0.0}, gains(24));
  EXPECT_EQ(deflickered(frames, {"--subrect", "auto"}),
            deflickered(frames, {"--subrect", "16,0,48,64"}));
  // Without bars it is the whole picture.
  frames = under(kDay, gains(24));
  EXPECT_EQ(deflickered(frames, {"--subrect", "auto"}), deflickered(frames));
}

TEST_F(Shots, OneThatSmoothingWouldHarmIsLeftWhileOthersAreSteadied) {
  if (kPlainProgram) GTEST_SKIP() << "takes FFmpeg";
  // Large flat areas that move, where corrections become rounding; then a flickering grey.
  ffmpeg({"-f", "lavfi", "-i", "testsrc2=s=320x240:r=25:d=2", "-f", "lavfi", "-i",
          "color=s=320x240:r=25:d=2,geq=lum='100+8*sin(2.4*N)':cb=128:cr=128", "-filter_complex",
          "[0]format=yuv420p[a];[1]format=yuv420p[b];[a][b]concat", "-c:v", "ffv1",
          folder_ / clip("in")});
  const std::string cuts = list("50\n");
  const Outcome outcome = ok({"deflicker", folder_ / clip("in"), folder_ / clip("out"), "--shots",
                              cuts, "--progress", "json"});
  const auto last = outcome.out.find_last_of('\n', outcome.out.size() - 2) + 1;
  const auto done = nlohmann::json::parse(outcome.out.substr(last));
  ASSERT_EQ(done.at("shots").size(), 2U);
  EXPECT_TRUE(done["shots"][0].at("passedThrough").get<bool>());
  EXPECT_FALSE(done["shots"][1].at("passedThrough").get<bool>());
  EXPECT_LT(done["shots"][1].at("flickerPercent").at("after").get<double>(), 1.0);
  EXPECT_NE(outcome.err.find("shot 1 (frames 0..49)"), std::string::npos) << outcome.err;
  const auto firstShot = [&](const std::string& name) {
    return ffmpeg({"-i", folder_ / name, "-frames:v", "50", "-f", "framemd5", "-"});
  };
  EXPECT_EQ(firstShot(clip("in")), firstShot(clip("out")));
}

}  // namespace
}  // namespace cli::test
