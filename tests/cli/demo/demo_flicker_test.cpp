// tests/cli/demo/demo_flicker_test.cpp — the demo's exposure faults are what they are said to be.
#include "cli/demo/demo_flicker.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <span>
#include <vector>

#include "footage/flicker.h"

namespace {

std::span<const double> partOf(const std::vector<double>& gains, int part) {
  return std::span(gains).subspan(static_cast<std::size_t>(part * cli::kFramesPerPart),
                                  cli::kFramesPerPart);
}

TEST(DemoFlicker, OneGainAFrameAndTheSameEveryTime) {
  const auto gains = cli::demoGains();
  EXPECT_EQ(gains.size(), static_cast<std::size_t>(cli::kDemoFrames));
  EXPECT_EQ(gains, cli::demoGains());
}

// The sum of four uniform numbers stays within 2 / sqrt(1/3) = 3.47 deviations.
TEST(DemoFlicker, RandomPartHasItsDeviation) {
  const auto gains = cli::demoGains();
  double sum = 0.0;
  double squares = 0.0;
  for (double gain : partOf(gains, 0)) {
    EXPECT_LE(std::abs(gain - 1.0), 3.4642 * cli::kRandomDeviation);
    sum += gain - 1.0;
    squares += (gain - 1.0) * (gain - 1.0);
  }
  EXPECT_NEAR(sum / 100.0, 0.0, 3.0 * cli::kRandomDeviation / 10.0);
  EXPECT_NEAR(std::sqrt(squares / 100.0), cli::kRandomDeviation, 0.25 * cli::kRandomDeviation);
}

// 120 pulses a second seen 25 times a second: 4.8 pulses a frame, the same again after 5 frames.
TEST(DemoFlicker, LampRepeatsEveryFiveFrames) {
  for (int frame = 0; frame < 50; ++frame) {
    EXPECT_NEAR(cli::lampGain(frame), cli::lampGain(frame + 5), 1e-9);
  }
}

// Against the light summed up in 20000 slices of the open shutter.
TEST(DemoFlicker, LampGainIsMeanLightOverTheShutter) {
  constexpr int kSlices = 20000;
  for (int frame : {0, 1, 2, 3, 4, 117}) {
    double light = 0.0;
    for (int slice = 0; slice < kSlices; ++slice) {
      const double t = frame / 25.0 + (slice + 0.5) / kSlices / 200.0;
      light += 1.0 + cli::kLampDepth * std::sin(2.0 * 3.14159265358979 * 120.0 * t);
    }
    EXPECT_NEAR(cli::lampGain(frame), light / kSlices, 1e-7) << frame;
  }
}

// Frames 9, 26, 43, 60, 77, 94 of a part.
TEST(DemoFlicker, FlashesAreSingleFrames) {
  const auto gains = cli::demoGains();
  const auto flashes = partOf(gains, 2);
  EXPECT_EQ(std::count_if(flashes.begin(), flashes.end(), [](double g) { return g != 1.0; }), 6);
  EXPECT_EQ(std::count(flashes.begin(), flashes.end(), cli::kDarkFlash), 2);
  for (std::size_t i = 1; i < flashes.size(); ++i) {
    EXPECT_TRUE(flashes[i] == 1.0 || flashes[i - 1] == 1.0);
  }
  EXPECT_FALSE(cli::isFlash(9));
  EXPECT_TRUE(cli::isFlash(209));
  EXPECT_TRUE(cli::isFlash(309));
}

}  // namespace
