// stats/frame_count.cpp — a layer's frames from its times.
#include "stats/frame_count.h"

#include <algorithm>
#include <limits>

namespace varilum {

std::int32_t layerFrameCount(std::int32_t totalTime, std::int32_t timeStep) noexcept {
  if (timeStep <= 0) return 1;
  const std::int64_t rounded = (std::int64_t{totalTime} + timeStep / 2) / timeStep;
  const std::int64_t most = std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(rounded, 0, most));
}

std::int32_t frameAt(std::int32_t currentTime, std::int32_t timeStep,
                     std::int32_t frameCount) noexcept {
  if (timeStep <= 0 || frameCount <= 0) return 0;
  return std::clamp(currentTime / timeStep, 0, frameCount - 1);
}

}  // namespace varilum
