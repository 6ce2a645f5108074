// ui/luminance_scale.h — which levels the Luminance Graph spans.
#pragma once

#include <cstdint>
#include <span>

namespace varilum {

// Levels at the plot's lower and upper edge; bottom < top always.
struct LuminanceScale {
  std::int32_t bottom = 0;
  std::int32_t top = 255;

  friend bool operator==(const LuminanceScale&, const LuminanceScale&) = default;
};

// The tens around all values of both arrays, with at least 5 levels of room on either side, within
// 0..255. Values of 0.5 and less do not lower the bottom: they belong to frames not analysed. The
// full scale when nothing is left to zoom to.
LuminanceScale zoomedScale(std::span<const double> inputs,
                           std::span<const double> desired) noexcept;

}  // namespace varilum
