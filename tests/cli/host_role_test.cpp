// tests/cli/host_role_test.cpp — one clip in both applications: the same pictures, bit for bit.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "tests/cli/program.h"
#include "tests/cli/scratch_folder.h"

namespace cli::test {
namespace {

using Options = std::vector<std::string>;

// Every level there is, in the colours of a test card, brighter and darker from frame to frame.
void writeTestCard(const std::string& path, const char* format) {
  const std::string gain = "(0.7+0.1*mod(N*3\\,5))";
  ffmpeg({"-f", "lavfi", "-i", "testsrc2=s=96x80:r=25:d=0.4,format=gbrp", "-vf",
          "geq=r='r(X,Y)*" + gain + "':g='g(X,Y)*" + gain + "':b='b(X,Y)*" + gain + "'", "-pix_fmt",
          format, "-c:v", "ffv1", path});
}

Outcome inRole(const char* role, Options arguments, const Options& further = {}) {
  arguments.insert(arguments.end(), further.begin(), further.end());
  arguments.insert(arguments.end(), {"--force", "--host-role", role});
  Outcome outcome = varilum(arguments);
  EXPECT_EQ(outcome.code, 0) << outcome.err;
  return outcome;
}

class HostRole : public testing::Test {
 protected:
  // The clip as a file whose bytes are the pictures' alone.
  std::string deflickered(const char* role, const Options& options) {
    inRole(role, {"deflicker", folder_ / "in.mkv", folder_ / "out.avi"}, options);
    return readFile(folder_ / "out.avi");
  }

  ScratchFolder folder_;
};

TEST_F(HostRole, GivesTheSamePicturesWhateverTheOptions) {
  writeTestCard(folder_ / "in.mkv", "bgr0");
  const std::string untouched = deflickered("after-effects", {"--dont-deflicker", ".."});
  const std::vector<Options> cases{
      {},
      {"--smoothing-frames", "2", "--subrect", "10,10,70,60"},
      {"--favor-brighter", "--speed", "1", "--dont-deflicker", "3..5"},
      {"--luminance", "100"},
      {"--luminance", "1=70", "--luminance", "7=120"},
      {"--adjust-clipping", "60", "--smoothing-frames", "1"},
      {"--luminance", "0=90", "--shift-spread", "0=20", "--shift-spread", "8=50"},
  };
  for (const char* method : {"linear", "shift", "gamma"}) {
    for (const Options& options : cases) {
      Options all = options;
      all.insert(all.end(), {"--correction-method", method});
      const std::string there = deflickered("after-effects", all);
      EXPECT_TRUE(there != untouched);
      EXPECT_TRUE(deflickered("premiere", all) == there)
          << method << " " << testing::PrintToString(options);
    }
  }
}

TEST_F(HostRole, GivesTheSamePicturesInYuv) {
  writeTestCard(folder_ / "in.mkv", "yuv420p");
  EXPECT_TRUE(deflickered("premiere", {}) == deflickered("after-effects", {}));
}

TEST_F(HostRole, CountsTheFramesOfTheEffectsOwnDialog) {
  writeTestCard(folder_ / "in.mkv", "gray");
  const Outcome outcome = inRole("premiere", {"analyze", folder_ / "in.mkv", "-o",
                                              folder_ / "in.varilum", "--progress", "json"});
  std::istringstream lines(outcome.out);
  int done = 0;
  for (std::string line; std::getline(lines, line);) {
    const auto object = nlohmann::json::parse(line);
    if (object.at("event") != "progress" || object.at("phase") != "Analyzing") continue;
    EXPECT_EQ(object.at("done"), ++done);
  }
  EXPECT_EQ(done, 10);
}

// A project made in either is rendered in both alike. After "Analyze" the effect moves the level
// set by hand down by a thousandth in Premiere Pro; with smoothing nothing follows it.
TEST_F(HostRole, ProjectsServeBothRoles) {
  writeTestCard(folder_ / "in.mkv", "bgr0");
  std::vector<std::string> rendered;
  for (const char* made : {"after-effects", "premiere"}) {
    inRole(made, {"analyze", folder_ / "in.mkv", "-o", folder_ / "in.varilum"});
    for (const char* used : {"after-effects", "premiere"}) {
      inRole(used, {"render", folder_ / "in.varilum", folder_ / "out.avi"});
      rendered.push_back(readFile(folder_ / "out.avi"));
      EXPECT_TRUE(rendered.back() == rendered.front()) << made << " then " << used;
    }
  }
}

TEST_F(HostRole, SaysThatDeepFootageIsRenderedWithEightBits) {
  writeTestCard(folder_ / "in.mkv", "gray10le");
  const Outcome outcome =
      inRole("premiere", {"deflicker", folder_ / "in.mkv", folder_ / "out.avi"});
  EXPECT_NE(outcome.err.find("more than the 8 bits that --host-role premiere renders with"),
            std::string::npos)
      << outcome.err;
  const std::string there = readFile(folder_ / "out.avi");
  EXPECT_TRUE(there == deflickered("after-effects", {"--depth", "8"}));
  EXPECT_TRUE(there != deflickered("after-effects", {}));
}

}  // namespace
}  // namespace cli::test
