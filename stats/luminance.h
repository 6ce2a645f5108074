// stats/luminance.h — the luminance of a pixel, and the weights it is made of.
#pragma once

#include <cstdint>

namespace varilum {

// Weights of the channels by level: red v x 0.3, green v x 0.59, blue v x 0.11 (the luma of
// analogue television, rounded to two decimals), in this order in memory.
struct LuminanceWeights {
  double red[256];
  double green[256];
  double blue[256];
};

void fillLuminanceWeights(LuminanceWeights& weights) noexcept;

// Luminance level 0..255 of 8-bit channels: truncate(wr + wg + wb + 0.5), clamped, with the sums
// of the double weights in this order. Exact for all 16.7 million colours, by integers.
std::uint8_t luminanceLevel(std::uint8_t red, std::uint8_t green, std::uint8_t blue) noexcept;

}  // namespace varilum
