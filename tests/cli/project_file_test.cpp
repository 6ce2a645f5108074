// tests/cli/project_file_test.cpp — projects out and in again, and every byte of damage noticed.
#include "cli/project_file.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "cli/error.h"
#include "tests/cli/scratch_folder.h"

namespace cli {
namespace {

using test::readFile;
using test::ScratchFolder;
using test::writeFile;

Project sample() {
  Project project;
  project.program = "1.2.3";
  project.clip = "/clips/a \"quoted\" \xC3\xA9.mp4";
  project.clipRelative = "../a.mp4";
  project.startNumber = 17;
  project.frameRate = 24000.0 / 1001.0;
  project.fingerprint = {640, 360, 12, {1U, 0xFFFFFFFFU, 0x80000000U}};
  project.layerFrames = 11;
  project.effectVersion = 0x210001;
  for (int i = 0; i < 500; ++i) project.effect.sequenceData.push_back(static_cast<std::byte>(i));
  host::SavedParameter number{21, "Number of smoothing frames", 2, true, {}};
  number.keys.push_back({0, 0.1, 0.0, {}});
  host::SavedParameter point{12, "1st sub-rectangle corner", 6, true, {}};
  point.keys.push_back({0, -3.5, 1e-300, {}});
  host::SavedParameter level{25, "Luminance", 11, false, {}};
  level.keys.push_back({2, 0.0, 0.0, {std::byte{0}, std::byte{0xAB}, std::byte{0xFF}}});
  level.keys.push_back({9, 0.0, 0.0, {std::byte{1}}});
  project.effect.parameters = {number, point, level};
  return project;
}

TEST(ProjectFile, ComesBackAsItWas) {
  const ScratchFolder folder;
  const Project before = sample();
  writeProject(folder / "a.varilum", before, false);
  EXPECT_EQ(folder.names(), std::vector<std::string>{"a.varilum"});
  EXPECT_TRUE(looksLikeProject(folder / "a.varilum"));
  const Project after = readProject(folder / "a.varilum");
  EXPECT_EQ(after.program, before.program);
  EXPECT_EQ(after.clip, before.clip);
  EXPECT_EQ(after.clipRelative, before.clipRelative);
  EXPECT_EQ(after.startNumber, before.startNumber);
  EXPECT_EQ(after.frameRate, before.frameRate);
  EXPECT_EQ(after.fingerprint, before.fingerprint);
  EXPECT_EQ(after.layerFrames, before.layerFrames);
  EXPECT_EQ(after.effectVersion, before.effectVersion);
  EXPECT_EQ(after.effect.sequenceData, before.effect.sequenceData);
  ASSERT_EQ(after.effect.parameters.size(), before.effect.parameters.size());
  for (std::size_t i = 0; i < after.effect.parameters.size(); ++i) {
    const auto& a = after.effect.parameters[i];
    const auto& b = before.effect.parameters[i];
    EXPECT_EQ(a.id, b.id);
    EXPECT_EQ(a.name, b.name);
    EXPECT_EQ(a.type, b.type);
    EXPECT_EQ(a.constant, b.constant);
    ASSERT_EQ(a.keys.size(), b.keys.size());
    for (std::size_t k = 0; k < a.keys.size(); ++k) {
      EXPECT_EQ(a.keys[k].frame, b.keys[k].frame);
      EXPECT_EQ(a.keys[k].value, b.keys[k].value);
      EXPECT_EQ(a.keys[k].y, b.keys[k].y);
      EXPECT_EQ(a.keys[k].opaque, b.keys[k].opaque);
    }
  }
}

TEST(ProjectFile, IsReplacedOnlyWhenForced) {
  const ScratchFolder folder;
  writeFile(folder / "a.varilum", "mine");
  EXPECT_THROW(writeProject(folder / "a.varilum", sample(), false), Failure);
  EXPECT_EQ(readFile(folder / "a.varilum"), "mine");
  writeProject(folder / "a.varilum", sample(), true);
  EXPECT_EQ(readProject(folder / "a.varilum").layerFrames, 11);
}

TEST(ProjectFile, NoticesAnyFlippedByteAndAnyCut) {
  const ScratchFolder folder;
  writeProject(folder / "a.varilum", sample(), false);
  const std::string whole = readFile(folder / "a.varilum");
  const std::size_t reservedWord = 36;
  for (std::size_t i = 0; i < whole.size(); ++i) {
    if (i >= reservedWord && i < reservedWord + 4) continue;
    std::string bad = whole;
    bad[i] = static_cast<char>(bad[i] ^ 0x10);
    writeFile(folder / "b.varilum", bad);
    EXPECT_THROW(readProject(folder / "b.varilum"), Failure) << "byte " << i;
  }
  for (std::size_t length = 0; length < whole.size(); ++length) {
    writeFile(folder / "b.varilum", whole.substr(0, length));
    EXPECT_THROW(readProject(folder / "b.varilum"), Failure) << "length " << length;
  }
  writeFile(folder / "b.varilum", whole + "x");
  EXPECT_THROW(readProject(folder / "b.varilum"), Failure);
}

TEST(ProjectFile, SaysWhatIsNotThere) {
  const ScratchFolder folder;
  EXPECT_THROW(readProject(folder / "none.varilum"), Failure);
  EXPECT_THROW(readProject(folder.path()), Failure);
  EXPECT_FALSE(looksLikeProject(folder / "none.varilum"));
}

}  // namespace
}  // namespace cli
