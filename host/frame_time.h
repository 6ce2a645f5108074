// host/frame_time.h — which frame of the layer is shown at a time.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

#include "host/frame_source.h"
#include "host/parameter_store.h"

namespace host {

// When a frame begins, kept within 32 bits; so is the layer's end, the frame after the last.
inline std::int32_t timeOf(const LayerInfo& layer, std::int32_t frame) noexcept {
  const std::int64_t time = std::int64_t{frame} * layer.timeStep;
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(
      time, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()));
}

// The frame at or before the moment; negative before the start, frameCount or more after the end.
inline std::int32_t frameAt(const LayerInfo& layer, Moment moment) noexcept {
  const std::int64_t ticks = static_cast<std::int64_t>(moment.value) * layer.timeScale;
  const std::int64_t frame =
      static_cast<std::int64_t>(moment.scale) * (layer.timeStep > 0 ? layer.timeStep : 1);
  const std::int64_t floor = ticks / frame - (ticks % frame < 0 ? 1 : 0);
  if (floor < -1) return -1;
  return static_cast<std::int32_t>(floor < layer.frameCount ? floor : layer.frameCount);
}

}  // namespace host
