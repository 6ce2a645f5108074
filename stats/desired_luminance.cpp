// stats/desired_luminance.cpp — keyframed or smoothed target levels.
#include "stats/desired_luminance.h"

#include <algorithm>
#include <cstddef>

namespace varilum {
namespace {

// Mean of the positive levels from first to last, or fallback when there is none.
double meanOfPositive(std::span<const double> levels, double fallback) {
  double sum = 0.0;
  std::int64_t count = 0;
  for (const double level : levels) {
    const bool counts = level > 0.0;
    sum += counts ? level : 0.0;
    count += counts ? 1 : 0;
  }
  return count > 0 ? sum / static_cast<double>(count) : fallback;
}

}  // namespace

std::int32_t computeDesiredLuminance(TargetParameters& parameters, bool keyframes,
                                     const LevelArrays& levels) {
  const auto count = static_cast<std::int32_t>(levels.desiredLuminance.size());
  std::int32_t error = 0;
  bool dontDeflicker = false;
  double luminance = 0.0;
  float spread = 0.0f;
  std::int32_t smoothing = 1;
  for (std::int32_t frame = 0; frame < count; ++frame) {
    const auto i = static_cast<std::size_t>(frame);
    const double input = levels.inputLuminance[i];
    const double inputSpread = levels.inputSpread[i];
    if (error == 0) error = parameters.dontDeflicker(frame, dontDeflicker);
    if (dontDeflicker) {
      luminance = input;
      spread = static_cast<float>(inputSpread);
    } else if (keyframes) {
      if (error == 0) error = parameters.keyframe(frame, luminance, spread);
    } else {
      if (error == 0) error = parameters.smoothingFrames(frame, smoothing);
      const std::int32_t reach = std::max(smoothing, 1);
      const std::int32_t first = frame > reach ? frame - reach : 0;
      const std::int32_t last = count - 1 - frame > reach ? frame + reach : count - 1;
      const auto from = static_cast<std::size_t>(first);
      const auto length = static_cast<std::size_t>(last - first) + 1;
      luminance = meanOfPositive(levels.inputLuminance.subspan(from, length), input);
      spread =
          static_cast<float>(meanOfPositive(levels.inputSpread.subspan(from, length), inputSpread));
    }
    levels.desiredLuminance[i] = luminance;
    levels.desiredSpread[i] = double{spread};
  }
  return error;
}

}  // namespace varilum
