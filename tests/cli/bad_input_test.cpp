// tests/cli/bad_input_test.cpp — what cannot be done is said in one line, and nothing is spoilt.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>

#include "tests/cli/program.h"
#include "tests/cli/scratch_folder.h"
#include "tests/cli/striped_clip.h"

namespace cli::test {
namespace {

using Names = std::vector<std::string>;

bool isOneLine(const std::string& text) {
  return !text.empty() && std::count(text.begin(), text.end(), '\n') == 1 && text.back() == '\n';
}

class BadInput : public testing::Test {
 protected:
  void makeClip(const std::string& name = clip("in")) {
    writeLossless(folder_ / name, flickering({1.0, 0.8, 1.1, 0.9, 1.0, 0.95}));
  }

  // Runs, expects exit code 1 and one line that holds `part`, and the folder as it was.
  void expectFailure(const std::vector<std::string>& arguments, const std::string& part) {
    const Names before = folder_.names();
    const Outcome outcome = varilum(arguments);
    EXPECT_EQ(outcome.code, 1) << outcome.err;
    EXPECT_TRUE(isOneLine(outcome.err)) << outcome.err;
    EXPECT_NE(outcome.err.find(part), std::string::npos) << outcome.err;
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(folder_.names(), before);
  }

  ScratchFolder folder_;
};

TEST_F(BadInput, MissingFile) {
  expectFailure({"deflicker", folder_ / "none.mp4", folder_ / "out.mp4"}, "none.mp4");
  expectFailure({"analyze", folder_ / "none.mp4", "-o", folder_ / "a.varilum"}, "none.mp4");
  expectFailure({"info", folder_ / "none.mp4"}, "none.mp4");
  expectFailure({"info", folder_ / "none.varilum"}, "none.varilum");
  expectFailure({"render", folder_ / "none.varilum", folder_ / "out.mp4"}, "none.varilum");
}

TEST_F(BadInput, NotAVideo) {
  writeFile(folder_ / "text.mp4", "This is not a video at all.\n");
  expectFailure({"deflicker", folder_ / "text.mp4", folder_ / "out.mp4"}, "text.mp4");
  writeFile(folder_ / "empty.mp4", "");
  expectFailure({"deflicker", folder_ / "empty.mp4", folder_ / "out.mp4"}, "empty.mp4");
  expectFailure({"deflicker", folder_.path().string(), folder_ / "out.mp4"},
                folder_.path().string());
  if (kPlainProgram) return;
  ffmpeg({"-f", "lavfi", "-i", "sine=duration=1", folder_ / "sound.wav"});
  expectFailure({"deflicker", folder_ / "sound.wav", folder_ / "out.mp4"}, "sound.wav");
}

TEST_F(BadInput, ZeroFrames) {
  if (kPlainProgram) {
    writeLossless(folder_ / clip("zero"), {});
  } else {
    ffmpeg(
        {"-f", "lavfi", "-i", "color=s=64x64", "-t", "0", "-c:v", "ffv1", folder_ / clip("zero")});
  }
  expectFailure({"deflicker", folder_ / clip("zero"), folder_ / clip("out")}, clip("zero"));
}

TEST_F(BadInput, BrokenOffClipIsDoneAsFarAsItDecodes) {
  if (kPlainProgram) GTEST_SKIP() << "takes FFmpeg";
  // Noise does not compress, so the cut falls among the pictures.
  ffmpeg({"-f", "lavfi", "-i", "nullsrc=s=64x64:r=24:d=1,format=gray,geq=random(1)*255", "-c:v",
          "ffv1", folder_ / clip("whole")});
  const std::string whole = readFile(folder_ / clip("whole"));
  writeFile(folder_ / clip("in"), whole.substr(0, whole.size() * 6 / 10));
  const Outcome outcome = varilum({"deflicker", folder_ / clip("in"), folder_ / clip("out")});
  EXPECT_EQ(outcome.code, 0) << outcome.err;
  EXPECT_NE(outcome.err.find("warning"), std::string::npos) << outcome.err;
  const std::string sums = ffmpeg({"-i", folder_ / clip("out"), "-f", "framemd5", "-"});
  const auto frames =
      std::count(sums.begin(), sums.end(), '\n') - std::count(sums.begin(), sums.end(), '#');
  EXPECT_GE(frames, 8);
  EXPECT_LT(frames, 24);
}

TEST_F(BadInput, ExistingOutputIsKeptUnlessForced) {
  makeClip();
  writeFile(folder_ / clip("out"), "mine");
  expectFailure({"deflicker", folder_ / clip("in"), folder_ / clip("out")}, "--force");
  EXPECT_EQ(readFile(folder_ / clip("out")), "mine");
  writeFile(folder_ / "a.varilum", "mine");
  expectFailure({"analyze", folder_ / clip("in"), "-o", folder_ / "a.varilum"}, "--force");
  EXPECT_EQ(readFile(folder_ / "a.varilum"), "mine");
  if (!kPlainProgram) {
    writeFile(folder_ / "p.png", "mine");
    expectFailure(
        {"deflicker", folder_ / clip("in"), folder_ / clip("x"), "--plot", folder_ / "p.png"},
        "--force");
    EXPECT_EQ(readFile(folder_ / "p.png"), "mine");
  }
  const Outcome forced =
      varilum({"deflicker", folder_ / clip("in"), folder_ / clip("out"), "--force"});
  EXPECT_EQ(forced.code, 0) << forced.err;
  EXPECT_EQ(readStripes(folder_ / clip("out"), kEight).size(), 6U);
}

TEST_F(BadInput, UnwritableOutput) {
  makeClip();
  expectFailure({"deflicker", folder_ / clip("in"), folder_ / "no" + clip("/out")}, "no");
  expectFailure({"analyze", folder_ / clip("in"), "-o", folder_ / "no" + "/a.varilum"}, "no");
  expectFailure({"deflicker", folder_ / clip("in"), folder_ / "out.nothing"}, "out.nothing");
  std::filesystem::permissions(
      folder_.path(), std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
  if (!std::ofstream(folder_ / "probe")) {  // some may do everything
    expectFailure({"deflicker", folder_ / clip("in"), folder_ / clip("out")}, "written");
  }
  std::filesystem::permissions(folder_.path(), std::filesystem::perms::owner_all);
}

TEST_F(BadInput, FullDisk) {
  if (kPlainProgram) GTEST_SKIP() << "takes FFmpeg";
  // 48 frames of noise in FFV1 are some megabytes; the small disk holds less.
  ffmpeg({"-f", "lavfi", "-i", "nullsrc=s=256x256:d=2,geq=random(1)*255:128:128", "-c:v", "ffv1",
          folder_ / clip("in")});
  const std::string mount = folder_ / "disk";
  std::filesystem::create_directory(mount);
  const std::string script =
      "mount -t tmpfs -o size=400k none \"$1\" 2>/dev/null || exit 77\n"
      "\"$2\" deflicker \"$3\" \"$1/out.mkv\"; code=$?\n"
      "ls -A \"$1\"; exit $code";
  const Outcome outcome = run({"unshare", "--mount", "--map-root-user", "sh", "-c", script, "sh",
                               mount, VARILUM_PROGRAM, folder_ / clip("in")});
  if (outcome.code == 77 || outcome.code == 127 || outcome.err.find("unshare") == 0) {
    GTEST_SKIP() << "this system lets no small disk be mounted: " << outcome.err;
  }
  EXPECT_EQ(outcome.code, 1) << outcome.err;
  EXPECT_TRUE(isOneLine(outcome.err)) << outcome.err;
  EXPECT_NE(outcome.err.find("space"), std::string::npos) << outcome.err;
  EXPECT_EQ(outcome.out, "") << "left over";
}

}  // namespace
}  // namespace cli::test
