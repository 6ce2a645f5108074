// tests/cli/shots/shot_project_test.cpp — projects of several shots, and those of before there were
// any.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <nlohmann/json.hpp>

#include "tests/cli/program.h"
#include "tests/cli/scratch_folder.h"
#include "tests/cli/striped_clip.h"

namespace cli::test {
namespace {

using nlohmann::json;

// Two shots of 24 and 20 frames; frame 30 is held for three.
Frames twoShots() {
  Frames frames =
      flickering({1.0,  0.93, 1.05, 0.97, 1.04, 0.95, 1.01, 0.94, 1.06, 0.98, 1.03, 0.96,
                  1.02, 0.92, 1.05, 0.99, 1.04, 0.95, 1.0,  0.94, 1.06, 0.97, 1.03, 0.96});
  for (int i = 0; i < 20; ++i) {
    const double gain = 1.0 + 0.02 * (i * 3 % 5);
    frames.push_back({180.0 * gain, 60.0 * gain, 20.0 * gain, 140.0 * gain});
    for (double& level : frames.back()) level = std::floor(level + 0.5);
  }
  frames[31] = frames[30];
  frames[32] = frames[30];
  return frames;
}

class ShotProject : public testing::Test {
 protected:
  void SetUp() override {
    writeLossless(in_, twoShots());
    writeFile(folder_ / "cuts.txt", "24\n");
  }

  Outcome ok(const std::vector<std::string>& arguments) {
    Outcome outcome = varilum(arguments);
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    return outcome;
  }
  Outcome run(std::vector<std::string> arguments, const std::vector<std::string>& options) {
    arguments.insert(arguments.end(), options.begin(), options.end());
    return ok(arguments);
  }
  void analyze(const std::vector<std::string>& options = {}) {
    run({"analyze", in_, "-o", project_, "--force", "--shots", folder_ / "cuts.txt"}, options);
  }
  Frames rendered(const std::vector<std::string>& options = {}) {
    run({"render", project_, folder_ / clip("r"), "--force"}, options);
    return readStripes(folder_ / clip("r"), kEight);
  }
  Frames deflickered(const std::vector<std::string>& options = {}) {
    run({"deflicker", in_, folder_ / clip("d"), "--force", "--shots", folder_ / "cuts.txt"},
        options);
    return readStripes(folder_ / clip("d"), kEight);
  }
  json info() { return json::parse(ok({"info", project_, "--json"}).out); }

  ScratchFolder folder_;
  std::string in_ = folder_ / clip("in");
  std::string project_ = folder_ / "film.varilum";
};

TEST_F(ShotProject, RendersWhatDeflickerRenders) {
  const std::vector<std::vector<std::string>> settings{
      {},
      {"--smoothing-frames", "2"},
      {"--luminance", "10=70", "--luminance", "35=110", "--duplicates", "keep"},
      {"--target", "median", "--smoothing-frames", "3"},
      {"--target", "constant"},
      {"--dont-deflicker", "22..26", "--correction-method", "gamma"}};
  for (const auto& options : settings) {
    const Frames expected = deflickered(options);
    analyze(options);
    EXPECT_EQ(rendered(), expected) << "settings kept in the project: " << options.size();
  }
}

TEST_F(ShotProject, SettingsGivenWhileRenderingHoldInEachShot) {
  analyze();
  EXPECT_EQ(rendered({"--smoothing-frames", "2"}), deflickered({"--smoothing-frames", "2"}));
  EXPECT_EQ(rendered({"--target", "savitzky-golay"}), deflickered({"--target", "savitzky-golay"}));
  EXPECT_EQ(rendered({"--dont-deflicker", "22..26"}), deflickered({"--dont-deflicker", "22..26"}));
  analyze({"--target", "median"});
  EXPECT_EQ(rendered({"--smoothing-frames", "2"}),
            deflickered({"--target", "median", "--smoothing-frames", "2"}));
  EXPECT_EQ(rendered({"--target", "smoothing"}), deflickered());
}

TEST_F(ShotProject, RendersAPartAcrossACut) {
  analyze();
  const Frames all = rendered();
  const Frames part = rendered({"--frames", "20..33"});
  ASSERT_EQ(part.size(), 14U);
  for (std::size_t i = 0; i < part.size(); ++i) EXPECT_EQ(part[i], all[20 + i]) << i;
}

TEST_F(ShotProject, InfoTellsTheShots) {
  analyze({"--target", "constant"});
  const json told = info();
  EXPECT_EQ(told.at("target"), "constant");
  ASSERT_EQ(told.at("shots").size(), 2U);
  EXPECT_EQ(told["shots"][1].at("first"), 24);
  EXPECT_EQ(told["shots"][1].at("last"), 43);
  EXPECT_EQ(told["shots"][1].at("repeated"), json({31, 32}));
  ASSERT_EQ(told.at("frames").size(), 44U);
  EXPECT_EQ(told["frames"][23].at("shot"), 1);
  EXPECT_EQ(told["frames"][24].at("shot"), 2);
  EXPECT_EQ(told["frames"][32].at("original"), 30);
  EXPECT_EQ(told["frames"][32].at("inputLuminance"), told["frames"][30].at("inputLuminance"));
  // One level a shot, and not the same.
  EXPECT_EQ(told["frames"][0].at("desiredLuminance"), told["frames"][23].at("desiredLuminance"));
  EXPECT_NE(told["frames"][0].at("desiredLuminance"), told["frames"][24].at("desiredLuminance"));
  const std::string text = ok({"info", project_}).out;
  EXPECT_NE(text.find("frames 24..43"), std::string::npos) << text;
  const json clip = json::parse(ok({"info", in_, "--json", "--shots", folder_ / "cuts.txt"}).out);
  EXPECT_EQ(clip.at("shots").size(), 2U);
}

TEST_F(ShotProject, ThePanelIsThatOfTheFramesShot) {
  if (kPlainProgram) GTEST_SKIP() << "nothing is drawn here";
  analyze();
  ok({"panel", project_, "--frame", "26", "-o", folder_ / "both.png"});
  const Frames all = twoShots();
  writeLossless(folder_ / clip("alone"), {all.begin() + 24, all.end()});
  ok({"analyze", folder_ / clip("alone"), "-o", folder_ / "alone.varilum", "--shots", "off"});
  ok({"panel", folder_ / "alone.varilum", "--frame", "2", "-o", folder_ / "alone.png"});
  EXPECT_EQ(readFile(folder_ / "both.png"), readFile(folder_ / "alone.png"));
  ok({"panel", project_, "--all-frames", folder_ / "panels"});
  EXPECT_EQ(readFile(folder_ / "panels/panel.00026.png"), readFile(folder_ / "both.png"));
}

TEST_F(ShotProject, SessionsVisitAShot) {
  analyze();
  writeFile(folder_ / "visit.txt", "open " + project_ + " shot=2\nrender 1\nopen " + project_ +
                                       "\nsave " + (folder_ / "saved.varilum") + "\n");
  const Outcome visit = ok({"session", folder_ / "visit.txt"});
  const json first = json::parse(visit.out.substr(0, visit.out.find('\n')));
  EXPECT_EQ(first.at("frames"), 18);  // two of twenty are repeats
  EXPECT_EQ(first.at("shot").at("of"), 2);
  EXPECT_EQ(first["shot"].at("first"), 24);
  const auto told = [&](const std::string& project) { return ok({"info", project}).out; };
  EXPECT_EQ(told(folder_ / "saved.varilum"), told(project_));
  writeFile(folder_ / "visit.txt", "open " + project_ + " shot=3\n");
  const Outcome none = varilum({"session", folder_ / "visit.txt"});
  EXPECT_EQ(none.code, 1);
  EXPECT_NE(none.out.find("There is no shot 3"), std::string::npos) << none.out;
}

std::uint32_t sumOf(const std::string& text) {
  std::uint32_t sum = ~0U;
  for (const char c : text) {
    sum ^= static_cast<unsigned char>(c);
    for (int bit = 0; bit < 8; ++bit) sum = (sum >> 1) ^ ((sum & 1U) != 0 ? 0xEDB88320U : 0U);
  }
  return ~sum;
}

// A project of one shot as the first version of the format had it.
std::string asVersionOne(const std::string& project) {
  std::uint32_t length = 0;
  std::memcpy(&length, project.data() + 12, sizeof length);
  json header = json::parse(project.substr(40, length));
  header["effect"]["parameters"] = header["shots"][0]["parameters"];
  header.erase("shots");
  header.erase("target");
  const std::string text = header.dump();
  const std::string data = project.substr(40 + length);
  std::string start = "VARILUM\n";
  const auto add = [&start](auto number) {
    start.append(reinterpret_cast<const char*>(&number), sizeof number);
  };
  add(std::uint32_t{1});
  add(static_cast<std::uint32_t>(text.size()));
  add(static_cast<std::uint64_t>(data.size()));
  add(sumOf(text));
  add(sumOf(data));
  add(sumOf(start));
  add(std::uint32_t{0});
  return start + text + data;
}

TEST_F(ShotProject, OnesOfVersionOneRenderAsEver) {
  const std::vector<std::string> plain{"--shots", "off", "--duplicates", "keep"};
  run({"analyze", in_, "-o", project_}, plain);
  const Frames expected = rendered();
  writeFile(project_, asVersionOne(readFile(project_)));
  EXPECT_EQ(rendered(), expected);
  EXPECT_EQ(info().at("shots").size(), 1U);
}

}  // namespace
}  // namespace cli::test
