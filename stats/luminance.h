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

// 100 times the luminance before it is cut to a whole level, that is 30 r + 59 g + 11 b + 50. Cut
// to hundreds it gives the level, unless it is a whole hundred: there the sum of the double weights
// may stand a hair below the level, and luminanceOfTie must decide.
constexpr std::uint16_t luminanceHundredths(unsigned red, unsigned green, unsigned blue) noexcept {
  return static_cast<std::uint16_t>(30 * red + 59 * green + 11 * blue + 50);
}

// hundredths / 100, by a multiplication that vector units have; exact up to 25550, white.
constexpr std::uint16_t wholeHundreds(std::uint16_t hundredths) noexcept {
  const std::uint32_t quarter = hundredths >> 2;
  return static_cast<std::uint16_t>(static_cast<std::uint16_t>(quarter * 5243 >> 16) >> 1);
}

// Level of a pixel by the sum of the double weights: one colour in a hundred needs it.
std::uint8_t luminanceOfTie(unsigned red, unsigned green, unsigned blue) noexcept;

// Luminance level 0..255 of 8-bit channels: truncate(wr + wg + wb + 0.5), clamped, with the sums
// of the double weights in this order. Exact for all 16.7 million colours.
inline std::uint8_t luminanceLevel(std::uint8_t red, std::uint8_t green,
                                   std::uint8_t blue) noexcept {
  const std::uint16_t hundredths = luminanceHundredths(red, green, blue);
  const std::uint16_t level = wholeHundreds(hundredths);
  if (level * 100 == hundredths) return luminanceOfTie(red, green, blue);
  return static_cast<std::uint8_t>(level);
}

}  // namespace varilum
