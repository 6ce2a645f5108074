// tests/cli/correction_test.cpp — what comes out of the program, against the formulas by hand.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>

#include "tests/cli/program.h"
#include "tests/cli/scratch_folder.h"
#include "tests/cli/striped_clip.h"

namespace cli::test {
namespace {

const std::vector<double> kGains{1.00, 0.80, 1.10, 0.95, 1.20, 0.70, 1.05, 0.90, 1.00, 1.15};

double mean(const Stripes& s) {
  return (s[0] + s[1] + s[2] + s[3]) / 4.0;
}

double spread(const Stripes& s) {
  const double m = mean(s);
  double sum = 0.0;
  for (const double v : s) {
    if (v > 0.0 && v < 255.0) sum += std::abs(v - m);
  }
  return sum / 4.0;
}

using Measure = std::function<double(const Stripes&)>;

std::vector<double> measured(const Frames& frames, const Measure& measure) {
  std::vector<double> levels;
  for (const Stripes& frame : frames) levels.push_back(measure(frame));
  return levels;
}

// Flat mean of 2N + 1 frames; those with level 0 take no part.
std::vector<double> smoothed(const std::vector<double>& levels, int n) {
  const int count = static_cast<int>(levels.size());
  std::vector<double> result;
  for (int i = 0; i < count; ++i) {
    double sum = 0.0;
    int used = 0;
    for (int j = std::max(0, i - n); j <= std::min(count - 1, i + n); ++j) {
      if (levels[static_cast<std::size_t>(j)] > 0.0) {
        sum += levels[static_cast<std::size_t>(j)];
        ++used;
      }
    }
    result.push_back(used > 0 ? sum / used : levels[static_cast<std::size_t>(i)]);
  }
  return result;
}

double entry(double value) {
  return std::clamp(std::floor(value + 0.5), 0.0, 255.0);
}

Frames deflickered(const Frames& frames, const std::vector<std::string>& options,
                   std::string* err = nullptr) {
  const ScratchFolder folder;
  writeLossless(folder / clip("in"), frames);
  std::vector<std::string> arguments{"deflicker", folder / clip("in"), folder / clip("out")};
  arguments.insert(arguments.end(), options.begin(), options.end());
  const Outcome outcome = varilum(arguments);
  EXPECT_EQ(outcome.code, 0) << outcome.err;
  if (err != nullptr) *err = outcome.err;
  return readStripes(folder / clip("out"), kEight);
}

using Formula = std::function<double(double level, std::size_t frame)>;

void expectFrames(const Frames& out, const Frames& in, const Formula& formula) {
  ASSERT_EQ(out.size(), in.size());
  for (std::size_t f = 0; f < in.size(); ++f) {
    for (std::size_t s = 0; s < in[f].size(); ++s) {
      EXPECT_EQ(out[f][s], formula(in[f][s], f)) << "frame " << f << " level " << in[f][s];
    }
  }
}

TEST(Correction, LinearWithSmoothing) {
  const Frames in = flickering(kGains);
  const auto input = measured(in, mean);
  for (const int n : {1, 3, 30}) {
    const auto desired = smoothed(input, n);
    expectFrames(
        deflickered(in, {"--smoothing-frames", std::to_string(n)}), in,
        [&](double level, std::size_t f) { return entry(level * (desired[f] / input[f])); });
  }
}

TEST(Correction, FlatGreyFramesComeOutAtTheirTargets) {
  Frames in;
  for (const double v : {100.0, 120.0, 80.0, 100.0, 110.0}) in.push_back({v, v, v, v});
  // Means over one neighbour on either side: 110, 100, 100, 96.67, 105.
  const std::vector<double> expected{110.0, 100.0, 100.0, 97.0, 105.0};
  expectFrames(deflickered(in, {"--smoothing-frames", "1"}), in,
               [&](double, std::size_t f) { return expected[f]; });
}

TEST(Correction, ShiftWithSmoothing) {
  const Frames in = flickering(kGains);
  const auto input = measured(in, mean);
  const auto inputSpread = measured(in, spread);
  const auto desired = smoothed(input, 2);
  const auto desiredSpread = smoothed(inputSpread, 2);
  expectFrames(deflickered(in, {"--smoothing-frames", "2", "--correction-method", "shift"}), in,
               [&](double level, std::size_t f) {
                 const double k = static_cast<double>(static_cast<float>(desiredSpread[f])) /
                                  static_cast<double>(static_cast<float>(inputSpread[f]));
                 return entry((level - input[f]) * k + desired[f]);
               });
}

TEST(Correction, GammaWithSmoothing) {
  const Frames in = flickering(kGains);
  const auto input = measured(in, mean);
  const auto desired = smoothed(input, 2);
  expectFrames(deflickered(in, {"--smoothing-frames", "2", "--correction-method", "gamma"}), in,
               [&](double level, std::size_t f) {
                 const double a = std::log(static_cast<float>(input[f] / 255.0));
                 const double b = std::log(static_cast<float>(desired[f] / 255.0));
                 const double g = static_cast<float>(a / b);
                 return entry(std::pow(level / 255.0, 1.0 / g) * 255.0);
               });
}

TEST(Correction, ClippingKneeActsOnEightBitLinearAndShift) {
  const Frames in = flickering(kGains);
  const auto input = measured(in, mean);
  const auto desired = smoothed(input, 2);
  const double knee = std::trunc(60.0 * 255.0 / 100.0);
  std::string err;
  const Frames out = deflickered(in, {"--smoothing-frames", "2", "--adjust-clipping", "60"}, &err);
  EXPECT_EQ(err, "");
  bool bent = false;
  expectFrames(out, in, [&](double level, std::size_t f) {
    const double gain = desired[f] / input[f];
    if (level <= knee) return entry(level * gain);
    const double k = knee * gain;
    const double value = entry((level - knee) * (255.5 - k) / (255.0 - knee) + k);
    bent = bent || value != entry(level * gain);
    return value;
  });
  EXPECT_TRUE(bent) << "the clip must reach the knee";
}

TEST(Correction, ClippingWithGammaSaysThatItDoesNotAct) {
  const Frames in = flickering(kGains);
  std::string err;
  const std::vector<std::string> gamma{"--smoothing-frames", "2", "--correction-method", "gamma"};
  std::vector<std::string> both = gamma;
  both.insert(both.end(), {"--adjust-clipping", "60"});
  EXPECT_EQ(deflickered(in, both, &err), deflickered(in, gamma));
  EXPECT_NE(err.find("does not act with --correction-method gamma"), std::string::npos) << err;
}

TEST(Correction, KeyframesRunEvenlyBetweenThem) {
  const Frames in = flickering(kGains);
  const auto input = measured(in, mean);
  const auto desired = [](std::size_t f) {
    return f <= 1 ? 70.0 : f >= 5 ? 110.0 : 70.0 + 10.0 * static_cast<double>(f - 1);
  };
  expectFrames(deflickered(in, {"--luminance", "1=70", "--luminance", "5=110"}), in,
               [&](double level, std::size_t f) { return entry(level * (desired(f) / input[f])); });
}

TEST(Correction, OneLuminanceForTheWholeClip) {
  const Frames in = flickering(kGains);
  const auto input = measured(in, mean);
  expectFrames(deflickered(in, {"--luminance", "101.5"}), in,
               [&](double level, std::size_t f) { return entry(level * (101.5 / input[f])); });
}

TEST(Correction, KeyframesWithTheClippingKnee) {
  const Frames in = flickering(kGains);
  const auto input = measured(in, mean);
  const double knee = std::trunc(50.0 * 255.0 / 100.0);
  expectFrames(
      deflickered(in, {"--luminance", "1=70", "--luminance", "5=110", "--adjust-clipping", "50"}),
      in, [&](double level, std::size_t f) {
        const double desired = f <= 1   ? 70.0
                               : f >= 5 ? 110.0
                                        : 70.0 + 10.0 * static_cast<double>(f - 1);
        const double gain = desired / input[f];
        if (level <= knee) return entry(level * gain);
        const double k = knee * gain;
        return entry((level - knee) * (255.5 - k) / (255.0 - knee) + k);
      });
}

TEST(Correction, ShiftSpreadWithKeyframes) {
  const Frames in = flickering(kGains);
  const auto input = measured(in, mean);
  const auto inputSpread = measured(in, spread);
  expectFrames(deflickered(in, {"--luminance", "100", "--correction-method", "shift",
                                "--shift-spread", "40"}),
               in, [&](double level, std::size_t f) {
                 const double k = 40.0 / static_cast<double>(static_cast<float>(inputSpread[f]));
                 return entry((level - input[f]) * k + 100.0);
               });
}

TEST(Correction, SubRectangleIsAllThatCounts) {
  // The right half is a light of its own that must not be followed.
  Frames in = flickering(kGains);
  for (std::size_t f = 0; f < in.size(); ++f) {
    in[f][2] = 130.0;
    in[f][3] = f % 2 == 0 ? 200.0 : 10.0;
  }
  const auto input = measured(in, [](const Stripes& s) { return (s[0] + s[1]) / 2.0; });
  const auto desired = smoothed(input, 2);
  for (const char* corners : {"0,0,32,64", "32,64,0,0"}) {
    expectFrames(
        deflickered(in, {"--smoothing-frames", "2", "--subrect", corners}), in,
        [&](double level, std::size_t f) { return entry(level * (desired[f] / input[f])); });
  }
}

TEST(Correction, FavorBrighterWeighsByBrightness) {
  const Frames in = flickering(kGains);
  const auto input = measured(in, [](const Stripes& s) {
    return (s[0] * s[0] + s[1] * s[1] + s[2] * s[2] + s[3] * s[3]) / (s[0] + s[1] + s[2] + s[3]);
  });
  const auto desired = smoothed(input, 2);
  expectFrames(deflickered(in, {"--smoothing-frames", "2", "--favor-brighter"}), in,
               [&](double level, std::size_t f) { return entry(level * (desired[f] / input[f])); });
}

TEST(Correction, FramesNotToBeDeflickeredStayAndTakeNoPart) {
  const Frames in = flickering(kGains);
  auto input = measured(in, mean);
  const std::vector<std::size_t> left{0, 3, 4, 9};
  for (const std::size_t f : left) input[f] = 0.0;
  const auto desired = smoothed(input, 2);
  expectFrames(deflickered(in, {"--smoothing-frames", "2", "--dont-deflicker", "0",
                                "--dont-deflicker", "3..4", "--dont-deflicker", "9.."}),
               in, [&](double level, std::size_t f) {
                 return input[f] > 0.0 ? entry(level * (desired[f] / input[f])) : level;
               });
}

TEST(Correction, SpeedMeasuresEveryNthPixel) {
  // 64 pixels across: the step falls back to 1 whatever is asked, so nothing may change.
  const Frames in = flickering(kGains);
  EXPECT_EQ(deflickered(in, {"--speed", "20"}), deflickered(in, {"--speed", "1"}));
}

// Levels that are whole at 8 bits too, so that the measured ones are known exactly.
Frames scaled(const Frames& frames, double factor) {
  Frames result = frames;
  for (Stripes& stripes : result) {
    for (double& value : stripes) value *= factor;
  }
  return result;
}

TEST(Correction, SixteenBitPicturesKeepTheirDepth) {
  if (kPlainProgram) GTEST_SKIP() << "takes FFmpeg";
  const Frames levels = flickering(kGains);
  const auto input = measured(levels, mean);
  const auto desired = smoothed(input, 2);
  const Frames in = scaled(levels, 257.0);
  for (const char* method : {"linear", "shift"}) {
    const ScratchFolder folder;
    writeStripes(folder / "in.%03d.png", in, kSixteen, {"-pix_fmt", "rgb48be"});
    const Outcome outcome = varilum({"deflicker", folder / "in.%03d.png", folder / "out.%03d.png",
                                     "--smoothing-frames", "2", "--correction-method", method});
    ASSERT_EQ(outcome.code, 0) << outcome.err;
    const Frames out = readStripes(folder / "out.%03d.png", kSixteen);
    ASSERT_EQ(out.size(), in.size());
    const auto inputSpread = measured(levels, spread);
    const auto desiredSpread = smoothed(inputSpread, 2);
    for (std::size_t f = 0; f < in.size(); ++f) {
      for (std::size_t s = 0; s < in[f].size(); ++s) {
        const double k = desiredSpread[f] / inputSpread[f];
        const double level = std::string(method) == "linear"
                                 ? levels[f][s] * desired[f] / input[f]
                                 : (levels[f][s] - input[f]) * k + desired[f];
        // Half the steps of the format fall between those of the render: 4 of 65535 is near.
        EXPECT_NEAR(out[f][s], std::clamp(level * 257.0, 0.0, 65535.0), 4.0)
            << method << " frame " << f << " stripe " << s;
      }
    }
  }
}

TEST(Correction, TenBitClipsKeepTheirDepth) {
  if (kPlainProgram) GTEST_SKIP() << "takes FFmpeg";
  const Frames levels = flickering(kGains);
  const ScratchFolder folder;
  // Through 16 bits into 10: value x 1023 / 65535, rounded by ffmpeg; read back what it made.
  writeStripes(folder / clip("in"), scaled(levels, 257.0), kSixteen,
               {"-c:v", "ffv1", "-pix_fmt", "gbrp10le"});
  const Frames in = readStripes(folder / clip("in"), kSixteen);
  const auto input = measured(in, [](const Stripes& s) {
    double sum = 0.0;
    for (const double v : s) sum += std::floor(v * 255.0 / 65535.0 + 0.5);
    return sum / 4.0;
  });
  const auto desired = smoothed(input, 2);
  std::string err;
  const Outcome outcome = varilum({"deflicker", folder / clip("in"), folder / clip("out"),
                                   "--smoothing-frames", "2", "--adjust-clipping", "60"});
  ASSERT_EQ(outcome.code, 0) << outcome.err;
  EXPECT_NE(outcome.err.find("--adjust-clipping does not act at 16 bits"), std::string::npos)
      << outcome.err;
  const Frames out = readStripes(folder / clip("out"), kSixteen);
  ASSERT_EQ(out.size(), in.size());
  const double step = 65535.0 / 1023.0;
  for (std::size_t f = 0; f < in.size(); ++f) {
    for (std::size_t s = 0; s < in[f].size(); ++s) {
      EXPECT_NEAR(out[f][s], in[f][s] * desired[f] / input[f], 1.01 * step)
          << "frame " << f << " stripe " << s;
    }
  }
}

TEST(Correction, FloatPicturesKeepTheirDepthAndWhatIsAboveWhite) {
  if (kPlainProgram) GTEST_SKIP() << "takes FFmpeg";
  // One stripe is twice as bright as white; it is measured as white.
  Frames levels = flickering(kGains);
  for (Stripes& stripes : levels) stripes[3] = 255.0;
  const auto input = measured(levels, mean);
  const auto desired = smoothed(input, 2);
  const ScratchFolder folder;
  Frames light = scaled(levels, 1.0 / 255.0);
  for (Stripes& stripes : light) stripes[3] = 2.0;
  writeStripes(folder / "in.%03d.exr", light, kFloating,
               {"-c:v", "exr", "-format", "float", "-pix_fmt", "gbrpf32le"});
  const Frames in = readStripes(folder / "in.%03d.exr", kFloating);
  const Outcome outcome = varilum(
      {"deflicker", folder / "in.%03d.exr", folder / "out.%03d.exr", "--smoothing-frames", "2"});
  ASSERT_EQ(outcome.code, 0) << outcome.err;
  const Frames out = readStripes(folder / "out.%03d.exr", kFloating);
  ASSERT_EQ(out.size(), in.size());
  for (std::size_t f = 0; f < in.size(); ++f) {
    EXPECT_EQ(in[f][3], 2.0);
    for (std::size_t s = 0; s < in[f].size(); ++s) {
      const double expected = in[f][s] * desired[f] / input[f];
      // Half floats hold 11 bits.
      EXPECT_NEAR(out[f][s], expected, expected / 2048.0) << "frame " << f << " stripe " << s;
    }
  }
}

}  // namespace
}  // namespace cli::test
