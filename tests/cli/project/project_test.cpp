// tests/cli/project/project_test.cpp — analysing and rendering apart give what deflickering at once
// gives.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>

#include "tests/cli/program.h"
#include "tests/cli/scratch_folder.h"
#include "tests/cli/striped_clip.h"

namespace cli::test {
namespace {

class Project : public testing::Test {
 protected:
  void SetUp() override {
    writeLossless(in_, flickering({1.0, 0.8, 1.1, 0.9, 1.2, 0.7, 1.0, 0.95}));
  }

  Outcome ok(const std::vector<std::string>& arguments) {
    Outcome outcome = varilum(arguments);
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    return outcome;
  }
  void analyze(std::vector<std::string> options = {}) {
    std::vector<std::string> arguments{"analyze", in_, "-o", project_, "--force"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    ok(arguments);
  }
  Frames rendered(std::vector<std::string> options = {}) {
    std::vector<std::string> arguments{"render", project_, folder_ / clip("r"), "--force"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    ok(arguments);
    return readStripes(folder_ / clip("r"), kEight);
  }
  Frames deflickered(std::vector<std::string> options = {}) {
    std::vector<std::string> arguments{"deflicker", in_, folder_ / clip("d"), "--force"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    ok(arguments);
    return readStripes(folder_ / clip("d"), kEight);
  }
  void expectFailure(const std::vector<std::string>& arguments, const std::string& part) {
    const auto before = folder_.names();
    const Outcome outcome = varilum(arguments);
    EXPECT_EQ(outcome.code, 1) << outcome.err;
    EXPECT_NE(outcome.err.find(part), std::string::npos) << outcome.err;
    EXPECT_EQ(folder_.names(), before);
  }

  ScratchFolder folder_;
  std::string in_ = folder_ / clip("in");
  std::string project_ = folder_ / "shot.varilum";
};

TEST_F(Project, RendersWhatDeflickerRenders) {
  const std::vector<std::vector<std::string>> settings{
      {},
      {"--smoothing-frames", "2"},
      {"--luminance", "1=70", "--luminance", "6=110"},
      {"--luminance", "100", "--correction-method", "shift", "--shift-spread", "30"},
      {"--correction-method", "gamma", "--favor-brighter"},
      {"--smoothing-frames", "2", "--adjust-clipping", "50"},
      {"--luminance", "2=90", "--luminance", "4=60", "--adjust-clipping", "50"},
      {"--dont-deflicker", "2..3", "--subrect", "0,0,32,64"}};
  for (const auto& options : settings) {
    const Frames expected = deflickered(options);
    analyze(options);
    EXPECT_EQ(rendered(), expected) << "settings kept in the project";
    analyze();
    EXPECT_EQ(rendered(options), expected) << "settings given while rendering";
  }
}

TEST_F(Project, IsTheSameFileEachTimeItIsMade) {
  const auto bytes = [this] {
    std::ifstream file(project_, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
  };
  analyze();
  const std::string first = bytes();
  analyze({"--threads", "1"});
  EXPECT_EQ(bytes(), first);
  // Where memory lay may be the same each time, too.
  std::uint32_t headerBytes = 0;
  ASSERT_GT(first.size(), 40U);
  std::memcpy(&headerBytes, first.data() + 12, sizeof(headerBytes));
  ASSERT_GT(first.size(), 40 + headerBytes + 84);
  for (const std::size_t handle : {28U, 40U, 52U, 60U, 68U, 76U}) {
    EXPECT_EQ(first.substr(40 + headerBytes + handle, 8), std::string(8, '\0')) << handle;
  }
}

TEST_F(Project, SettingsCanBeTakenBackWhileRendering) {
  const Frames plain = deflickered();
  analyze({"--smoothing-frames", "2", "--adjust-clipping", "50", "--favor-brighter",
           "--dont-deflicker", "1", "--subrect", "0,0,16,16", "--correction-method", "gamma"});
  EXPECT_EQ(
      rendered({"--smoothing-frames", "30", "--adjust-clipping", "off", "--no-favor-brighter",
                "--dont-deflicker", "none", "--subrect", "off", "--correction-method", "linear"}),
      plain);
}

TEST_F(Project, RendersAPart) {
  analyze();
  const Frames all = rendered();
  for (const char* frames : {"2..4", "5..", "..3", "6"}) {
    const Frames part = rendered({"--frames", frames});
    const std::size_t first = frames[0] == '.' ? 0U : static_cast<std::size_t>(frames[0] - '0');
    const std::size_t last = std::string(frames) == "2..4"  ? 4U
                             : std::string(frames) == "5.." ? 7U
                             : std::string(frames) == "..3" ? 3U
                                                            : 6U;
    ASSERT_EQ(part.size(), last - first + 1) << frames;
    for (std::size_t i = 0; i < part.size(); ++i) EXPECT_EQ(part[i], all[first + i]) << frames;
  }
  const Outcome beyond = varilum({"render", project_, folder_ / clip("x"), "--frames", "3..8"});
  EXPECT_EQ(beyond.code, 2) << beyond.err;
}

TEST_F(Project, InfoTellsEachFrame) {
  analyze({"--smoothing-frames", "1"});
  const auto info = nlohmann::json::parse(ok({"info", project_, "--json"}).out);
  EXPECT_TRUE(info.at("analysisComplete").get<bool>());
  ASSERT_EQ(info.at("frames").size(), 8U);
  // Stripes 20, 60, 100, 180: mean 90. Times 0.8: 16, 48, 80, 144: mean 72.
  EXPECT_DOUBLE_EQ(info["frames"][0]["inputLuminance"].get<double>(), 90.0);
  EXPECT_DOUBLE_EQ(info["frames"][1]["inputLuminance"].get<double>(), 72.0);
  EXPECT_DOUBLE_EQ(info["frames"][0]["inputSpread"].get<double>(), 50.0);
  EXPECT_DOUBLE_EQ(info["frames"][0]["desiredLuminance"].get<double>(), 81.0);
  const std::string text = ok({"info", project_}).out;
  EXPECT_NE(text.find("8 of 8 frames analyzed"), std::string::npos) << text;
  const auto clip = nlohmann::json::parse(ok({"info", in_, "--json"}).out);
  EXPECT_EQ(clip.at("frames"), 8);
  EXPECT_EQ(clip.at("width"), 64);
}

TEST_F(Project, InfoAndDeflickerDrawPlots) {
  if (kPlainProgram) GTEST_SKIP() << "nothing is drawn here";
  analyze();
  ok({"info", project_, "--plot", folder_ / "project.png"});
  ok({"info", in_, "--plot", folder_ / "clip.png"});
  ok({"deflicker", in_, folder_ / clip("o"), "--plot", folder_ / "both.png"});
  for (const char* name : {"project.png", "clip.png", "both.png"}) {
    EXPECT_EQ(readFile(folder_ / name).substr(1, 3), "PNG") << name;
  }
}

TEST_F(Project, FindsAClipThatMovedWithIt) {
  analyze();
  const Frames expected = rendered();
  std::filesystem::create_directory(folder_ / "moved");
  std::filesystem::rename(in_, folder_ / clip("moved/in"));
  std::filesystem::rename(project_, folder_ / "moved/shot.varilum");
  ok({"render", folder_ / "moved/shot.varilum", folder_ / clip("m")});
  EXPECT_EQ(readStripes(folder_ / clip("m"), kEight), expected);
}

TEST_F(Project, AsksForAClipThatIsGone) {
  analyze();
  std::filesystem::rename(in_, folder_ / clip("elsewhere"));
  expectFailure({"render", project_, folder_ / clip("m")}, "--input");
  ok({"render", project_, folder_ / clip("m"), "--input", folder_ / clip("elsewhere")});
}

TEST_F(Project, RefusesAnotherClip) {
  analyze();
  writeLossless(folder_ / clip("longer"),
                flickering({1.0, 0.8, 1.1, 0.9, 1.2, 0.7, 1.0, 0.95, 1.0}));
  expectFailure({"render", project_, folder_ / clip("m"), "--input", folder_ / clip("longer")},
                "it has 9 frames, the project's clip 8");
  writeLossless(folder_ / clip("other"), flickering({1.0, 0.8, 1.1, 0.9, 1.2, 0.7, 1.0, 0.9}));
  expectFailure({"render", project_, folder_ / clip("m"), "--input", folder_ / clip("other")},
                "the pictures of frame 7 are not the same");
  if (kPlainProgram) return;  // stripes have one size
  ffmpeg({"-f", "lavfi", "-i", "color=s=32x32:r=24", "-frames:v", "8", "-c:v", "ffv1",
          folder_ / clip("small")});
  expectFailure({"render", project_, folder_ / clip("m"), "--input", folder_ / clip("small")},
                "it is 32 x 32 pixels, the project's clip 64 x 64");
}

TEST_F(Project, RefusesDamage) {
  analyze();
  const std::string whole = readFile(project_);
  for (const std::size_t at :
       {std::size_t{9}, std::size_t{50}, whole.size() - 100000, whole.size() - 5}) {
    std::string bad = whole;
    bad[at] = static_cast<char>(bad[at] ^ 1);
    writeFile(project_, bad);
    expectFailure({"render", project_, folder_ / clip("m")}, "damaged");
    expectFailure({"info", project_}, "damaged");
  }
  for (const std::size_t length :
       {std::size_t{12}, std::size_t{40}, whole.size() / 2, whole.size() - 1}) {
    writeFile(project_, whole.substr(0, length));
    expectFailure({"render", project_, folder_ / clip("m")}, "damaged");
  }
  writeFile(project_, "something else");
  expectFailure({"render", project_, folder_ / clip("m")}, "not a Varilum4 project");
}

}  // namespace
}  // namespace cli::test
