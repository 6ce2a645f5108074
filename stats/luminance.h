// stats/luminance.h — the luminance of a pixel, and the weights it is made of.
#pragma once

#include <cstdint>

namespace varilum {

// The luma of analogue television, rounded to two decimals.
inline constexpr double kRedWeight = 0.3;
inline constexpr double kGreenWeight = 0.59;
inline constexpr double kBlueWeight = 0.11;

// Weights of the channels by level, level x weight, in this order in memory.
struct LuminanceWeights {
  double red[256];
  double green[256];
  double blue[256];
};

void fillLuminanceWeights(LuminanceWeights& weights) noexcept;

// Weights in fixed point, their lowest kLuminanceShift bits behind the point; red carries the half
// that rounds. Each is the exact product rounded, so a sum is within 2 units of the exact one.
struct FixedWeights {
  std::uint32_t red[256];
  std::uint32_t green[256];
  std::uint32_t blue[256];
};

inline constexpr int kLuminanceShift = 24;
inline constexpr std::uint32_t kTieMargin = 2;

constexpr FixedWeights makeFixedWeights() noexcept {
  constexpr std::uint64_t kOne = std::uint64_t{1} << kLuminanceShift;
  FixedWeights weights{};
  for (std::uint64_t level = 0; level < 256; ++level) {
    const auto hundredths = [](std::uint64_t count) {
      return static_cast<std::uint32_t>((count * kOne + 50) / 100);
    };
    weights.red[level] = hundredths(30 * level + 50) + kTieMargin;
    weights.green[level] = hundredths(59 * level);
    weights.blue[level] = hundredths(11 * level);
  }
  return weights;
}

inline constexpr FixedWeights kFixedWeights = makeFixedWeights();

// Level of a colour whose exact luminance lies halfway between two levels, one colour in a hundred:
// the sum of the double weights may come out a hair below, and decides.
inline std::uint8_t luminanceOfTie(unsigned red, unsigned green, unsigned blue) noexcept {
  const auto weighted = [](unsigned level, double weight) {
    return static_cast<std::int32_t>(level) * weight;
  };
  return static_cast<std::uint8_t>(weighted(red, kRedWeight) + weighted(green, kGreenWeight) +
                                   weighted(blue, kBlueWeight) + 0.5);
}

// Luminance level 0..255 of 8-bit channels: truncate(wr + wg + wb + 0.5), clamped, with the sums
// of the double weights in this order. Exact for all 16.7 million colours: apart from the ties,
// exact sums keep a hundredth of a level away from the next whole one, far more than fixed point
// and doubles lose.
inline std::uint8_t luminanceLevel(std::uint8_t red, std::uint8_t green,
                                   std::uint8_t blue) noexcept {
  const std::uint32_t sum =
      kFixedWeights.red[red] + kFixedWeights.green[green] + kFixedWeights.blue[blue];
  const std::uint32_t fraction = sum << (32 - kLuminanceShift);
  if (fraction <= 2 * kTieMargin << (32 - kLuminanceShift)) [[unlikely]] {
    return luminanceOfTie(red, green, blue);
  }
  return static_cast<std::uint8_t>(sum >> kLuminanceShift);
}

}  // namespace varilum
