// tests/media/pixel_conversion_test.cpp — colours by the book, and there and back without loss.
#include "media/pixel_conversion.h"

#include <gtest/gtest.h>
#include <malloc.h>

#include <cmath>
#include <cstring>
#include <thread>

#include "media/av_handles.h"
#include "media/error.h"
#include "media/format_layout.h"
#include "media/frame_shape.h"
#include "tests/media/media_fixture.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

namespace media::test {
namespace {

struct KnownColour {
  const char* matrix;
  const char* range;
  int y, cb, cr;
  int red, green, blue;
};

// Code values of the standards' colour bars, worked out from the luma weights by hand.
constexpr KnownColour kKnownColours[] = {
    {"bt709", "tv", 16, 128, 128, 0, 0, 0},
    {"bt709", "tv", 235, 128, 128, 255, 255, 255},
    {"bt709", "tv", 63, 102, 240, 255, 0, 0},
    {"bt709", "tv", 173, 42, 26, 0, 255, 0},
    {"bt709", "tv", 32, 240, 118, 0, 0, 255},
    {"smpte170m", "tv", 81, 90, 240, 255, 0, 0},
    {"smpte170m", "tv", 145, 54, 34, 0, 255, 0},
    {"smpte170m", "tv", 41, 240, 110, 0, 0, 255},
    {"bt2020nc", "tv", 74, 97, 240, 255, 0, 0},
    {"bt2020nc", "tv", 164, 47, 25, 0, 255, 0},
    {"bt2020nc", "tv", 29, 240, 119, 0, 0, 255},
    {"smpte170m", "pc", 0, 128, 128, 0, 0, 0},
    {"smpte170m", "pc", 255, 128, 128, 255, 255, 255},
    {"smpte170m", "pc", 76, 85, 255, 255, 0, 0},
    {"smpte170m", "pc", 150, 44, 21, 0, 255, 0},
    {"smpte170m", "pc", 29, 255, 107, 0, 0, 255},
    {"bt709", "pc", 54, 99, 255, 255, 0, 0},
    {"bt709", "pc", 182, 30, 12, 0, 255, 0},
    {"bt709", "pc", 18, 255, 116, 0, 0, 255},
    {"bt2020nc", "pc", 67, 92, 255, 255, 0, 0},
};

Picture yuvPicture(const ClipInfo& info, int y, int cb, int cr) {
  const Picture blank = Picture::blank(info);
  const FrameHandle frame = referTo(*blank.frame());
  if (av_frame_make_writable(frame.get()) < 0) throw std::bad_alloc();
  const int values[3] = {y, cb, cr};
  for (int plane = 0; plane < 3; ++plane) {
    const int height = plane == 0 ? info.height : (info.height + 1) / 2;
    std::memset(frame->data[plane], values[plane],
                static_cast<std::size_t>(frame->linesize[plane] * height));
  }
  return Picture(shareFrame(*frame), 0);
}

TEST(PixelConversion, GivesThePrimariesOfEveryMatrixAndRange) {
  for (const KnownColour& known : kKnownColours) {
    SCOPED_TRACE(std::string(known.matrix) + " " + known.range + " " + std::to_string(known.y));
    ClipInfo info = format(6, 4, "yuv420p");
    info.colourMatrix = known.matrix;
    info.colourRange = known.range;
    const Picture picture = yuvPicture(info, known.y, known.cb, known.cr);
    ArgbBuffer argb(6, 4, Depth::eight);
    toArgb(picture, argb.view());
    // Half a code value off is up to 1.1 levels in a colour difference.
    EXPECT_NEAR(argb.at(5, 3, 1), known.red, 1.5);
    EXPECT_NEAR(argb.at(5, 3, 2), known.green, 1.5);
    EXPECT_NEAR(argb.at(5, 3, 3), known.blue, 1.5);
    EXPECT_EQ(argb.at(5, 3, 0), 255);

    for (int i = 0; i < 24; ++i) {
      argb.set(i % 6, i / 6, 1, known.red);
      argb.set(i % 6, i / 6, 2, known.green);
      argb.set(i % 6, i / 6, 3, known.blue);
    }
    const Picture back = fromArgb(argb.view(), picture);
    EXPECT_NEAR(back.frame()->data[0][0], known.y, 0.51);
    EXPECT_NEAR(back.frame()->data[1][0], known.cb, 0.51);
    EXPECT_EQ(std::min<int>(back.frame()->data[2][0], 255), known.cr);
  }
}

TEST(PixelConversion, GuessesTheMatrixBySizeWhereTheFileIsSilent) {
  ArgbBuffer small(64, 48, Depth::eight);
  toArgb(yuvPicture(format(64, 48, "yuv420p"), 81, 90, 240), small.view());
  EXPECT_NEAR(small.at(0, 0, 1), 255, 1.5);
  EXPECT_NEAR(small.at(0, 0, 2), 0, 1.5);
  ArgbBuffer large(1280, 8, Depth::eight);
  toArgb(yuvPicture(format(1280, 8, "yuv420p"), 63, 102, 240), large.view());
  EXPECT_NEAR(large.at(0, 0, 1), 255, 1.5);
  EXPECT_NEAR(large.at(0, 0, 2), 0, 1.5);
}

TEST(PixelConversion, WhiteIsWhiteInEveryFormatAndDepth) {
  for (const char* name :
       {"gray", "gray10le", "gray16be", "grayf32le", "rgb24", "rgb48be", "gbrp10le", "gbrp12be",
        "gbrapf32le", "ya8", "ya16be", "rgb565le", "x2rgb10le"}) {
    SCOPED_TRACE(name);
    ClipInfo info = format(3, 3, name);
    ArgbBuffer white(3, 3, Depth::floating);
    for (int i = 0; i < 36; ++i) white.set(i / 4 % 3, i / 12, i % 4, 1.0);
    const Picture picture = fromArgb(white.view(), Picture::blank(info));
    for (const Depth depth : {Depth::eight, Depth::sixteen, Depth::floating}) {
      ArgbBuffer argb(3, 3, depth);
      toArgb(picture, argb.view());
      const double level = depth == Depth::eight ? 255 : depth == Depth::sixteen ? 32768 : 1.0;
      for (int c = 0; c < 4; ++c) EXPECT_NEAR(argb.at(2, 2, c), level, 1e-6);
      toArgb(Picture::blank(info), argb.view());
      for (int c = 1; c < 4; ++c) EXPECT_EQ(argb.at(2, 2, c), 0);
      EXPECT_NEAR(argb.at(2, 2, 0), level, 1e-6);
    }
  }
}

TEST(PixelConversion, ScalesEveryTenBitAndSixteenBitValueToTheNearestLevel) {
  for (const auto& [name, maximum] : {std::pair{"gray10le", 1023}, std::pair{"gray16le", 65535}}) {
    const int width = maximum + 1;
    const Picture blank = Picture::blank(format(width, 1, name));
    const FrameHandle frame = referTo(*blank.frame());
    ASSERT_GE(av_frame_make_writable(frame.get()), 0);
    for (int x = 0; x < width; ++x) {
      const auto value = static_cast<std::uint16_t>(x);
      std::memcpy(frame->data[0] + 2 * x, &value, 2);
    }
    ArgbBuffer argb(width, 1, Depth::sixteen);
    toArgb(Picture(shareFrame(*frame), 0), argb.view());
    for (int x = 0; x < width; ++x) {
      ASSERT_NEAR(argb.at(x, 0, 2), 32768.0 * x / maximum, 0.51) << x;
    }
  }
}

// Formats whose random contents come back unchanged, sample for sample.
class ExactRoundTrip : public testing::TestWithParam<const char*> {};

TEST_P(ExactRoundTrip, KeepsEverySampleAtOddSizes) {
  std::mt19937 random = seeded();
  for (const auto& [width, height] : {std::pair{33, 17}, std::pair{1, 1}, std::pair{3, 3}}) {
    const ClipInfo info = format(width, height, GetParam());
    const Picture picture = randomPicture(info, 0, random);
    ArgbBuffer argb(width, height, picture.workingDepth());
    toArgb(picture, argb.view());
    EXPECT_TRUE(isUnchanged(argb.view(), picture));
    EXPECT_EQ(samplesOf(fromArgb(argb.view(), picture)), samplesOf(picture));
  }
}

INSTANTIATE_TEST_SUITE_P(Formats, ExactRoundTrip,
                         testing::Values("rgb24", "bgr24", "rgba", "argb", "abgr", "bgra", "gbrp",
                                         "gbrap", "gray", "ya8", "rgb565le", "rgb565be", "gray10le",
                                         "gray12be", "gbrp10le", "gbrp10be", "gbrp12le",
                                         "gbrap12le", "gbrp14le", "x2rgb10le", "gbrpf32le",
                                         "gbrapf32le", "gbrpf32be"));

class NearRoundTrip : public testing::TestWithParam<const char*> {};

TEST_P(NearRoundTrip, KeepsSixteenBitRgbWithinOne) {
  std::mt19937 random = seeded();
  const ClipInfo info = format(257, 31, GetParam());
  const Picture picture = randomPicture(info, 0, random);
  ArgbBuffer argb(257, 31, Depth::sixteen);
  toArgb(picture, argb.view());
  const auto before = samplesOf(picture);
  const auto after = samplesOf(fromArgb(argb.view(), picture));
  const bool bigEndian = std::string(GetParam()).ends_with("be");
  ASSERT_EQ(before.size(), after.size());
  for (std::size_t i = 0; i < before.size(); i += 2) {
    const auto word = [i, bigEndian](const std::vector<std::uint8_t>& s) {
      return bigEndian ? s[i] * 256 + s[i + 1] : s[i + 1] * 256 + s[i];
    };
    ASSERT_LE(std::abs(word(before) - word(after)), 1) << i / 2;
  }
}

INSTANTIATE_TEST_SUITE_P(Formats, NearRoundTrip,
                         testing::Values("rgb48le", "rgb48be", "rgba64le", "rgba64be", "gbrp16le",
                                         "gray16le", "gray16be", "ya16be", "bgra64le"));

// Random colours inside the RGB cube, constant over 4x4 pixels with luma varying a little, as code
// values in the format: built from RGB, so that the first conversion down is the reference.
class YuvRoundTrip : public testing::TestWithParam<const char*> {};

TEST_P(YuvRoundTrip, StaysWithinOneLevel) {
  std::mt19937 random = seeded();
  std::uniform_real_distribution<double> colour(0.1, 0.9);
  std::uniform_real_distribution<double> grain(-0.09, 0.09);
  for (const auto& [width, height] : {std::pair{64, 48}, std::pair{33, 17}, std::pair{1, 1}}) {
    for (const char* range : {"tv", "pc"}) {
      for (const char* matrix : {"bt709", "smpte170m", "bt2020nc", "ycgco"}) {
        ClipInfo info = format(width, height, GetParam());
        info.colourRange = range;
        info.colourMatrix = matrix;
        ArgbBuffer source(width, height, Depth::floating);
        for (int by = 0; by < height; by += 4) {
          for (int bx = 0; bx < width; bx += 4) {
            const double rgb[3] = {colour(random), colour(random), colour(random)};
            for (int y = by; y < std::min(by + 4, height); ++y) {
              for (int x = bx; x < std::min(bx + 4, width); ++x) {
                const double add = grain(random);
                source.set(x, y, 0, colour(random));
                for (int c = 0; c < 3; ++c) source.set(x, y, c + 1, rgb[c] + add);
              }
            }
          }
        }
        const Picture picture = fromArgb(source.view(), Picture::blank(info));
        ArgbBuffer argb(width, height, picture.workingDepth());
        toArgb(picture, argb.view());
        const auto before = samplesOf(picture);
        const auto after = samplesOf(fromArgb(argb.view(), picture));
        const bool wide = picture.workingDepth() == Depth::sixteen;
        const int unit = std::string(GetParam()).starts_with("p010") ? 64 : 1;
        int worst = 0;
        for (std::size_t i = 0; i + (wide ? 1 : 0) < before.size(); i += wide ? 2 : 1) {
          const int a = wide ? before[i + 1] * 256 + before[i] : before[i];
          const int b = wide ? after[i + 1] * 256 + after[i] : after[i];
          worst = std::max(worst, std::abs(a - b) / unit);
        }
        EXPECT_LE(worst, 1) << range << ' ' << matrix << ' ' << width;
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Formats, YuvRoundTrip,
                         testing::Values("yuv420p", "yuv422p", "yuv444p", "yuv440p", "yuv411p",
                                         "yuv410p", "nv12", "nv21", "nv16", "nv24", "yuyv422",
                                         "uyvy422", "yuva420p", "yuva444p", "yuv420p10le",
                                         "yuv422p10le", "yuv444p10le", "yuv420p12le", "yuv444p12le",
                                         "p010le", "yuv420p16le", "yuv444p16le", "yuva444p10le",
                                         "yuva444p16le", "yuv420p9le"));

TEST(PixelConversion, BringsBackEveryInGamutEightBitYuvColourWithinOneLevel) {
  constexpr int kSide = 4096;
  ClipInfo info = format(kSide, kSide, "yuv444p");
  info.colourMatrix = "bt709";
  info.colourRange = "tv";
  const Picture blank = Picture::blank(info);
  const FrameHandle frame = referTo(*blank.frame());
  ASSERT_GE(av_frame_make_writable(frame.get()), 0);
  for (int y = 0; y < kSide; ++y) {
    for (int x = 0; x < kSide; ++x) {
      const int colour = y * kSide + x;
      for (int c = 0; c < 3; ++c) {
        frame->data[c][y * frame->linesize[c] + x] =
            static_cast<std::uint8_t>(colour >> (16 - 8 * c));
      }
    }
  }
  const Picture picture(shareFrame(*frame), 0);
  ArgbBuffer argb(kSide, kSide, Depth::eight);
  toArgb(picture, argb.view());
  const Picture back = fromArgb(argb.view(), picture);
  std::int64_t inGamut = 0;
  int worst = 0;
  for (int y = 0; y < kSide; ++y) {
    for (int x = 0; x < kSide; ++x) {
      int code[3];
      for (int c = 0; c < 3; ++c) code[c] = frame->data[c][y * frame->linesize[c] + x];
      const double luma = (code[0] - 16) / 219.0;
      const double pb = (code[1] - 128) / 224.0;
      const double pr = (code[2] - 128) / 224.0;
      const double red = luma + 1.5748 * pr;
      const double blue = luma + 1.8556 * pb;
      const double green = (luma - 0.2126 * red - 0.0722 * blue) / 0.7152;
      if (std::min({red, green, blue}) < 0 || std::max({red, green, blue}) > 1) continue;
      ++inGamut;
      for (int c = 0; c < 3; ++c) {
        worst = std::max(
            worst, std::abs(code[c] - back.frame()->data[c][y * back.frame()->linesize[c] + x]));
      }
    }
  }
  EXPECT_GT(inGamut, 2'000'000);
  EXPECT_LE(worst, 1);
}

TEST(PixelConversion, WorksOnUpsideDownAndPaddedBuffersAndLeavesPaddingAlone) {
  std::mt19937 random = seeded();
  const Picture picture = randomPicture(format(7, 5, "rgba"), 0, random);
  ArgbBuffer straight(7, 5, Depth::eight);
  ArgbBuffer flipped(7, 5, Depth::eight);
  toArgb(picture, straight.view());
  ArgbView view = flipped.view();
  view.data = view.row(4);
  view.rowBytes = -view.rowBytes;
  toArgb(picture, view);
  EXPECT_TRUE(samePixels(straight.view(), view));
  for (int y = 0; y < 5; ++y) {
    for (int i = 28; i < 44; ++i) {
      EXPECT_EQ(straight.bytes[static_cast<std::size_t>(y * straight.rowBytes + i)], 0xA5);
    }
  }
  EXPECT_EQ(samplesOf(fromArgb(view, picture)), samplesOf(picture));
  straight.set(3, 2, 1, static_cast<int>(straight.at(3, 2, 1)) ^ 1);
  EXPECT_FALSE(samePixels(straight.view(), view));
  EXPECT_FALSE(isUnchanged(straight.view(), picture));
  EXPECT_TRUE(isUnchanged(view, picture));
}

TEST(PixelConversion, GivesTheSameOnManyThreads) {
  std::mt19937 random = seeded();
  const ParallelFor threads = [](int jobs, const std::function<void(int)>& job) {
    std::vector<std::jthread> running;
    for (int i = 0; i < jobs; ++i) running.emplace_back([&job, i] { job(i); });
  };
  for (const char* name : {"yuv420p", "yuv422p10le", "gbrpf32le"}) {
    const Picture picture = randomPicture(format(65, 333, name), 0, random);
    ArgbBuffer alone(65, 333, picture.workingDepth());
    ArgbBuffer together(65, 333, picture.workingDepth());
    toArgb(picture, alone.view());
    toArgb(picture, together.view(), threads);
    EXPECT_EQ(alone.bytes, together.bytes);
    EXPECT_EQ(samplesOf(fromArgb(alone.view(), picture)),
              samplesOf(fromArgb(alone.view(), picture, threads)));
  }
}

TEST(PixelConversion, KeepsTheFieldsOfInterlacedChromaApart) {
  ClipInfo info = format(4, 8, "yuv420p");
  info.colourMatrix = "bt709";
  const Picture blank = Picture::blank(info);
  const FrameHandle frame = referTo(*blank.frame());
  ASSERT_GE(av_frame_make_writable(frame.get()), 0);
  frame->interlaced_frame = 1;
  for (int y = 0; y < 8; ++y) std::memset(frame->data[0] + y * frame->linesize[0], 120, 4);
  for (int y = 0; y < 4; ++y) {
    std::memset(frame->data[2] + y * frame->linesize[2], y % 2 == 0 ? 160 : 96, 2);
  }
  const Picture picture(shareFrame(*frame), 0);
  ArgbBuffer argb(4, 8, Depth::eight);
  toArgb(picture, argb.view());
  for (int y = 0; y < 8; ++y) {
    // Even rows belong to the first field, whose chroma is red.
    if (y % 2 == 0) {
      EXPECT_GT(argb.at(0, y, 1), 150) << y;
    } else {
      EXPECT_LT(argb.at(0, y, 1), 90) << y;
    }
  }
  EXPECT_EQ(samplesOf(fromArgb(argb.view(), picture)), samplesOf(picture));
}

TEST(PixelConversion, CarriesTimesIndexAndColourOver) {
  ClipInfo info = format(4, 4, "yuv420p10le");
  info.colourTransfer = "smpte2084";
  info.colourPrimaries = "bt2020";
  info.startPts = 5;
  const Picture like = Picture::blank(info, 7);
  ArgbBuffer argb(4, 4, Depth::sixteen);
  toArgb(like, argb.view());
  const Picture made = fromArgb(argb.view(), like);
  EXPECT_EQ(made.pts(), 12);
  EXPECT_EQ(made.duration(), 1);
  EXPECT_EQ(made.index(), 7);
  EXPECT_EQ(made.frame()->color_trc, AVCOL_TRC_SMPTE2084);
  EXPECT_EQ(made.frame()->color_primaries, AVCOL_PRI_BT2020);
}

#ifdef M_PERTURB
// The allocator is told to fill memory, so that what is not written shows.
TEST(PixelConversion, LeavesNothingOfOldMemoryInAnyFormat) {
  std::mt19937 random = seeded();
  int formats = 0;
  for (const AVPixFmtDescriptor* d = nullptr; (d = av_pix_fmt_desc_next(d)) != nullptr;) {
    if (!hasPixelLayout(av_pix_fmt_desc_get_id(d))) continue;
    const Picture like = randomPicture(format(37, 13, d->name), 0, random);
    ArgbBuffer argb(37, 13, like.workingDepth());
    toArgb(like, argb.view());
    std::vector<std::uint8_t> made[2];
    for (const int filling : {0x5A, 0xA5}) {
      mallopt(M_PERTURB, filling);
      made[filling == 0xA5 ? 1 : 0] = samplesOf(fromArgb(argb.view(), like));
      mallopt(M_PERTURB, 0);
    }
    EXPECT_EQ(made[0], made[1]) << d->name;
    ++formats;
  }
  EXPECT_GT(formats, 50);
}
#endif

TEST(PixelConversion, ShowsEveryRowOnce) {
  std::mt19937 random = seeded();
  for (const char* name : {"yuv420p", "nv12", "rgb24"}) {
    const Picture like = randomPicture(format(20, 15, name), 0, random);
    ArgbBuffer argb(20, 15, Depth::eight);
    std::vector<int> there(15);
    std::vector<int> back(15);
    toArgb(like, argb.view(), {}, [&](int y) { ++there[static_cast<std::size_t>(y)]; });
    fromArgb(argb.view(), like, {}, [&](int y) { ++back[static_cast<std::size_t>(y)]; });
    EXPECT_EQ(there, std::vector<int>(15, 1)) << name;
    EXPECT_EQ(back, std::vector<int>(15, 1)) << name;
  }
}

TEST(PixelConversion, RefusesOtherSizesAndUnknownFormats) {
  ArgbBuffer argb(4, 4, Depth::eight);
  EXPECT_THROW(toArgb(Picture::blank(format(5, 4, "rgb24")), argb.view()), Error);
  EXPECT_THROW(fromArgb(argb.view(), Picture::blank(format(4, 5, "rgb24"))), Error);
  EXPECT_THROW(Picture::blank(format(4, 4, "pal8")), Error);
  EXPECT_THROW(Picture::blank(format(4, 4, "nonsense")), Error);
  EXPECT_THROW(Picture::blank(format(0, 4, "rgb24")), Error);
}

}  // namespace
}  // namespace media::test
