// stats/desired_luminance.cpp — keyframed or smoothed target levels.
#include "stats/desired_luminance.h"

#include <algorithm>
#include <cstddef>

#include "stats/moving_window.h"

namespace varilum {
std::int32_t computeDesiredLuminance(TargetParameters& parameters, bool keyframes,
                                     const LevelArrays& levels) {
  const auto count = static_cast<std::int32_t>(levels.desiredLuminance.size());
  std::int32_t error = 0;
  bool dontDeflicker = false;
  double luminance = 0.0;
  float spread = 0.0f;
  std::int32_t smoothing = 1;
  LevelMeans luminanceMeans(levels.inputLuminance);
  RoundedMeans spreadMeans(levels.inputSpread);
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
      const auto end = static_cast<std::size_t>(last) + 1;
      luminance = luminanceMeans.over(from, end, input);
      spread = spreadMeans.over(from, end, inputSpread);
    }
    levels.desiredLuminance[i] = luminance;
    levels.desiredSpread[i] = double{spread};
  }
  return error;
}

}  // namespace varilum
