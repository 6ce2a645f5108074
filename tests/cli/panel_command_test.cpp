// tests/cli/panel_command_test.cpp — pictures of the panel from the command line.
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/cli/program.h"
#include "tests/cli/scratch_folder.h"
#include "tests/cli/striped_clip.h"

namespace cli::test {
namespace {

class PanelCommand : public testing::Test {
 protected:
  void SetUp() override {
    writeLossless(folder_ / "in.mkv", flickering({1.0, 0.8, 1.1}));
    ASSERT_EQ(varilum({"analyze", folder_ / "in.mkv", "-o", project_}).code, 0);
  }

  // The picture's bytes.
  std::string painted(std::vector<std::string> options) {
    std::vector<std::string> arguments{"panel", project_, "-o", picture_, "--force"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const Outcome outcome = varilum(arguments);
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    return readFile(picture_);
  }

  // Width and height out of the picture's header.
  static std::pair<int, int> sizeOf(const std::string& png) {
    const auto byte = [&](std::size_t at) {
      return static_cast<int>(static_cast<unsigned char>(png.at(at)));
    };
    return {byte(18) * 256 + byte(19), byte(22) * 256 + byte(23)};
  }

  ScratchFolder folder_;
  std::string project_ = folder_ / "shot.varilum";
  std::string picture_ = folder_ / "panel.png";
};

TEST_F(PanelCommand, SizesFollowWidthAndScale) {
  EXPECT_EQ(sizeOf(painted({})), (std::pair{572, 344}));
  EXPECT_EQ(sizeOf(painted({"--scale", "2"})), (std::pair{1144, 688}));
  EXPECT_EQ(sizeOf(painted({"--width", "400", "--scale", "0.5"})), (std::pair{206, 172}));
}

TEST_F(PanelCommand, EachOptionChangesThePictureAndRepeatingItDoesNot) {
  const std::string plain = painted({});
  EXPECT_EQ(painted({}), plain);
  const std::vector<std::vector<std::string>> others{{"--frame", "1"},
                                                     {"--frame", "9"},
                                                     {"--frame", "-1"},
                                                     {"--zoom"},
                                                     {"--red"},
                                                     {"--green"},
                                                     {"--blue"},
                                                     {"--font-size", "16"},
                                                     {"--correction-method", "shift"}};
  for (const auto& options : others) EXPECT_NE(painted(options), plain) << options[0];
}

TEST_F(PanelCommand, AllFramesGoIntoAFolder) {
  const Outcome outcome = varilum({"panel", project_, "--all-frames", folder_ / "walk"});
  EXPECT_EQ(outcome.code, 0) << outcome.err;
  for (const char* name : {"panel.00000.png", "panel.00001.png", "panel.00002.png"}) {
    EXPECT_GT(std::filesystem::file_size(folder_ / ("walk/" + std::string(name))), 1000U);
  }
  EXPECT_EQ(readFile(folder_ / "walk/panel.00001.png"), painted({"--frame", "1"}));
}

TEST_F(PanelCommand, MistakesAreRefused) {
  EXPECT_EQ(varilum({"panel", project_}).code, 2);
  EXPECT_EQ(varilum({"panel", project_, "-o", picture_, "--all-frames", "x"}).code, 2);
  EXPECT_EQ(varilum({"panel", project_, "-o", project_, "--force"}).code, 2);
  EXPECT_EQ(varilum({"panel", folder_ / "none.varilum", "-o", picture_}).code, 1);
  painted({});
  const Outcome kept = varilum({"panel", project_, "-o", picture_});
  EXPECT_EQ(kept.code, 1);
  EXPECT_NE(kept.err.find("--force"), std::string::npos) << kept.err;
}

}  // namespace
}  // namespace cli::test
