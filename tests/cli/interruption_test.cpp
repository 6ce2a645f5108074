// tests/cli/interruption_test.cpp — a stop asked for leaves nothing behind.
#include <gtest/gtest.h>

#include <csignal>

#include "tests/cli/program.h"
#include "tests/cli/scratch_folder.h"

namespace cli::test {
namespace {

class Interruption : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    folder_ = new ScratchFolder;
    in_ = *folder_ / kIn;
    out_ = *folder_ / (kPlainProgram ? "out.y4m" : "out.mp4");
    if (kPlainProgram) {
      std::string bytes = "YUV4MPEG2 W640 H360 F25:1 Cmono\n";
      for (int f = 0; f < 300; ++f) {
        bytes += "FRAME\n" + std::string(640 * 360, static_cast<char>(90 + f * 7 % 20));
      }
      writeFile(in_, bytes);
    } else {
      ffmpeg({"-f", "lavfi", "-i", "testsrc2=s=640x360:r=25:d=40", "-pix_fmt", "yuv420p", "-c:v",
              "libx264", "-preset", "ultrafast", in_});
    }
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
    EXPECT_EQ(folder_->names(), std::vector<std::string>{kIn});
    EXPECT_EQ(outcome.out.find("\"done\":1000,"), std::string::npos) << "it ran to the end";
  }

  static constexpr const char* kIn = kPlainProgram ? "in.y4m" : "in.mp4";
  static ScratchFolder* folder_;
  static std::string in_;
  static std::string out_;
};

ScratchFolder* Interruption::folder_ = nullptr;
std::string Interruption::in_;
std::string Interruption::out_;

TEST_F(Interruption, WhileAnalyzing) {
  expectStopped({"deflicker", in_, out_, "--progress", "json"}, "Analyzing", SIGINT);
}

TEST_F(Interruption, WhileAnalyzingForAProject) {
  expectStopped({"analyze", in_, "-o", *folder_ / "a.varilum", "--progress", "json"}, "Analyzing",
                SIGTERM);
}

TEST_F(Interruption, WhileRendering) {
  bool sent = false;
  const Outcome outcome =
      varilum({"deflicker", in_, out_, "--progress", "json"}, [&](const std::string& out) {
        sent = out.find("Rendering") != std::string::npos;
        return sent ? SIGTERM : 0;
      });
  EXPECT_TRUE(sent);
  EXPECT_EQ(outcome.code, 130) << outcome.err;
  EXPECT_EQ(folder_->names(), std::vector<std::string>{kIn});
  EXPECT_EQ(outcome.out.find("\"event\":\"done\""), std::string::npos);
}

}  // namespace
}  // namespace cli::test
