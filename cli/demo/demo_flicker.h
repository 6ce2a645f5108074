// cli/demo/demo_flicker.h — the exposure faults that the demo puts into its clip.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

namespace cli {

/// A part of the demo's clip and what is wrong with it.
struct FlickerPart {
  std::string_view name;
  bool random;   // every frame exposed a little differently
  bool lamp;     // a lamp on alternating current, sampled by the shutter
  bool flashes;  // single frames far too bright or too dark
};

inline constexpr std::array<FlickerPart, 4> kFlickerParts{{
    {"Per-frame random", true, false, false},
    {"120 Hz lamp", false, true, false},
    {"Single flashes", false, false, true},
    {"All together", true, true, true},
}};
inline constexpr int kFramesPerPart = 100;
inline constexpr int kDemoFrames = static_cast<int>(kFlickerParts.size()) * kFramesPerPart;
inline constexpr int kDemoFrameRate = 25;

/// Deviation of the random exposure.
inline constexpr double kRandomDeviation = 0.06;
/// A lamp pulses twice a mains cycle: its light is 1 + kLampDepth * sin(2 pi kLampHertz t).
inline constexpr double kLampHertz = 120.0;
inline constexpr double kLampDepth = 0.25;
inline constexpr double kShutterSeconds = 1.0 / 200.0;
inline constexpr double kBrightFlash = 1.45;
inline constexpr double kDarkFlash = 0.70;

/// Mean light of that lamp while the shutter is open from the start of `frame`:
/// 1 + kLampDepth * sinc(kLampHertz * kShutterSeconds) * sin(phase at mid-exposure).
double lampGain(int frame);

/// True for the frames that flash in the parts that have flashes.
bool isFlash(int frame);

/// What every frame's code values are multiplied by; kDemoFrames of them, mean near 1, the same on
/// every run. (Of a display with a power law, a factor on code values is a factor on light.)
std::vector<double> demoGains();

}  // namespace cli
