// tests/media/plain_footage_test.cpp — footage without FFmpeg: written by hand, read, written
// again.
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "media/clip_reader.h"
#include "media/clip_writer.h"
#include "media/pixel_conversion.h"
#include "media/system_file.h"

namespace media {
namespace {

namespace fs = std::filesystem;

class PlainFootage : public testing::Test {
 protected:
  PlainFootage() {
    static int serial = 0;
    folder_ = fs::temp_directory_path() /
              ("varilum-plain-" + std::to_string(processId()) + "-" + std::to_string(serial++));
    fs::create_directories(folder_);
  }
  ~PlainFootage() override {
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
  }

  std::string path(const std::string& name) const { return (folder_ / name).string(); }

  std::string write(const std::string& name, const std::string& bytes) const {
    std::ofstream(folder_ / name, std::ios::binary) << bytes;
    return path(name);
  }

  std::string contents(const std::string& name) const {
    std::ostringstream text;
    text << std::ifstream(folder_ / name, std::ios::binary).rdbuf();
    return text.str();
  }

  fs::path folder_;
};

std::string noise(std::size_t bytes, std::uint32_t seed, std::uint8_t mask = 0xFF) {
  std::mt19937 random(seed);
  std::string text(bytes, '\0');
  for (char& c : text) c = static_cast<char>(random() & mask);
  return text;
}

struct Y4mCase {
  const char* tag;
  const char* format;
  std::size_t bytes;  // of a frame of 6 x 4
  Depth depth;
};

class Y4mFormats : public PlainFootage, public testing::WithParamInterface<Y4mCase> {};

// 6 x 4: 24 luma samples; chroma 3 x 2, 3 x 4, 6 x 4, or 2 x 4 each.
INSTANTIATE_TEST_SUITE_P(All, Y4mFormats,
                         testing::Values(Y4mCase{"420jpeg", "yuv420p", 36, Depth::eight},
                                         Y4mCase{"422", "yuv422p", 48, Depth::eight},
                                         Y4mCase{"444", "yuv444p", 72, Depth::eight},
                                         Y4mCase{"411", "yuv411p", 40, Depth::eight},
                                         Y4mCase{"mono", "gray", 24, Depth::eight},
                                         Y4mCase{"444alpha", "yuva444p", 96, Depth::eight},
                                         Y4mCase{"420p10", "yuv420p10le", 72, Depth::sixteen},
                                         Y4mCase{"422p12", "yuv422p12le", 96, Depth::sixteen},
                                         Y4mCase{"444p16", "yuv444p16le", 144, Depth::sixteen},
                                         Y4mCase{"mono16", "gray16le", 48, Depth::sixteen}));

TEST_P(Y4mFormats, ComeThroughByteByByte) {
  const Y4mCase c = GetParam();
  // High bytes of 10-bit samples hold two bits; others take any byte.
  const auto mask = static_cast<std::uint8_t>(c.depth == Depth::eight ? 0xFF : 0x03);
  const std::string text = std::string("YUV4MPEG2 W6 H4 F30000:1001 Ip A1:1 C") + c.tag + "\n" +
                           "FRAME\n" + noise(c.bytes, 1, mask) + "FRAME\n" +
                           noise(c.bytes, 2, mask);
  const ClipReader reader(write("in.y4m", text));
  EXPECT_EQ(reader.info().pixelFormat, c.format);
  EXPECT_EQ(reader.info().workingDepth, c.depth);
  EXPECT_EQ(reader.info().width, 6);
  EXPECT_EQ(reader.info().height, 4);
  EXPECT_EQ(reader.frameCount(), 2);
  EXPECT_EQ(reader.info().frameRate, (Rational{30000, 1001}));
  EXPECT_EQ(reader.info().timeBase, (Rational{1001, 30000}));
  ClipReader again(path("in.y4m"));
  ClipWriter writer(path("out.y4m"), reader);
  while (const auto picture = again.next()) writer.write(*picture);
  EXPECT_FALSE(fs::exists(path("out.y4m"))) << "before it is whole";
  writer.finish();
  EXPECT_EQ(contents("out.y4m"), text);
}

TEST_F(PlainFootage, TagsOfFramesAndOfTheStreamAreRead) {
  const std::string text =
      "YUV4MPEG2 H2 W2 C422 F24:1 It A10:11 XYSCSS=422 XCOLORRANGE=FULL\n"
      "FRAME Ip\n12345678FRAME\nabcdefgh";
  ClipReader reader(write("in.y4m", text));
  EXPECT_EQ(reader.info().colourRange, "pc");
  EXPECT_EQ(reader.info().sampleAspectRatio, (Rational{10, 11}));
  EXPECT_EQ(reader.frameCount(), 2);
  const Picture second = reader.frameAt(1);
  EXPECT_EQ(second.index(), 1);
  EXPECT_EQ(second.pts(), 1);
  // Full range: luma 'a' is that grey where colour differences are small.
  std::array<std::uint8_t, 16> argb{};
  toArgb(second, {argb.data(), 8, 2, 2, Depth::eight});
  EXPECT_EQ(argb[0], 255);
  EXPECT_FALSE(reader.next());
  EXPECT_EQ(reader.frameAt(0).index(), 0);
  EXPECT_EQ(reader.position(), 1);
}

TEST_F(PlainFootage, GreysAreKnown) {
  // Limited range: 16 black, 235 white, and 126 half way.
  const std::string text = std::string("YUV4MPEG2 W3 H1 F25:1 Ip A0:0 C444\nFRAME\n") +
                           "\x10\x7E\xEB" + "\x80\x80\x80" + "\x80\x80\x80";
  ClipReader reader(write("in.y4m", text));
  EXPECT_EQ(reader.info().sampleAspectRatio, (Rational{1, 1}));
  std::array<std::uint8_t, 12> argb{};
  toArgb(reader.frameAt(0), {argb.data(), 12, 3, 1, Depth::eight});
  const std::array<std::uint8_t, 12> expected{255, 0, 0, 0, 255, 128, 128, 128, 255, 255, 255, 255};
  EXPECT_EQ(argb, expected);
}

TEST_F(PlainFootage, ACutOffClipGivesTheFramesThatAreWhole) {
  const ClipReader reader(
      write("in.y4m", "YUV4MPEG2 W2 H2 F24:1 Cmono\nFRAME\n1234FRAME\n5678FRAME\n9"));
  EXPECT_EQ(reader.frameCount(), 2);
  ASSERT_EQ(reader.warnings().size(), 1U);
  EXPECT_NE(reader.warnings()[0].find("truncated after frame 1"), std::string::npos);
}

Problem problemOf(const std::string& path) {
  try {
    const ClipReader reader(path);
  } catch (const Error& error) {
    EXPECT_FALSE(std::string(error.what()).empty());
    return error.problem();
  }
  ADD_FAILURE() << path << " was taken";
  return Problem::missing;
}

TEST_F(PlainFootage, WhatIsNoFootageIsRefused) {
  EXPECT_EQ(problemOf(path("none.y4m")), Problem::missing);
  EXPECT_EQ(problemOf(path("none.%03d.ppm")), Problem::missing);
  EXPECT_EQ(problemOf(write("a.y4m", "")), Problem::empty);
  EXPECT_EQ(problemOf(write("b.y4m", "RIFF....AVI ")), Problem::notVideo);
  EXPECT_EQ(problemOf(write("c.y4m", "YUV4MPEG2 W2 F24:1\nFRAME\n")), Problem::notVideo);
  EXPECT_EQ(problemOf(write("d.y4m", "YUV4MPEG2 W-2 H2 F24:1\nFRAME\n")), Problem::notVideo);
  EXPECT_EQ(problemOf(write("e.y4m", "YUV4MPEG2 W99999999999 H2\nFRAME\n")), Problem::notVideo);
  EXPECT_EQ(problemOf(write("f.y4m", "YUV4MPEG2 W2 H2 C440\nFRAME\n")), Problem::unsupported);
  EXPECT_EQ(problemOf(write("g.y4m", "YUV4MPEG2 W2 H2 Cmono\nFRAME\n123")), Problem::empty);
  EXPECT_EQ(problemOf(write("h.y4m", "YUV4MPEG2 W2 H2 Cmono")), Problem::notVideo);
  write("i.1.ppm", "P3\n1 1\n255\n0 0 0\n");
  EXPECT_EQ(problemOf(path("i.%d.ppm")), Problem::notVideo);
  write("j.1.ppm", "P6\n1 1\n1023\n......");
  EXPECT_EQ(problemOf(path("j.%d.ppm")), Problem::unsupported);
  write("k.1.ppm", "P6\n2 2\n255\n...");
  EXPECT_EQ(problemOf(path("k.%d.ppm")), Problem::damaged);
}

struct PnmCase {
  const char* extension;
  const char* format;
  const char* header;
  std::size_t bytes;
};

class PnmFormats : public PlainFootage, public testing::WithParamInterface<PnmCase> {};

INSTANTIATE_TEST_SUITE_P(All, PnmFormats,
                         testing::Values(PnmCase{"ppm", "rgb24", "P6\n3 2\n255\n", 18},
                                         PnmCase{"ppm", "rgb48be", "P6\n3 2\n65535\n", 36},
                                         PnmCase{"pgm", "gray", "P5\n3 2\n255\n", 6},
                                         PnmCase{"pgm", "gray16be", "P5\n3 2\n65535\n", 12}));

TEST_P(PnmFormats, ComeThroughByteByByte) {
  const PnmCase c = GetParam();
  const std::string end = std::string(".") + c.extension;
  for (int i = 7; i < 10; ++i) {
    write("in.0" + std::to_string(i) + end,
          c.header + noise(c.bytes, static_cast<std::uint32_t>(i)));
  }
  ClipReader reader(path("in.%02d" + end), {.startNumber = {}, .frameRate = Rational{25, 1}});
  EXPECT_EQ(reader.info().pixelFormat, c.format);
  EXPECT_EQ(reader.info().firstNumber, 7);
  EXPECT_TRUE(reader.info().imageSequence);
  EXPECT_EQ(reader.frameCount(), 3);
  {
    ClipWriter writer(path("out.%02d" + end), reader);
    while (const auto picture = reader.next()) writer.write(*picture);
    writer.finish();
  }
  for (int i = 7; i < 10; ++i) {
    EXPECT_EQ(contents("out.0" + std::to_string(i) + end),
              contents("in.0" + std::to_string(i) + end));
  }
  // Straight back out of ARGB at the working depth: nothing is lost at 8 bits.
  if (reader.info().workingDepth == Depth::eight) {
    std::array<std::uint8_t, 24> argb{};
    const Picture picture = reader.frameAt(1);
    toArgb(picture, {argb.data(), 12, 3, 2, Depth::eight});
    EXPECT_TRUE(isUnchanged({argb.data(), 12, 3, 2, Depth::eight}, picture));
    const Picture back = fromArgb({argb.data(), 12, 3, 2, Depth::eight}, picture);
    std::array<std::uint8_t, 24> again{};
    toArgb(back, {again.data(), 12, 3, 2, Depth::eight});
    EXPECT_EQ(again, argb);
  }
}

TEST_F(PlainFootage, CommentsInAHeaderAreSkipped) {
  write("in.1.pgm", "P5 # made by hand\n2\n# two wide\n1 255\nab");
  ClipReader reader(path("in.%d.pgm"));
  std::array<std::uint8_t, 8> argb{};
  toArgb(reader.frameAt(0), {argb.data(), 8, 2, 1, Depth::eight});
  EXPECT_EQ(argb[1], 'a');
  EXPECT_EQ(argb[5], 'b');
}

TEST_F(PlainFootage, ADamagedPictureIsReplacedByItsNeighbour) {
  write("in.1.pgm", "P5\n1 1\n255\na");
  write("in.2.pgm", "P5\n1 1\n255\n");
  write("in.3.pgm", "P5\n1 1\n255\nc");
  ClipReader reader(path("in.%d.pgm"));
  reader.next();
  const auto second = reader.next();
  ASSERT_TRUE(second);
  EXPECT_TRUE(second->isSubstitute());
  EXPECT_EQ(second->index(), 1);
  std::array<std::uint8_t, 4> argb{};
  toArgb(*second, {argb.data(), 4, 1, 1, Depth::eight});
  EXPECT_EQ(argb[1], 'a');
  ASSERT_EQ(reader.warnings().size(), 1U);
  EXPECT_NE(reader.warnings()[0].find("in.2.pgm is cut off"), std::string::npos);
}

TEST_F(PlainFootage, PicturesBecomeAClipAndBack) {
  write("in.1.ppm", "P6\n2 1\n255\n" + std::string("\x40\x40\x40\xC0\xC0\xC0"));
  ClipReader reader(path("in.%d.ppm"));
  {
    ClipWriter writer(path("out.y4m"), reader);
    EXPECT_EQ(writer.pixelFormat(), "yuv444p");
    EXPECT_EQ(writer.notes().size(), 1U);
    writer.write(*reader.next());
    writer.finish();
  }
  ClipReader clip(path("out.y4m"));
  ClipWriter writer(path("back.%d.ppm"), clip);
  writer.write(*clip.next());
  writer.finish();
  EXPECT_EQ(contents("back.1.ppm"), contents("in.1.ppm")) << "greys survive the detour";
}

Problem problemOfWriting(const std::string& path, const ClipReader& source,
                         const WriteOptions& options = {}) {
  try {
    const ClipWriter writer(path, source, options);
  } catch (const Error& error) {
    return error.problem();
  }
  ADD_FAILURE() << path << " was taken";
  return Problem::missing;
}

TEST_F(PlainFootage, OutputsThatCannotBeAreRefusedAndNothingIsLeft) {
  const ClipReader reader(write("in.y4m", "YUV4MPEG2 W2 H2 F24:1 Cmono\nFRAME\n1234"));
  EXPECT_EQ(problemOfWriting(path("out.mp4"), reader), Problem::unsupported);
  EXPECT_EQ(problemOfWriting(path("out.%d.png"), reader), Problem::unsupported);
  EXPECT_EQ(problemOfWriting(path("in.y4m"), reader), Problem::exists);
  EXPECT_EQ(problemOfWriting(path("no/out.y4m"), reader), Problem::unwritable);
  WriteOptions codec;
  codec.codec = "ffv1";
  EXPECT_EQ(problemOfWriting(path("out.y4m"), reader, codec), Problem::badOption);
  WriteOptions format;
  format.pixelFormat = "nv12";
  EXPECT_EQ(problemOfWriting(path("out.y4m"), reader, format), Problem::badOption);
  {
    ClipWriter writer(path("out.y4m"), reader);
    EXPECT_THROW(writer.finish(), Error) << "no frame was written";
  }
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder_)) {
    names.push_back(entry.path().filename().string());
  }
  EXPECT_EQ(names, std::vector<std::string>{"in.y4m"});
}

TEST_F(PlainFootage, AFileIsReplacedOnlyOnRequest) {
  const std::string text = "YUV4MPEG2 W2 H2 F24:1 Ip A1:1 Cmono\nFRAME\n1234";
  ClipReader reader(write("in.y4m", text));
  write("out.y4m", "old");
  WriteOptions options;
  options.overwrite = true;
  ClipWriter writer(path("out.y4m"), reader, options);
  writer.write(*reader.next());
  EXPECT_EQ(contents("out.y4m"), "old");
  writer.finish();
  EXPECT_EQ(contents("out.y4m"), text);
}

}  // namespace
}  // namespace media
