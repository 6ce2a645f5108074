// tests/cli/project/project_file_test.cpp — projects out and in again, and every byte of damage
// noticed.
#include "cli/project/project_file.h"

#include <gtest/gtest.h>

#include <cstring>
#include <nlohmann/json.hpp>
#include <span>
#include <utility>
#include <vector>

#include "cli/error.h"
#include "cli/project/crc32.h"
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
  host::SavedParameter number{21, "Number of smoothing frames", 2, true, {}};
  number.keys.push_back({0, 0.1, 0.0, {}});
  host::SavedParameter point{12, "1st sub-rectangle corner", 6, true, {}};
  point.keys.push_back({0, -3.5, 1e-300, {}});
  host::SavedParameter level{25, "Luminance", 11, false, {}};
  level.keys.push_back({2, 0.0, 0.0, {std::byte{0}, std::byte{0xAB}, std::byte{0xFF}}});
  level.keys.push_back({9, 0.0, 0.0, {std::byte{1}}});
  project.target = "ramp:2..9";
  ProjectShot first;
  first.found.frames = ShotFrames(0, 4, {2});
  first.found.matte = footage::Rectangle{0, 60, 640, 300};
  first.found.outliers = {{{1, 2, footage::OutlierKind::realLight, 1.75}, true},
                          {{3, 3, footage::OutlierKind::black, 0.01}, true}};
  first.effect.parameters = {number, point, level};
  for (int i = 0; i < 500; ++i) first.effect.sequenceData.push_back(static_cast<std::byte>(i));
  ProjectShot second;
  second.found.frames = ShotFrames(4, 7);
  second.found.outliers = {{{6, 6, footage::OutlierKind::exposureJump, 1.35}, false}};
  second.effect.parameters = {number};
  second.effect.sequenceData = {std::byte{7}, std::byte{9}};
  project.shots = {first, second};
  return project;
}

void expectSame(const host::SavedInstance& after, const host::SavedInstance& before) {
  EXPECT_EQ(after.sequenceData, before.sequenceData);
  ASSERT_EQ(after.parameters.size(), before.parameters.size());
  for (std::size_t i = 0; i < after.parameters.size(); ++i) {
    const auto& a = after.parameters[i];
    const auto& b = before.parameters[i];
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

void expectSame(const ShotFindings& after, const ShotFindings& before) {
  EXPECT_EQ(after.frames, before.frames);
  EXPECT_EQ(after.matte, before.matte);
  ASSERT_EQ(after.outliers.size(), before.outliers.size());
  for (std::size_t i = 0; i < after.outliers.size(); ++i) {
    EXPECT_EQ(after.outliers[i].found.first, before.outliers[i].found.first);
    EXPECT_EQ(after.outliers[i].found.last, before.outliers[i].found.last);
    EXPECT_EQ(after.outliers[i].found.kind, before.outliers[i].found.kind);
    EXPECT_EQ(after.outliers[i].found.ratio, before.outliers[i].found.ratio);
    EXPECT_EQ(after.outliers[i].left, before.outliers[i].left);
  }
}

// A project file with any header, whose sums are right.
std::string container(std::uint32_t version, const std::string& header, const std::string& data) {
  const auto sumOf = [](const std::string& text) { return crc32(std::as_bytes(std::span(text))); };
  std::string start = "VARILUM\n";
  const auto add = [&start](auto number) {
    start.append(reinterpret_cast<const char*>(&number), sizeof number);
  };
  add(version);
  add(static_cast<std::uint32_t>(header.size()));
  add(static_cast<std::uint64_t>(data.size()));
  add(sumOf(header));
  add(sumOf(data));
  add(sumOf(start));
  add(std::uint32_t{0});
  return start + header + data;
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
  EXPECT_EQ(after.target, before.target);
  ASSERT_EQ(after.shots.size(), before.shots.size());
  for (std::size_t i = 0; i < after.shots.size(); ++i) {
    expectSame(after.shots[i].found, before.shots[i].found);
    expectSame(after.shots[i].effect, before.shots[i].effect);
  }
}

TEST(ProjectFile, OfVersionOneHasOneShot) {
  const ScratchFolder folder;
  const std::string header = R"({
 "program": "4.2.0",
 "clip": {"path": "/footage/shot.mov", "relative": "shot.mov", "startNumber": -1,
          "frameRate": 24.0, "width": 64, "height": 32, "frames": 240, "pixels": [1, 2, 3]},
 "effect": {"version": 2162688, "frames": 239, "parameters": [
   {"id": 21, "name": "Number of smoothing frames", "type": 2, "constant": true,
    "keys": [{"frame": 0, "value": 12.0}]}]}
})";
  writeFile(folder / "old.varilum", container(1, header, "abc"));
  const Project project = readProject(folder / "old.varilum");
  EXPECT_EQ(project.target, "smoothing");
  ASSERT_EQ(project.shots.size(), 1U);
  EXPECT_EQ(project.shots[0].found.frames, ShotFrames(0, 239));
  EXPECT_EQ(project.shots[0].effect.sequenceData.size(), 3U);
  ASSERT_EQ(project.shots[0].effect.parameters.size(), 1U);
  EXPECT_EQ(project.shots[0].effect.parameters[0].keys[0].value, 12.0);
}

TEST(ProjectFile, WithRightSumsAndWrongContentsIsRefused) {
  const ScratchFolder folder;
  writeProject(folder / "a.varilum", sample(), false);
  const std::string whole = readFile(folder / "a.varilum");
  std::uint32_t length = 0;
  std::memcpy(&length, whole.data() + 12, sizeof length);
  const std::string header = whole.substr(40, length);
  const std::string data = whole.substr(40 + length);
  const auto read = [&](const std::string& changed) {
    writeFile(folder / "b.varilum", container(2, changed, data));
    return readProject(folder / "b.varilum");
  };
  ASSERT_NO_THROW(read(header));
  using nlohmann::json;
  const std::vector<std::pair<const char*, json>> changes{
      {"/target", "noise"},
      {"/shots", json::array()},
      {"/shots/0/first", 1},
      {"/shots/0/frames", 3},
      {"/shots/0/frames", 0},
      {"/shots/0/frames", 4294967300},
      {"/shots/0/frames", 1e300},
      {"/shots/0/duplicates", {0}},
      {"/shots/0/duplicates", {2, 2}},
      {"/shots/0/duplicates", {4}},
      {"/shots/0/duplicates", {2.5}},
      {"/shots/0/matte", {0, 0, 641, 300}},
      {"/shots/0/matte", {10, 0, 10, 300}},
      {"/shots/0/matte", {0, 0, 640}},
      {"/shots/0/outliers/0/first", 3},
      {"/shots/0/outliers/0/last", 4},
      {"/shots/0/outliers/0/kind", "lamp"},
      {"/shots/0/dataBytes", 499},
      {"/shots/0/dataBytes", 501},
      {"/shots/0/dataBytes", -1},
      {"/shots/1/dataBytes", 18446744073709551615ULL},
      {"/shots/1/first", 5},
      {"/effect/frames", 12},
      {"/clip/width", 0},
  };
  for (const auto& [where, value] : changes) {
    json changed = json::parse(header);
    changed[json::json_pointer(where)] = value;
    EXPECT_THROW(read(changed.dump()), Failure) << where << " " << value;
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
