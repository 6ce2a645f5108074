// tests/cli/footage_test.cpp — awkward clips come through unharmed, and always in the same way.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "tests/cli/program.h"
#include "tests/cli/scratch_folder.h"
#include "tests/cli/striped_clip.h"

namespace cli::test {
namespace {

// The pictures of a clip as checksums, in decoding order.
std::string pictures(const std::string& path) {
  if (kPlainProgram) return readFile(path);  // a header that is always the same, and the pictures
  return ffmpeg({"-i", path, "-map", "0:v", "-vsync", "passthrough", "-f", "framemd5", "-"});
}

nlohmann::json figures(const Outcome& outcome) {
  std::istringstream lines(outcome.out);
  std::string last;
  for (std::string line; std::getline(lines, line);) last = line;
  return nlohmann::json::parse(last);
}

class Footage : public testing::Test {
 protected:
  // Deflickers and expects success and no more flicker than there was.
  nlohmann::json deflicker(const std::string& in, const std::string& out,
                           std::vector<std::string> options = {}) {
    std::vector<std::string> arguments{"deflicker", folder_ / in, folder_ / out, "--progress",
                                       "json"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const Outcome outcome = varilum(arguments);
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    if (outcome.code != 0) return {};
    nlohmann::json result = figures(outcome);
    const auto& flicker = result.at("flickerPercent");
    EXPECT_LE(flicker.at("after").get<double>(), flicker.at("before").get<double>() + 0.01) << in;
    return result;
  }

  ScratchFolder folder_;
};

TEST_F(Footage, AllFramesLeftAloneAreTheSameBitForBit) {
  if (kPlainProgram) GTEST_SKIP() << "takes FFmpeg";
  for (const char* format : {"yuv420p", "yuv422p10le", "bgr0", "yuv444p16le", "gray"}) {
    ffmpeg({"-f", "lavfi", "-i", "testsrc2=s=70x50:r=25:d=0.4", "-pix_fmt", format, "-c:v", "ffv1",
            folder_ / clip("in")});
    const auto result = deflicker(clip("in"), clip("out"), {"--dont-deflicker", "..", "--force"});
    EXPECT_EQ(result.at("framesUntouched"), 10);
    EXPECT_EQ(pictures(folder_ / clip("out")), pictures(folder_ / clip("in"))) << format;
  }
}

TEST_F(Footage, TheNumberOfThreadsChangesNothing) {
  // Black and passed-over frames among others: no frame may show what another left behind.
  Frames frames = flickering({1.0, 0.8, 1.1, 0.9, 1.2, 0.7, 1.0, 0.9, 1.1, 0.8, 1.0, 1.1});
  frames[3] = frames[7] = Stripes{0, 0, 0, 0};
  writeLossless(folder_ / clip("in"), frames);
  for (const std::vector<std::string>& options :
       {std::vector<std::string>{"--smoothing-frames", "2"},
        {"--smoothing-frames", "2", "--correction-method", "shift"},
        {"--smoothing-frames", "2", "--adjust-clipping", "70", "--dont-deflicker", "5..6"},
        {"--luminance", "90", "--correction-method", "gamma"}}) {
    std::string first;
    for (const char* threads : {"1", "2", "3"}) {
      std::vector<std::string> all = options;
      all.insert(all.end(), {"--threads", threads, "--force"});
      deflicker(clip("in"), clip("out"), all);
      const std::string now = pictures(folder_ / clip("out"));
      if (first.empty()) first = now;
      EXPECT_EQ(now, first) << threads << " threads";
    }
    const Frames out = readStripes(folder_ / clip("out"), kEight);
    EXPECT_EQ(out[3], frames[3]) << "black stays black";
    EXPECT_EQ(out[7], frames[7]);
  }
}

TEST_F(Footage, BlackFramesStayBlackAtEveryDepth) {
  if (kPlainProgram) GTEST_SKIP() << "takes FFmpeg";
  Frames frames = flickering({1.0, 0.8, 1.1, 0.9, 1.2});
  frames[0] = frames[2] = Stripes{0, 0, 0, 0};
  for (Stripes& stripes : frames) {
    for (double& value : stripes) value *= 257.0;
  }
  writeStripes(folder_ / clip("in"), frames, kSixteen, {"-c:v", "ffv1", "-pix_fmt", "gbrp12le"});
  for (const char* method : {"linear", "shift", "gamma"}) {
    deflicker(clip("in"), clip("out"), {"--correction-method", method, "--force"});
    const Frames out = readStripes(folder_ / clip("out"), kSixteen);
    EXPECT_EQ(out[0], frames[0]) << method;
    EXPECT_EQ(out[2], frames[2]) << method;
    EXPECT_GT(out[1][3], 0.0) << method;
  }
}

TEST_F(Footage, NothingButBlack) {
  writeLossless(folder_ / clip("in"), Frames(5));
  deflicker(clip("in"), clip("out"));
  EXPECT_EQ(readStripes(folder_ / clip("out"), kEight), Frames(5));
}

TEST_F(Footage, OneFrame) {
  const Frames frames = flickering({1.0});
  writeLossless(folder_ / clip("in"), frames);
  deflicker(clip("in"), clip("out"));
  EXPECT_EQ(readStripes(folder_ / clip("out"), kEight), frames);
}

TEST_F(Footage, ShorterThanTheWindow) {
  writeLossless(folder_ / clip("in"), flickering({1.0, 0.8, 1.1}));
  const auto result = deflicker(clip("in"), clip("out"), {"--smoothing-frames", "60"});
  EXPECT_LT(result.at("flickerPercent").at("after").get<double>(), 0.5);
}

TEST_F(Footage, DuplicatesStayDuplicates) {
  Frames frames;
  for (const Stripes& stripes : flickering({1.0, 0.8, 1.1, 0.9, 1.2, 0.7})) {
    frames.insert(frames.end(), frames.size() % 5 == 0 ? 3U : 2U, stripes);
  }
  writeLossless(folder_ / clip("in"), frames);
  deflicker(clip("in"), clip("out"), {"--smoothing-frames", "10"});
  EXPECT_EQ(readStripes(folder_ / clip("out"), kEight).size(), frames.size());
}

TEST_F(Footage, HardCut) {
  Frames frames = flickering({1.0, 0.9, 1.0, 0.9, 1.0, 0.9, 1.0, 0.9});
  for (const Stripes& stripes : flickering({0.3, 0.27, 0.3, 0.27, 0.3, 0.27, 0.3, 0.27})) {
    frames.push_back(stripes);
  }
  writeLossless(folder_ / clip("in"), frames);
  deflicker(clip("in"), clip("out"), {"--smoothing-frames", "4"});
}

TEST_F(Footage, OddSizesAndRotation) {
  if (kPlainProgram) GTEST_SKIP() << "takes FFmpeg";
  ffmpeg({"-f", "lavfi", "-i", "testsrc2=s=71x53:r=25:d=0.4", "-pix_fmt", "yuv420p", "-c:v", "ffv1",
          folder_ / clip("in")});
  deflicker(clip("in"), clip("out"));
  ffmpeg({"-f", "lavfi", "-i", "testsrc2=s=80x48:r=25:d=0.4", "-pix_fmt", "yuv420p",
          folder_ / "flat.mp4"});
  ffmpeg({"-i", folder_ / "flat.mp4", "-c", "copy", "-metadata:s:v:0", "rotate=90",
          folder_ / "turned.mp4"});
  // As shown the picture is 48 x 80: this rectangle would be outside it unturned.
  deflicker("turned.mp4", "turned_out.mp4", {"--subrect", "0,10,48,80"});
  const Outcome outside =
      varilum({"deflicker", folder_ / "turned.mp4", folder_ / "x.mp4", "--subrect", "0,0,80,48"});
  EXPECT_EQ(outside.code, 2) << outside.err;
}

TEST_F(Footage, RectangleFollowsTheTurnedPicture) {
  if (kPlainProgram) GTEST_SKIP() << "takes FFmpeg";
  // Stored: four stripes from left to right. Turned by 90 degrees anticlockwise, which is what
  // ffmpeg makes of "rotate=90", they run from bottom to top: the bottom half holds the left ones.
  Frames frames = flickering({1.0, 0.8, 1.1, 0.9, 1.2, 0.7});
  for (std::size_t f = 0; f < frames.size(); ++f) frames[f][2] = frames[f][3] = f % 2 ? 250.0 : 5.0;
  writeStripes(folder_ / "flat.mp4", frames, kEight,
               {"-c:v", "libx264rgb", "-qp", "0", "-pix_fmt", "rgb24"});
  ffmpeg({"-i", folder_ / "flat.mp4", "-c", "copy", "-metadata:s:v:0", "rotate=90",
          folder_ / "turned.mp4"});
  const auto levels = [&](const std::string& clip, const std::string& rect) {
    const Outcome made = varilum(
        {"analyze", folder_ / clip, "-o", folder_ / "a.varilum", "--force", "--subrect", rect});
    EXPECT_EQ(made.code, 0) << made.err;
    const auto info = nlohmann::json::parse(varilum({"info", folder_ / "a.varilum", "--json"}).out);
    std::vector<double> list;
    for (const auto& frame : info.at("frames")) list.push_back(frame.at("inputLuminance"));
    return list;
  };
  EXPECT_EQ(levels("turned.mp4", "0,32,64,64"), levels("flat.mp4", "0,0,32,64"));
}

TEST_F(Footage, AContainerThatClaimsNinetyThousandFrames) {
  if (kPlainProgram) GTEST_SKIP() << "takes FFmpeg";
  // Every frame's time is right; only the rate that the container announces is nonsense.
  ffmpeg({"-f", "lavfi", "-i", "testsrc2=s=64x64:r=25:d=0.6", "-pix_fmt", "yuv420p", "-r", "90000",
          "-vsync", "passthrough", "-video_track_timescale", "90000", folder_ / "in.mp4"});
  const auto result = deflicker("in.mp4", "out.mp4");
  EXPECT_EQ(result.at("frames"), 15);
}

TEST_F(Footage, AClipThatSmoothingWouldHarmIsLeftAsItIs) {
  if (kPlainProgram) GTEST_SKIP() << "takes FFmpeg";
  // Large flat areas that move: corrections below one level become rounding of whole areas.
  ffmpeg({"-f", "lavfi", "-i", "testsrc2=s=320x240:d=2", "-pix_fmt", "yuv420p", "-c:v", "ffv1",
          folder_ / clip("in")});
  const Outcome outcome = varilum({"deflicker", folder_ / clip("in"), folder_ / clip("out")});
  EXPECT_EQ(outcome.code, 0);
  EXPECT_NE(outcome.err.find("its pictures are left as they are"), std::string::npos)
      << outcome.err;
  EXPECT_EQ(pictures(folder_ / clip("in")), pictures(folder_ / clip("out")));
}

TEST_F(Footage, MoreFlickerThanBeforeIsSaidPlainly) {
  // Steady frames that keyframes are told to make flicker.
  writeLossless(folder_ / clip("in"), flickering(std::vector<double>(6, 1.0)));
  std::vector<std::string> arguments{"deflicker", folder_ / clip("in"), folder_ / clip("out")};
  for (int f = 0; f < 6; ++f) {
    arguments.insert(arguments.end(),
                     {"--luminance", std::to_string(f) + "=" + (f % 2 == 0 ? "80" : "100")});
  }
  const Outcome outcome = varilum(arguments);
  EXPECT_EQ(outcome.code, 0);
  EXPECT_NE(outcome.err.find("flickers more than the input"), std::string::npos) << outcome.err;
}

}  // namespace
}  // namespace cli::test
