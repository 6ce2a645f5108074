// tests/media/clip_reader_test.cpp — clips by index and in order, and what is said of broken ones.
#include "media/clip_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "tests/media/media_fixture.h"

namespace media::test {
namespace {

using testing::HasSubstr;

Problem problemOf(const std::string& path, const ReadOptions& options = {}) {
  try {
    const ClipReader reader(path, options);
  } catch (const Error& error) {
    EXPECT_FALSE(std::string(error.what()).empty());
    EXPECT_EQ(std::string(error.what()).find('\n'), std::string::npos) << error.what();
    return error.problem();
  }
  ADD_FAILURE() << path << " was opened";
  return Problem::unsupported;
}

class ClipReaderTest : public testing::Test {
 protected:
  /// 48 frames of moving picture with B-frames and several key frames.
  std::string makeClip(const std::string& name, const std::string& options) {
    const std::string path = folder_ / name;
    EXPECT_TRUE(
        runFfmpeg("-f lavfi -i testsrc2=size=128x96:rate=24 -frames:v 48 " + options + " " + path));
    return path;
  }

  ScratchFolder folder_;
};

// Every frame by index, in a random order, is the frame of the sequential pass.
void expectIndexEqualsSequence(const std::string& path, std::mt19937& random) {
  SCOPED_TRACE(path);
  ClipReader reader(path);
  std::vector<std::vector<std::uint8_t>> frames;
  std::vector<std::int64_t> times;
  while (const auto picture = reader.next()) {
    EXPECT_EQ(picture->index(), static_cast<std::int64_t>(frames.size()));
    EXPECT_FALSE(picture->isSubstitute());
    EXPECT_EQ(picture->pts(), reader.ptsOf(picture->index()));
    if (!times.empty()) {
      EXPECT_GT(picture->pts(), times.back());
    }
    frames.push_back(samplesOf(*picture));
    times.push_back(picture->pts());
  }
  ASSERT_EQ(static_cast<std::int64_t>(frames.size()), reader.frameCount());
  EXPECT_FALSE(reader.next());
  std::uniform_int_distribution<std::size_t> any(0, frames.size() - 1);
  for (int i = 0; i < 60; ++i) {
    const std::size_t index = any(random);
    const Picture picture = reader.frameAt(static_cast<std::int64_t>(index));
    ASSERT_EQ(samplesOf(picture), frames[index]) << "frame " << index;
    ASSERT_EQ(picture.pts(), times[index]);
    ASSERT_EQ(reader.position(), static_cast<std::int64_t>(index) + 1);
    if (i % 4 == 0 && index + 1 < frames.size()) {
      ASSERT_EQ(samplesOf(*reader.next()), frames[index + 1]);
    }
  }
  EXPECT_TRUE(reader.warnings().empty());
}

TEST_F(ClipReaderTest, FindsFramesByIndexInEveryKindOfClip) {
  std::mt19937 random = seeded();
  const std::string x264 = "-c:v libx264 -g 12 -bf 3 -pix_fmt yuv420p";
  for (const auto& [name, options] :
       {std::pair<std::string, std::string>{"bframes.mp4", x264},
        {"bframes.mkv", x264},
        {"opengop.mp4", "-c:v libx264 -x264-params keyint=12:open-gop=1:bframes=3"},
        {"broadcast.ts", x264},
        {"hevc.mp4", "-c:v libx265 -x265-params keyint=12:log-level=none"},
        {"bare.h264", x264},
        {"old.avi", "-c:v mpeg4 -bf 2 -g 10 -q:v 3"},
        {"dv.mov", "-c:v mjpeg -q:v 3"},
        {"vp8.webm", "-c:v libvpx -auto-alt-ref 1 -lag-in-frames 16 -g 16 -b:v 500k"},
        {"vp9.webm", "-c:v libvpx-vp9 -g 16 -b:v 500k -deadline realtime -cpu-used 8"},
        {"tall.mpg", "-c:v mpeg2video -bf 2 -g 9"},
        {"lossless.mkv", "-c:v ffv1"}}) {
    const std::string path = makeClip(name, options);
    expectIndexEqualsSequence(path, random);
    ClipReader reader(path);
    EXPECT_EQ(reader.frameCount(), 48) << name;
    if (name != "bare.h264") {
      EXPECT_NEAR(reader.info().frameRate.value(), 24.0, 1e-3) << name;
    }
    EXPECT_FALSE(reader.info().variableFrameRate) << name;
  }
}

TEST_F(ClipReaderTest, GivesASaneRateWhereTheContainerClaims90000) {
  const std::string path = makeClip("vfr.mp4",
                                    "-vf \"settb=1/90000,setpts='N*3750+700*mod(N,3)'\" -vsync "
                                    "passthrough -enc_time_base 1/90000 "
                                    "-video_track_timescale 90000 -c:v libx264 -bf 2");
  ClipReader reader(path);
  EXPECT_EQ(reader.frameCount(), 48);
  EXPECT_TRUE(reader.info().variableFrameRate);
  EXPECT_NEAR(reader.info().frameRate.value(), 24.0, 0.2);
  for (std::int64_t i = 0; i < 48; ++i) EXPECT_EQ(reader.ptsOf(i), i * 3750 + 700 * (i % 3));
}

TEST_F(ClipReaderTest, TellsWhatAClipIs) {
  const std::string path =
      makeClip("info.mov",
               "-c:v libx264 -pix_fmt yuv422p10le -vf setsar=4/3 "
               "-x264-params colorprim=bt709:transfer=bt709:colormatrix=bt709:range=tv");
  const ClipReader reader(path);
  const ClipInfo& info = reader.info();
  EXPECT_EQ(info.codec, "h264");
  EXPECT_EQ(info.width, 128);
  EXPECT_EQ(info.height, 96);
  EXPECT_EQ(info.pixelFormat, "yuv422p10le");
  EXPECT_EQ(info.bitsPerComponent, 10);
  EXPECT_EQ(info.workingDepth, Depth::sixteen);
  EXPECT_FALSE(info.hasAlpha);
  EXPECT_EQ(info.colourMatrix, "bt709");
  EXPECT_EQ(info.colourPrimaries, "bt709");
  EXPECT_EQ(info.colourTransfer, "bt709");
  EXPECT_EQ(info.sampleAspectRatio, (Rational{4, 3}));
  EXPECT_NEAR(info.durationSeconds, 2.0, 1e-6);
}

TEST_F(ClipReaderTest, HandsPalettesOutAsRgb) {
  const std::string path = makeClip("palette.gif", "-vf scale=40:30");
  ClipReader reader(path);
  EXPECT_TRUE(reader.info().pixelFormat == "rgba" || reader.info().pixelFormat == "bgra" ||
              reader.info().pixelFormat == "rgb24")
      << reader.info().pixelFormat;
  EXPECT_TRUE(reader.next());
}

TEST_F(ClipReaderTest, DistinguishesWhatIsWrongWithAnInput) {
  std::ofstream(folder_ / "empty.mp4").flush();
  std::ofstream(folder_ / "text.txt") << "just words\n" << std::string(5000, 'x');
  std::ofstream(folder_ / "noise.mp4") << std::string(50000, '\x5a');
  ASSERT_TRUE(runFfmpeg("-f lavfi -i sine=duration=1 " + (folder_ / "sound.wav")));
  std::filesystem::create_directory(folder_.path() / "nothing");
  EXPECT_EQ(problemOf(folder_ / "absent.mp4"), Problem::missing);
  EXPECT_EQ(problemOf(""), Problem::missing);
  EXPECT_EQ(problemOf(folder_ / "shot.%04d.png"), Problem::missing);
  EXPECT_EQ(problemOf(folder_ / "nothing"), Problem::missing);
  EXPECT_EQ(problemOf(folder_ / "empty.mp4"), Problem::empty);
  EXPECT_EQ(problemOf(folder_ / "text.txt"), Problem::notVideo);
  EXPECT_EQ(problemOf(folder_ / "noise.mp4"), Problem::notVideo);
  EXPECT_EQ(problemOf(folder_ / "sound.wav"), Problem::notVideo);
}

TEST_F(ClipReaderTest, SaysThatAClipHasNoFrames) {
  std::ofstream(folder_ / "none.y4m") << "YUV4MPEG2 W16 H16 F24:1 Ip A1:1 C420jpeg\n";
  EXPECT_EQ(problemOf(folder_ / "none.y4m"), Problem::empty);
}

TEST_F(ClipReaderTest, GivesWhatIsThereOfATruncatedClipAndSaysSo) {
  for (const auto& [name, options] :
       {std::pair<std::string, std::string>{"cut.mp4",
                                            "-c:v libx264 -g 12 -bf 2 -movflags +faststart"},
        {"cut.mkv", "-c:v libx264 -g 12 -bf 2"},
        {"cut.avi", "-c:v mjpeg -q:v 2"}}) {
    SCOPED_TRACE(name);
    const std::string path = makeClip(name, options);
    std::vector<std::vector<std::uint8_t>> whole;
    {
      ClipReader reader(path);
      whole = readAll(reader);
    }
    const auto size = std::filesystem::file_size(path);
    std::filesystem::resize_file(path, size * 6 / 10);
    ClipReader reader(path);
    const std::int64_t promised = reader.frameCount();
    EXPECT_LT(promised, 48);
    std::int64_t count = 0;
    while (const auto picture = reader.next()) {
      if (count < 10) {
        EXPECT_EQ(samplesOf(*picture), whole[static_cast<std::size_t>(count)]);
      }
      ++count;
    }
    EXPECT_GT(count, 10);
    EXPECT_EQ(count, reader.frameCount());
    ASSERT_FALSE(reader.warnings().empty());
    EXPECT_THAT(reader.warnings().front(),
                HasSubstr("truncated after frame " + std::to_string(count - 1)));
    const Picture past = reader.frameAt(promised - 1);
    EXPECT_EQ(past.index(), promised - 1);
  }
}

TEST_F(ClipReaderTest, SurvivesDamageInTheMidstWithoutShiftingFrames) {
  std::mt19937 random = seeded();
  const std::string path = makeClip("hurt.mp4", "-c:v libx264 -g 6 -bf 2 -movflags +faststart");
  const auto size = std::filesystem::file_size(path);
  {
    std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(static_cast<std::streamoff>(size / 2));
    std::string noise(6000, '\0');
    for (char& c : noise) c = static_cast<char>(random());
    file.write(noise.data(), static_cast<std::streamsize>(noise.size()));
  }
  ClipReader reader(path);
  std::int64_t expected = 0;
  while (const auto picture = reader.next()) EXPECT_EQ(picture->index(), expected++);
  EXPECT_EQ(expected, 48);
  EXPECT_FALSE(reader.warnings().empty());
  for (std::int64_t i = 47; i >= 0; i -= 5) EXPECT_EQ(reader.frameAt(i).index(), i);
}

TEST_F(ClipReaderTest, ReadsSequencesByPatternStarAndFolder) {
  std::mt19937 random = seeded();
  WriteOptions options;
  options.startNumber = 98;
  const auto written =
      writeRandomClip(folder_ / "shot.%04d.png", format(9, 7, "rgb24"), 5, random, options);
  for (const std::string& path :
       {folder_ / "shot.%04d.png", folder_ / "shot.*.png", folder_.path().string()}) {
    SCOPED_TRACE(path);
    ClipReader reader(path);
    EXPECT_TRUE(reader.info().imageSequence);
    EXPECT_EQ(reader.frameCount(), 5);
    EXPECT_EQ(reader.info().frameRate, (Rational{24, 1}));
    EXPECT_EQ(readAll(reader), written);
    EXPECT_EQ(samplesOf(reader.frameAt(2)), written[2]);
    EXPECT_EQ(samplesOf(reader.frameAt(0)), written[0]);
  }
  ReadOptions later;
  later.startNumber = 100;
  later.frameRate = Rational{30000, 1001};
  ClipReader reader(folder_ / "shot.%04d.png", later);
  EXPECT_EQ(reader.frameCount(), 3);
  EXPECT_EQ(reader.info().firstNumber, 100);
  EXPECT_EQ(reader.info().frameRate, (Rational{30000, 1001}));
  EXPECT_EQ(samplesOf(*reader.next()), written[2]);
  later.startNumber = 7;
  EXPECT_EQ(problemOf(folder_ / "shot.%04d.png", later), Problem::missing);

  std::filesystem::remove(folder_ / "shot.0101.png");
  ClipReader gap(folder_ / "shot.%04d.png");
  EXPECT_EQ(gap.frameCount(), 3);
  ASSERT_EQ(gap.warnings().size(), 1U);
  EXPECT_THAT(gap.warnings()[0], HasSubstr("shot.0101.png is missing"));
}

TEST_F(ClipReaderTest, RefusesIndicesOutsideTheClip) {
  std::mt19937 random = seeded();
  writeRandomClip(folder_ / "one.mkv", format(8, 8, "rgb24"), 1, random);
  ClipReader reader(folder_ / "one.mkv");
  EXPECT_EQ(reader.frameCount(), 1);
  EXPECT_THROW(reader.seek(-1), Error);
  EXPECT_THROW(reader.seek(2), Error);
  EXPECT_THROW(reader.frameAt(1), Error);
  reader.seek(1);
  EXPECT_FALSE(reader.next());
  reader.seek(0);
  EXPECT_TRUE(reader.next());
}

}  // namespace
}  // namespace media::test
