// footage/luminance_quantiles.h — how light is spread over a frame, in 64 bytes.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "footage/frame_measure.h"

namespace footage {

/// The mean luminance of each 32nd of a frame's pixels, the darkest first; 1/256 of a level.
using LuminanceQuantiles = std::array<std::uint16_t, 32>;

/// Of any histogram over levels 0..255. All 0 for an empty one. Counts add up to less than 2^48.
LuminanceQuantiles quantilesOf(const std::array<std::uint64_t, 256>& counts);
/// Of the frame's histogram. All 0 for a frame without pixels.
LuminanceQuantiles quantilesOf(const FrameMeasure& frame);

}  // namespace footage
