// tests/cli/shots/level_match_test.cpp — levels that --target asks for, measured in what comes out.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "tests/cli/program.h"
#include "tests/cli/scratch_folder.h"

namespace cli::test {
namespace {

constexpr std::size_t kSunsetPixels = 64 * 36;

// Twelve frames whose exposure changes; red is cut off at white in the brighter ones.
void writeFlickeringSunset(const std::string& path) {
  const std::string gain = "(1+0.18*sin(N*2.3))";
  ffmpeg({"-f", "lavfi", "-i", "color=black:s=64x36:r=24:d=0.5,format=gbrp", "-vf",
          "geq=r='clip((150+2*X)*" + gain + ",0,255)':g='clip((60+3*Y)*" + gain +
              ",0,255)':b='clip((30+X/2)*" + gain + ",0,255)'",
          "-c:v", "ffv1", "-pix_fmt", "gbrp", path});
}

// Mean luma of each frame as a small clip in RGB has it: BT.601.
std::vector<double> lumas(const std::string& path) {
  const std::string bytes =
      ffmpeg({"-i", path, "-vsync", "passthrough", "-f", "rawvideo", "-pix_fmt", "rgb24", "-"});
  std::vector<double> means;
  for (std::size_t start = 0; start + 3 * kSunsetPixels <= bytes.size();
       start += 3 * kSunsetPixels) {
    double sum = 0.0;
    for (std::size_t at = start; at < start + 3 * kSunsetPixels; at += 3) {
      const auto component = [&](std::size_t c) {
        return static_cast<std::uint8_t>(bytes[at + c]);
      };
      sum += 0.299 * component(0) + 0.587 * component(1) + 0.114 * component(2);
    }
    means.push_back(sum / static_cast<double>(kSunsetPixels));
  }
  return means;
}

double swing(const std::vector<double>& levels) {
  const auto [least, most] = std::minmax_element(levels.begin(), levels.end());
  return *most - *least;
}

TEST(LevelMatch, FramesComeOutAtTheTargetInSpiteOfWhatIsCutOff) {
  const ScratchFolder folder;
  writeFlickeringSunset(folder / "in.mkv");
  ASSERT_GT(swing(lumas(folder / "in.mkv")), 20.0);
  for (const std::string method : {"linear", "shift", "gamma"}) {
    const Outcome outcome =
        varilum({"deflicker", folder / "in.mkv", folder / (method + ".mkv"), "--codec", "ffv1",
                 "--target", "constant", "--correction-method", method});
    ASSERT_EQ(outcome.code, 0) << outcome.err;
    const std::vector<double> after = lumas(folder / (method + ".mkv"));
    EXPECT_EQ(after.size(), 12U);
    EXPECT_LT(swing(after), 0.25) << method;
  }
}

TEST(LevelMatch, AProjectThatIsOpenedFollowsTheSameLevels) {
  const ScratchFolder folder;
  writeFlickeringSunset(folder / "in.mkv");
  const Outcome analyzed = varilum({"analyze", folder / "in.mkv", "-o", folder / "a.varilum"});
  ASSERT_EQ(analyzed.code, 0) << analyzed.err;
  const Outcome outcome = varilum({"render", folder / "a.varilum", folder / "out.mkv", "--codec",
                                   "ffv1", "--target", "constant"});
  ASSERT_EQ(outcome.code, 0) << outcome.err;
  EXPECT_LT(swing(lumas(folder / "out.mkv")), 0.25);
}

// Luma below black is cut off in RGB, on which the effect works. A frame that needs no correction
// must not keep what those beside it lose.
TEST(LevelMatch, AFrameThatIsLeftAloneDoesNotStandOut) {
  const ScratchFolder folder;
  ffmpeg({"-f", "lavfi", "-i", "color=black:s=64x36:r=24:d=0.5,format=yuv420p", "-vf",
          "geq=lum='if(lt(X,32),2,120+20*mod(N,3))':cb=128:cr=128", "-c:v", "ffv1",
          folder / "in.mkv"});
  const Outcome outcome = varilum({"deflicker", folder / "in.mkv", folder / "out.mkv", "--codec",
                                   "ffv1", "--target", "constant"});
  ASSERT_EQ(outcome.code, 0) << outcome.err;
  const std::string out = ffmpeg({"-i", folder / "out.mkv", "-vsync", "passthrough", "-vf",
                                  "extractplanes=y", "-f", "rawvideo", "-"});
  ASSERT_EQ(out.size(), 12 * kSunsetPixels);
  for (std::size_t frame = 0; frame < 12; ++frame) {
    EXPECT_EQ(static_cast<std::uint8_t>(out[frame * kSunsetPixels]), 16) << "frame " << frame;
    EXPECT_NEAR(static_cast<std::uint8_t>(out[frame * kSunsetPixels + 63]), 140, 1)
        << "frame " << frame;
  }
}

}  // namespace
}  // namespace cli::test
