// tests/cli/options_test.cpp — the command line itself: help, wrong usage, exit codes, quiet.
#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <sstream>

#include "tests/cli/program.h"
#include "tests/cli/scratch_folder.h"
#include "tests/cli/striped_clip.h"

namespace cli::test {
namespace {

const std::vector<double> kGains{1.0, 0.8, 1.1, 0.9};

bool isOneLine(const std::string& text) {
  return !text.empty() && std::count(text.begin(), text.end(), '\n') == 1 && text.back() == '\n';
}

TEST(Options, HelpNamesEveryParameterAndFitsThePage) {
  for (const char* command : {"deflicker", "analyze", "render"}) {
    const Outcome help = varilum({command, "--help"});
    EXPECT_EQ(help.code, 0);
    EXPECT_EQ(help.err, "");
    for (const char* option : {"--deflicker-method", "--correction-method", "--smoothing-frames",
                               "--adjust-clipping", "--subrect", "--speed", "--favor-brighter",
                               "--luminance", "--shift-spread", "--dont-deflicker", "--host-role",
                               "--quiet", "--progress", "--threads", "--effect", "--force"}) {
      EXPECT_NE(help.out.find(option), std::string::npos) << command << " " << option;
    }
    std::istringstream lines(help.out);
    for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 100U) << line;
  }
  EXPECT_EQ(varilum({"--help"}).code, 0);
  EXPECT_EQ(varilum({"--version"}).code, 0);
}

TEST(Options, WrongUsageIsOneLineAndExitCodeTwo) {
  const ScratchFolder folder;
  const std::string in = folder / clip("in");
  writeLossless(in, flickering(kGains));
  const std::string out = folder / clip("out");
  const std::vector<std::vector<std::string>> wrong{
      {},
      {"fly"},
      {"deflicker"},
      {"deflicker", in},
      {"deflicker", in, out, "--fast"},
      {"deflicker", in, out, "--deflicker-method", "magic"},
      {"deflicker", in, out, "--correction-method", "Linear"},
      {"deflicker", in, out, "--smoothing-frames", "0"},
      {"deflicker", in, out, "--smoothing-frames", "61"},
      {"deflicker", in, out, "--smoothing-frames", "2.5"},
      {"deflicker", in, out, "--adjust-clipping", "9"},
      {"deflicker", in, out, "--adjust-clipping", "101"},
      {"deflicker", in, out, "--speed", "21"},
      {"deflicker", in, out, "--luminance", "256"},
      {"deflicker", in, out, "--luminance", "x=1"},
      {"deflicker", in, out, "--luminance", "5", "--luminance", "1=7"},
      {"deflicker", in, out, "--luminance", "1=5", "--luminance", "1=7"},
      {"deflicker", in, out, "--luminance", "4=100"},
      {"deflicker", in, out, "--shift-spread", "4=1"},
      {"deflicker", in, out, "--dont-deflicker", "2..4"},
      {"deflicker", in, out, "--dont-deflicker", "3..2"},
      {"deflicker", in, out, "--subrect", "0,0,64"},
      {"deflicker", in, out, "--subrect", "0,0,65,64"},
      {"deflicker", in, out, "--subrect", "0,0,0,64"},
      {"deflicker", in, out, "--subrect", "-1,0,10,64"},
      {"deflicker", in, out, "--threads", "0"},
      {"deflicker", in, out, "--progress", "loud"},
      {"deflicker", in, out, "--depth", "12"},
      {"deflicker", in, out, "--host-role", "editor"},
      {"deflicker", in, out, "--host-role", "premiere", "--depth", "16"},
      {"deflicker", in, out, "--encoder-option", "x"},
      {"deflicker", in, in, "--force"},
      {"analyze", in},
      {"render", folder / "a.varilum", out, "--frames", "b"},
  };
  for (const auto& arguments : wrong) {
    std::string shown;
    for (const std::string& argument : arguments) shown += argument + " ";
    const Outcome outcome = varilum(arguments);
    EXPECT_EQ(outcome.code, 2) << shown << outcome.err;
    EXPECT_EQ(outcome.out, "") << shown;
    EXPECT_TRUE(isOneLine(outcome.err)) << shown << outcome.err;
    EXPECT_EQ(outcome.err.rfind("varilum4: ", 0), 0U) << outcome.err;
    EXPECT_EQ(folder.names(), std::vector<std::string>{clip("in")}) << shown;
  }
}

TEST(Options, QuietSaysNothingAndTheSummaryIsOneLine) {
  const ScratchFolder folder;
  writeLossless(folder / clip("in"), flickering(kGains));
  Outcome outcome = varilum({"deflicker", folder / clip("in"), folder / clip("a"), "--quiet"});
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.out + outcome.err, "");
  outcome = varilum({"deflicker", folder / clip("in"), folder / clip("b")});
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.err, "");
  EXPECT_TRUE(isOneLine(outcome.out)) << outcome.out;
  EXPECT_NE(outcome.out.find("4 frames"), std::string::npos) << outcome.out;
  EXPECT_NE(outcome.out.find("flicker"), std::string::npos) << outcome.out;
}

TEST(Options, JsonProgressCountsBothPhasesAndEndsWithTheFigures) {
  const ScratchFolder folder;
  writeLossless(folder / clip("in"), flickering(kGains));
  const Outcome outcome =
      varilum({"deflicker", folder / clip("in"), folder / clip("a"), "--progress", "json"});
  ASSERT_EQ(outcome.code, 0) << outcome.err;
  std::istringstream lines(outcome.out);
  nlohmann::json last;
  int analyzed = 0;
  int rendered = 0;
  for (std::string line; std::getline(lines, line);) {
    last = nlohmann::json::parse(line);
    if (last.at("event") != "progress") continue;
    int& count = last.at("phase") == "Analyzing" ? analyzed : rendered;
    EXPECT_EQ(last.at("done"), ++count);
    EXPECT_EQ(last.at("total"), 4);
  }
  EXPECT_EQ(analyzed, 4);
  EXPECT_EQ(rendered, 4);
  EXPECT_EQ(last.at("event"), "done");
  EXPECT_EQ(last.at("frames"), 4);
  EXPECT_GT(last.at("flickerPercent").at("before").get<double>(), 5.0);
  EXPECT_LT(last.at("flickerPercent").at("after").get<double>(), 0.5);
}

TEST(Options, AMissingEffectLibraryIsNamed) {
  const ScratchFolder folder;
  writeLossless(folder / clip("in"), flickering(kGains));
  const Outcome outcome =
      varilum({"deflicker", folder / clip("in"), folder / clip("a"), "--effect", folder / "no.so"});
  EXPECT_EQ(outcome.code, 1);
  EXPECT_TRUE(isOneLine(outcome.err)) << outcome.err;
  EXPECT_NE(outcome.err.find("no.so"), std::string::npos);
}

TEST(Options, AFileThatIsNoEffectIsRefused) {
  const ScratchFolder folder;
  writeLossless(folder / clip("in"), flickering(kGains));
  writeFile(folder / "no.so", "not a library");
  const Outcome outcome =
      varilum({"deflicker", folder / clip("in"), folder / clip("a"), "--effect", folder / "no.so"});
  EXPECT_EQ(outcome.code, 1);
  EXPECT_TRUE(isOneLine(outcome.err)) << outcome.err;
}

}  // namespace
}  // namespace cli::test
