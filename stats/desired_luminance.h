// stats/desired_luminance.h — the target level of every frame.
#pragma once

#include <cstdint>
#include <span>

namespace varilum {

// The settings at each frame, wherever they come from. Every call returns 0 or an error code, and
// leaves its results alone on an error.
class TargetParameters {
 public:
  virtual ~TargetParameters() = default;

  virtual std::int32_t dontDeflicker(std::int32_t frame, bool& on) = 0;
  // luminance is left alone when the layer has no Luminance value at this time.
  virtual std::int32_t keyframe(std::int32_t frame, double& luminance, float& spread) = 0;
  virtual std::int32_t smoothingFrames(std::int32_t frame, std::int32_t& frames) = 0;
};

// Per-frame arrays of equal length, on the 0..255 scale; -1 = not analysed.
struct LevelArrays {
  std::span<const double> inputLuminance;
  std::span<const double> inputSpread;
  std::span<double> desiredLuminance;
  std::span<double> desiredSpread;
};

// Fills the desired levels and spreads of all frames. Keyframes: as the parameters say. Otherwise
// a flat average over frame - N .. frame + N, shortened at the ends, of the levels (and, apart, of
// the spreads) greater than 0. After the first error no parameter is asked any more, but every
// frame is still written with the values at hand. Returns the first error.
std::int32_t computeDesiredLuminance(TargetParameters& parameters, bool keyframes,
                                     const LevelArrays& levels);

}  // namespace varilum
