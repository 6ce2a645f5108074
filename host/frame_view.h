// host/frame_view.h — how much of a layer's frame is asked for, and at which resolution.
#pragma once

#include <cstdint>

#include "host/frame_source.h"
#include "host/window_world.h"
#include "hostapi/geometry.h"

namespace host {

// Divisors of the layer's size, per axis.
struct Downsample {
  std::int32_t x = 1;
  std::int32_t y = 1;

  friend bool operator==(const Downsample&, const Downsample&) = default;
};

struct FrameView {
  Margins margins;        // room around the picture inside the world
  Downsample downsample;  // of renders; measured frames are whole
  PF_LRect part{};        // in reduced pixels; empty: all
};

// The layer's bounds at a resolution. A last column or row that is not whole counts.
inline PF_LRect reducedBounds(const LayerInfo& layer, const Downsample& by) noexcept {
  return {0, 0, (layer.width + by.x - 1) / by.x, (layer.height + by.y - 1) / by.y};
}

}  // namespace host
