// tests/media/clip_writer_test.cpp — what is written is what was read, or nothing is there at all.
#include "media/clip_writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cmath>
#include <csignal>
#include <fstream>
#include <map>

#include "media/av_handles.h"
#include "media/pixel_conversion.h"
#include "tests/media/media_fixture.h"

namespace media::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

struct RawPacket {
  double seconds = 0;
  std::vector<std::uint8_t> bytes;
  friend bool operator==(const RawPacket&, const RawPacket&) = default;
};

InputHandle openRaw(const std::string& path) {
  AVFormatContext* raw = nullptr;
  EXPECT_GE(avformat_open_input(&raw, path.c_str(), nullptr, nullptr), 0) << path;
  InputHandle context(raw);
  EXPECT_GE(avformat_find_stream_info(raw, nullptr), 0);
  return context;
}

// The packets of the first stream of a kind, read straight from the file.
std::vector<RawPacket> packetsOf(const std::string& path, AVMediaType type) {
  const InputHandle context = openRaw(path);
  const int stream = av_find_best_stream(context.get(), type, -1, -1, nullptr, 0);
  std::vector<RawPacket> packets;
  const PacketHandle packet = makePacket();
  while (av_read_frame(context.get(), packet.get()) >= 0) {
    if (packet->stream_index == stream) {
      packets.push_back(
          {static_cast<double>(packet->pts) * av_q2d(context->streams[stream]->time_base),
           {packet->data, packet->data + packet->size}});
    }
    av_packet_unref(packet.get());
  }
  return packets;
}

Problem problemOfWriting(const std::string& path, const ClipInfo& info,
                         const WriteOptions& options = {}) {
  try {
    ClipWriter writer(path, info, options);
    writer.write(Picture::blank(info));
    writer.finish();
  } catch (const Error& error) {
    EXPECT_EQ(std::string(error.what()).find('\n'), std::string::npos) << error.what();
    return error.problem();
  }
  ADD_FAILURE() << path << " was written";
  return Problem::empty;
}

class ClipWriterTest : public testing::Test {
 protected:
  std::string make(const std::string& name, const std::string& arguments) {
    const std::string path = folder_ / name;
    EXPECT_TRUE(runFfmpeg(arguments + " " + path));
    return path;
  }
  ScratchFolder folder_;
};

TEST_F(ClipWriterTest, KeepsEverySampleThroughALosslessCodec) {
  std::mt19937 random = seeded();
  for (const char* name : {"yuv420p", "yuv422p", "yuv444p", "yuv420p10le", "yuv422p10le",
                           "yuv444p12le", "yuv444p16le", "yuva420p", "yuva444p10le", "gray",
                           "gray16le", "gbrp10le", "gbrp12le", "gbrp16le", "bgra", "gbrap12le"}) {
    for (const auto& [width, height] : {std::pair{33, 17}, std::pair{3, 3}}) {
      SCOPED_TRACE(std::string(name) + " " + std::to_string(width));
      ClipInfo info = format(width, height, name);
      info.codec = "ffv1";
      const std::string path = folder_ / "lossless.mkv";
      WriteOptions options;
      options.overwrite = true;
      const auto written = writeRandomClip(path, info, 3, random, options);
      ClipReader reader(path);
      EXPECT_EQ(reader.info().pixelFormat, name);
      EXPECT_EQ(readAll(reader), written);
      passThrough(path, folder_ / "again.mkv", options);
      ClipReader again(folder_ / "again.mkv");
      EXPECT_EQ(again.info().codec, "ffv1");
      EXPECT_EQ(readAll(again), written);
    }
  }
}

TEST_F(ClipWriterTest, KeepsASinglePixel) {
  std::mt19937 random = seeded();
  for (const auto& [codec, pixelFormat] :
       {std::pair{"png", "rgb24"}, std::pair{"rawvideo", "yuv420p"},
        std::pair{"png", "rgba64be"}}) {
    SCOPED_TRACE(pixelFormat);
    WriteOptions options;
    options.codec = codec;
    options.overwrite = true;
    const auto written =
        writeRandomClip(folder_ / "pixel.mkv", format(1, 1, pixelFormat), 2, random, options);
    ClipReader reader(folder_ / "pixel.mkv");
    EXPECT_EQ(readAll(reader), written);
  }
}

TEST_F(ClipWriterTest, KeepsEveryPictureOfASequenceOfEachKind) {
  std::mt19937 random = seeded();
  struct Kind {
    const char* extension;
    const char* pixelFormat;
  };
  for (const auto& [extension, pixelFormat] :
       {Kind{"png", "rgb24"}, Kind{"png", "rgba"}, Kind{"png", "rgb48be"}, Kind{"png", "rgba64be"},
        Kind{"png", "gray"}, Kind{"png", "gray16be"}, Kind{"tif", "rgb24"}, Kind{"tif", "rgb48le"},
        Kind{"tiff", "rgba64le"}, Kind{"dpx", "gbrp10le"}, Kind{"dpx", "rgb24"},
        Kind{"dpx", "gbrp12le"}, Kind{"dpx", "rgb48be"}, Kind{"exr", "gbrpf32le"},
        Kind{"exr", "gbrapf32le"}}) {
    SCOPED_TRACE(std::string(extension) + " " + pixelFormat);
    const ScratchFolder in;
    const ScratchFolder out;
    const std::string pattern = std::string("p%03d.") + extension;
    WriteOptions options;
    options.startNumber = 7;
    const auto written =
        writeRandomClip(in / pattern, format(33, 17, pixelFormat), 3, random, options);
    ClipReader reader(in / pattern);
    EXPECT_EQ(readAll(reader), written);
    EXPECT_THAT(passThrough(in / pattern, out / pattern), IsEmpty());
    EXPECT_EQ(in.names(), out.names());
    ClipReader again(out / pattern);
    EXPECT_EQ(again.info().pixelFormat, reader.info().pixelFormat);
    EXPECT_EQ(readAll(again), written);
  }
}

TEST_F(ClipWriterTest, WritesJpegSequencesCloseToTheirInput) {
  const std::string clip =
      make("in.mp4", "-f lavfi -i testsrc2=size=64x48:rate=24 -frames:v 4 -c:v libx264 -crf 1");
  passThrough(clip, folder_ / "out.%05d.jpg");
  ClipReader before(clip);
  ClipReader after(folder_ / "out.%05d.jpg");
  EXPECT_EQ(after.info().firstNumber, 1);
  EXPECT_EQ(after.info().colourRange, "pc");
  ASSERT_EQ(after.frameCount(), 4);
  ArgbBuffer a(64, 48, Depth::eight);
  ArgbBuffer b(64, 48, Depth::eight);
  toArgb(*before.next(), a.view());
  toArgb(*after.next(), b.view());
  double sum = 0;
  for (int i = 0; i < 64 * 48; ++i) sum += a.at(i % 64, i / 64, 2) - b.at(i % 64, i / 64, 2);
  EXPECT_NEAR(sum / (64 * 48), 0, 1.5);
}

TEST_F(ClipWriterTest, KeepsVariableTimesSoundMetadataRotationAndChapters) {
  std::ofstream(folder_ / "chapters.txt")
      << ";FFMETADATA1\ntitle=A day\nartist=Nobody\n[CHAPTER]\nTIMEBASE=1/1000\nSTART=0\n"
         "END=900\ntitle=Morning\n[CHAPTER]\nTIMEBASE=1/1000\nSTART=900\nEND=2000\n"
         "title=Evening\n";
  const std::string plain =
      make("plain.mp4",
           "-f lavfi -i testsrc2=size=128x96:rate=24:duration=2 -f lavfi -i sine=duration=2 -i " +
               (folder_ / "chapters.txt") +
               " -map 0:v -map 1:a -map_metadata 2 -map_chapters 2 "
               "-vf \"settb=1/90000,setpts='N*3750+700*mod(N,3)'\" -vsync passthrough "
               "-enc_time_base:v 1/90000 -video_track_timescale 90000 -c:v libx264 -bf 2 -c:a aac "
               "-metadata:s:a language=fra");
  const std::string source =
      make("source.mp4", "-i " + plain + " -c copy -metadata:s:v:0 rotate=90");
  for (const std::string extension : {"mp4", "mov"}) {
    SCOPED_TRACE(extension);
    const std::string out = folder_ / ("out." + extension);
    EXPECT_THAT(passThrough(source, out), IsEmpty());
    ClipReader before(source);
    ClipReader after(out);
    ASSERT_EQ(after.frameCount(), 48);
    EXPECT_EQ(before.info().rotationDegrees, 270);
    EXPECT_EQ(after.info().rotationDegrees, 270);
    EXPECT_EQ(after.info().codec, "h264");
    EXPECT_EQ(after.info().timeBase, before.info().timeBase);
    for (std::int64_t i = 0; i <= 48; ++i) ASSERT_EQ(after.ptsOf(i), before.ptsOf(i)) << i;
    const auto sound = packetsOf(source, AVMEDIA_TYPE_AUDIO);
    EXPECT_GT(sound.size(), 50U);
    EXPECT_EQ(packetsOf(out, AVMEDIA_TYPE_AUDIO), sound);
    const InputHandle context = openRaw(out);
    const auto tag = [](const AVDictionary* metadata, const char* key) -> std::string {
      const AVDictionaryEntry* entry = av_dict_get(metadata, key, nullptr, 0);
      return entry == nullptr ? "" : entry->value;
    };
    EXPECT_EQ(tag(context->metadata, "title"), "A day");
    EXPECT_EQ(tag(context->metadata, "artist"), "Nobody");
    ASSERT_EQ(context->nb_chapters, 2U);
    EXPECT_EQ(tag(context->chapters[1]->metadata, "title"), "Evening");
    EXPECT_EQ(after.info().otherStreams.at(0).language, "fra");
  }
  const auto notes = passThrough(source, folder_ / "out.mkv");
  EXPECT_THAT(notes, Contains(HasSubstr("rotation")));
  ClipReader matroska(folder_ / "out.mkv");
  // Its clock ticks in milliseconds and knows no time before 0, where this sound begins: all
  // streams move together.
  const auto moved = packetsOf(folder_ / "out.mkv", AVMEDIA_TYPE_AUDIO);
  const auto sound = packetsOf(source, AVMEDIA_TYPE_AUDIO);
  ASSERT_EQ(moved.size(), sound.size());
  const double shift = moved.front().seconds - sound.front().seconds;
  EXPECT_LT(std::abs(shift), 0.05);
  for (std::int64_t i = 0; i < 48; ++i) {
    EXPECT_NEAR(static_cast<double>(matroska.ptsOf(i)) / 1000,
                static_cast<double>(i * 3750 + 700 * (i % 3)) / 90000 + shift, 0.0016);
  }
}

TEST_F(ClipWriterTest, KeepsSoundInStepWhereThePictureStartsLate) {
  const std::string source =
      make("late.mkv",
           "-itsoffset 0.5 -f lavfi -i testsrc2=size=64x48:rate=25 -f lavfi -i sine=duration=2 "
           "-map 0:v -map 1:a -frames:v 25 -c:v libx264 -c:a flac");
  passThrough(source, folder_ / "out.mkv");
  ClipReader after(folder_ / "out.mkv");
  EXPECT_GE(after.info().startPts, 500);
  EXPECT_EQ(after.info().startPts, ClipReader(source).info().startPts);
  EXPECT_EQ(packetsOf(folder_ / "out.mkv", AVMEDIA_TYPE_AUDIO),
            packetsOf(source, AVMEDIA_TYPE_AUDIO));
}

TEST_F(ClipWriterTest, LeavesSoundOutWhenAskedOrWhenTheContainerCannotCarryIt) {
  const std::string source =
      make("in.mkv",
           "-f lavfi -i testsrc2=size=64x48:rate=25 -f lavfi -i sine=duration=1 -frames:v 25 "
           "-c:v libx264 -c:a pcm_s24be -shortest");
  WriteOptions silent;
  silent.audio = false;
  EXPECT_THAT(passThrough(source, folder_ / "silent.mkv", silent), IsEmpty());
  EXPECT_TRUE(packetsOf(folder_ / "silent.mkv", AVMEDIA_TYPE_AUDIO).empty());
  const auto notes =
      passThrough(source, folder_ / "out.webm", {.encoderOptions = {{"cpu-used", "8"}}});
  EXPECT_THAT(notes, Contains(HasSubstr("left out")));
  EXPECT_THAT(notes, Contains(HasSubstr("vp9")));
  EXPECT_TRUE(std::filesystem::exists(folder_ / "out.webm"));
}

TEST_F(ClipWriterTest, CutsSoundToAPartOfTheClip) {
  const std::string source =
      make("in.mkv",
           "-f lavfi -i testsrc2=size=64x48:rate=25 -f lavfi -i sine=duration=4 -frames:v 100 "
           "-c:v libx264 -g 10 -c:a pcm_s16le");
  ClipReader reader(source);
  WriteOptions options;
  options.frames = FrameRange{50, 74};
  options.codec = "ffv1";
  std::vector<std::vector<std::uint8_t>> written;
  ClipWriter writer(folder_ / "part.mkv", reader, options);
  reader.seek(50);
  for (int i = 0; i < 25; ++i) {
    const Picture picture = *reader.next();
    written.push_back(samplesOf(picture));
    writer.write(picture);
  }
  writer.finish();
  ClipReader part(folder_ / "part.mkv");
  EXPECT_EQ(part.frameCount(), 25);
  EXPECT_EQ(part.info().startPts, 0);
  EXPECT_EQ(readAll(part), written);
  const auto sound = packetsOf(folder_ / "part.mkv", AVMEDIA_TYPE_AUDIO);
  ASSERT_FALSE(sound.empty());
  EXPECT_NEAR(sound.front().seconds, 0, 0.05);
  EXPECT_NEAR(sound.back().seconds, 1, 0.05);
  options.frames = FrameRange{90, 100};
  EXPECT_THROW(ClipWriter(folder_ / "no.mkv", reader, options), Error);
}

TEST_F(ClipWriterTest, KeepsColourPropertiesThroughLossyCodecs) {
  for (const auto& [pixelFormat, codec] :
       {std::pair{"yuv420p", "libx264"}, std::pair{"yuv420p10le", "libx265"},
        std::pair{"yuv422p10le", "libx264"}, std::pair{"yuv422p10le", "prores_ks"}}) {
    SCOPED_TRACE(codec);
    ClipInfo info = format(64, 48, pixelFormat);
    info.colourRange = "tv";
    info.colourMatrix = "bt2020nc";
    info.colourPrimaries = "bt2020";
    info.colourTransfer = "smpte2084";
    info.sampleAspectRatio = {4, 3};
    WriteOptions options;
    options.codec = codec;
    options.overwrite = true;
    ClipWriter writer(folder_ / "out.mov", info, options);
    EXPECT_EQ(writer.encoderName(), codec);
    EXPECT_EQ(writer.pixelFormat(), pixelFormat);
    for (int i = 0; i < 3; ++i) writer.write(Picture::blank(info, i));
    writer.finish();
    EXPECT_EQ(writer.framesWritten(), 3);
    const ClipReader reader(folder_ / "out.mov");
    EXPECT_EQ(reader.info().pixelFormat, pixelFormat);
    EXPECT_EQ(reader.info().colourRange, "tv");
    EXPECT_EQ(reader.info().colourMatrix, "bt2020nc");
    EXPECT_EQ(reader.info().colourPrimaries, "bt2020");
    EXPECT_EQ(reader.info().colourTransfer, "smpte2084");
    EXPECT_EQ(reader.info().sampleAspectRatio, (Rational{4, 3}));
    EXPECT_EQ(reader.frameCount(), 3);
  }
}

TEST_F(ClipWriterTest, ChoosesACodecThatHoldsThePixels) {
  const auto chosen = [&](const char* name, const char* pixelFormat) {
    WriteOptions options;
    options.overwrite = true;
    const ClipWriter writer(folder_ / name, format(64, 48, pixelFormat), options);
    return writer.encoderName() + " " + writer.pixelFormat();
  };
  EXPECT_EQ(chosen("a.mp4", "yuv420p"), "libx264 yuv420p");
  EXPECT_EQ(chosen("a.mkv", "yuv422p10le"), "libx264 yuv422p10le");
  EXPECT_EQ(chosen("a.mkv", "yuv444p16le"), "ffv1 yuv444p16le");
  EXPECT_EQ(chosen("a.mov", "yuva444p10le"), "prores_ks yuva444p10le");
  EXPECT_EQ(chosen("a.mkv", "yuva420p"), "ffv1 yuva420p");
  EXPECT_EQ(chosen("a.webm", "yuv420p"), "libvpx-vp9 yuv420p");
  EXPECT_EQ(chosen("a.mkv", "gbrp"), "libx265 gbrp");
  EXPECT_THAT(folder_.names(), IsEmpty());
}

TEST_F(ClipWriterTest, ReplacesNothingUnlessAskedAndLeavesNoHalfFiles) {
  std::mt19937 random = seeded();
  const ClipInfo info = format(16, 16, "yuv420p");
  const std::string path = folder_ / "out.mkv";
  std::ofstream(path) << "precious";
  EXPECT_EQ(problemOfWriting(path, info), Problem::exists);
  EXPECT_THAT(folder_.names(), ElementsAre("out.mkv"));
  EXPECT_EQ(std::filesystem::file_size(path), 8U);

  WriteOptions overwrite;
  overwrite.overwrite = true;
  {
    ClipWriter writer(path, info, overwrite);
    writer.write(Picture::blank(info));
    EXPECT_EQ(folder_.names().size(), 2U);
  }
  EXPECT_THAT(folder_.names(), ElementsAre("out.mkv"));
  EXPECT_EQ(std::filesystem::file_size(path), 8U);

  writeRandomClip(path, info, 2, random, overwrite);
  EXPECT_THAT(folder_.names(), ElementsAre("out.mkv"));
  EXPECT_GT(std::filesystem::file_size(path), 100U);

  passThrough(path, path, overwrite);  // onto itself
  EXPECT_EQ(ClipReader(path).frameCount(), 2);
  EXPECT_THROW(passThrough(path, path), Error);

  std::ofstream(folder_ / "s.0009.png") << "precious";
  EXPECT_EQ(problemOfWriting(folder_ / "s.%04d.png", format(4, 4, "rgb24")), Problem::exists);
  {
    ClipWriter writer(folder_ / "t.%04d.png", format(4, 4, "rgb24"));
    writer.write(Picture::blank(format(4, 4, "rgb24")));
  }
  EXPECT_THAT(folder_.names(), ElementsAre("out.mkv", "s.0009.png"));
}

TEST_F(ClipWriterTest, SaysWhatIsWrongWithAnOutput) {
  const ClipInfo info = format(16, 16, "yuv420p");
  EXPECT_EQ(problemOfWriting(folder_ / "no/such/out.mp4", info), Problem::unwritable);
  EXPECT_EQ(problemOfWriting(folder_.path().string(), info), Problem::unwritable);
  EXPECT_EQ(problemOfWriting("/dev/full", info), Problem::unsupported);
  EXPECT_EQ(problemOfWriting(folder_ / "out", info), Problem::unsupported);
  EXPECT_EQ(problemOfWriting(folder_ / "out.txt", info), Problem::unsupported);
  EXPECT_EQ(problemOfWriting(folder_ / "out.%03d.xyz", info), Problem::unsupported);
  EXPECT_EQ(problemOfWriting(folder_ / "out.mp4", info, {.codec = "nonsense"}), Problem::badOption);
  EXPECT_EQ(problemOfWriting(folder_ / "out.mp4", info, {.pixelFormat = "nonsense"}),
            Problem::badOption);
  EXPECT_EQ(problemOfWriting(folder_ / "out.mp4", info, {.pixelFormat = "rgb24"}),
            Problem::badOption);
  EXPECT_EQ(problemOfWriting(folder_ / "out.mp4", info, {.preset = "nonsense"}),
            Problem::badOption);
  EXPECT_EQ(problemOfWriting(folder_ / "out.mp4", info, {.encoderOptions = {{"nonsense", "1"}}}),
            Problem::badOption);
  EXPECT_THAT(folder_.names(), IsEmpty());
  if (geteuid() != 0) {
    std::filesystem::permissions(
        folder_.path(), std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    EXPECT_EQ(problemOfWriting(folder_ / "out.mp4", info), Problem::unwritable);
    std::filesystem::permissions(folder_.path(), std::filesystem::perms::owner_all);
  }
}

// A limit on file size stands for the full disk: the same write fails at the same place.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    getrlimit(RLIMIT_FSIZE, &before_);
    rlimit limit = before_;
    limit.rlim_cur = bytes;
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &before_); }

 private:
  rlimit before_{};
};

TEST_F(ClipWriterTest, ReportsAFullDiskAndLeavesNothing) {
  std::mt19937 random = seeded();
  for (const char* name : {"out.mkv", "out.mov", "out.avi", "out.%03d.png"}) {
    SCOPED_TRACE(name);
    const bool pictures = std::string(name).find('%') != std::string::npos;
    ClipInfo info = format(256, 256, pictures ? "rgb24" : "yuv420p");
    for (const int kilobytes : {0, 50}) {
      Problem problem = Problem::empty;
      {
        const FileSizeLimit limit(static_cast<rlim_t>(kilobytes) * 1024);
        WriteOptions options;
        if (!pictures) options.codec = "mjpeg";
        try {
          writeRandomClip(folder_ / name, info, 40, random, options);
        } catch (const Error& error) {
          problem = error.problem();
        }
      }
      EXPECT_EQ(problem, Problem::diskFull);
      EXPECT_THAT(folder_.names(), IsEmpty());
    }
  }
}

TEST_F(ClipWriterTest, WritesNothingToTheNullOutput) {
  ClipWriter writer("null:", format(8, 8, "rgb24"));
  writer.write(Picture::blank(format(8, 8, "rgb24")));
  writer.finish();
  EXPECT_EQ(writer.framesWritten(), 1);
  EXPECT_EQ(writer.encoderName(), "null");
}

TEST_F(ClipWriterTest, RefusesToFinishWithoutFrames) {
  ClipWriter writer(folder_ / "out.mkv", format(8, 8, "yuv420p"));
  EXPECT_THROW(writer.finish(), Error);
}

}  // namespace
}  // namespace media::test
