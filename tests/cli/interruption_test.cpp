// tests/cli/interruption_test.cpp — a stop asked for leaves nothing behind.
#include <gtest/gtest.h>
#include <signal.h>

#include "tests/cli/program.h"
#include "tests/cli/scratch_folder.h"

namespace cli::test {
namespace {

class Interruption : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    folder_ = new ScratchFolder;
    ffmpeg({"-f", "lavfi", "-i", "testsrc2=s=640x360:r=25:d=40", "-pix_fmt", "yuv420p", "-c:v",
            "libx264", "-preset", "ultrafast", *folder_ / "in.mp4"});
  }
  static void TearDownTestSuite() {
    delete folder_;
    folder_ = nullptr;
  }

  static void expectStopped(const std::vector<std::string>& arguments, const std::string& when,
                            int number) {
    bool sent = false;
    const Outcome outcome = varilum(arguments, [&](const std::string& out) {
      if (out.find(when) == std::string::npos) return 0;
      sent = true;
      return number;
    });
    EXPECT_TRUE(sent) << "the phase was never reached";
    EXPECT_EQ(outcome.code, 130) << outcome.err;
    EXPECT_EQ(folder_->names(), std::vector<std::string>{"in.mp4"});
    EXPECT_EQ(outcome.out.find("\"done\":1000,"), std::string::npos) << "it ran to the end";
  }

  static ScratchFolder* folder_;
};

ScratchFolder* Interruption::folder_ = nullptr;

TEST_F(Interruption, WhileAnalyzing) {
  expectStopped({"deflicker", *folder_ / "in.mp4", *folder_ / "out.mp4", "--progress", "json"},
                "Analyzing", SIGINT);
}

TEST_F(Interruption, WhileAnalyzingForAProject) {
  expectStopped(
      {"analyze", *folder_ / "in.mp4", "-o", *folder_ / "a.varilum", "--progress", "json"},
      "Analyzing", SIGTERM);
}

TEST_F(Interruption, WhileRendering) {
  bool sent = false;
  const Outcome outcome =
      varilum({"deflicker", *folder_ / "in.mp4", *folder_ / "out.mp4", "--progress", "json"},
              [&](const std::string& out) {
                sent = out.find("Rendering") != std::string::npos;
                return sent ? SIGTERM : 0;
              });
  EXPECT_TRUE(sent);
  EXPECT_EQ(outcome.code, 130) << outcome.err;
  EXPECT_EQ(folder_->names(), std::vector<std::string>{"in.mp4"});
  EXPECT_EQ(outcome.out.find("\"event\":\"done\""), std::string::npos);
}

}  // namespace
}  // namespace cli::test
