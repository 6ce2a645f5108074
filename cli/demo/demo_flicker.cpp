// cli/demo/demo_flicker.cpp — the exposure faults that the demo puts into its clip.
#include "cli/demo/demo_flicker.h"

#include <cmath>
#include <cstdint>
#include <numbers>

#include "cli/demo/demo_noise.h"

namespace cli {
namespace {

constexpr std::uint64_t kFlickerSeed = 0xF11C;
constexpr int kFlashEvery = 17;
constexpr int kFirstFlash = 9;

}  // namespace

double lampGain(int frame) {
  constexpr double kPi = std::numbers::pi;
  constexpr double kCycles = kLampHertz * kShutterSeconds;
  const double seen = std::sin(kPi * kCycles) / (kPi * kCycles);
  const double middle = static_cast<double>(frame) / kDemoFrameRate + kShutterSeconds / 2.0;
  return 1.0 + kLampDepth * seen * std::sin(2.0 * kPi * kLampHertz * middle);
}

bool isFlash(int frame) {
  const auto part = static_cast<std::size_t>(frame / kFramesPerPart);
  return kFlickerParts[part].flashes && frame % kFramesPerPart % kFlashEvery == kFirstFlash;
}

std::vector<double> demoGains() {
  std::vector<double> gains;
  for (int frame = 0; frame < kDemoFrames; ++frame) {
    const FlickerPart& part = kFlickerParts[static_cast<std::size_t>(frame / kFramesPerPart)];
    double gain = 1.0;
    if (part.random)
      gain *= 1.0 + kRandomDeviation * demoNormal(kFlickerSeed, static_cast<std::uint64_t>(frame));
    if (part.lamp) gain *= lampGain(frame);
    if (isFlash(frame)) gain *= frame / kFlashEvery % 3 == 2 ? kDarkFlash : kBrightFlash;
    gains.push_back(gain);
  }
  return gains;
}

}  // namespace cli
