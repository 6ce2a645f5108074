// footage/luma_profile.cpp — a frame's mean luma, and from how bright components it comes.
#include "footage/luma_profile.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace footage {
namespace {

using Weighed = std::array<std::uint64_t, 256>;

double meanLuma(const ArgbRows& pixels, const LumaWeights& weights) {
  constexpr int kPiece = 1 << 16;  // 255 times this is within 32 bits
  double sum = 0;
  for (int y = 0; y < pixels.height; ++y) {
    const std::uint8_t* row = pixels.row(y);
    for (int start = 0; start < pixels.width; start += kPiece) {
      const int end = std::min(pixels.width, start + kPiece);
      std::uint32_t red = 0;
      std::uint32_t green = 0;
      std::uint32_t blue = 0;
      for (int x = start; x < end; ++x) {
        // Words rather than bytes, which the compiler makes vectors of.
        std::uint32_t pixel;
        std::memcpy(&pixel, row + 4 * static_cast<std::ptrdiff_t>(x), 4);
        red += (pixel >> 8) & 0xFFU;
        green += (pixel >> 16) & 0xFFU;
        blue += pixel >> 24;
      }
      sum += weights.red * red + weights.green * green + weights.blue * blue;
    }
  }
  return sum / (static_cast<double>(pixels.width) * pixels.height);
}

Weighed weighedComponents(const ArgbRows& pixels, const LumaWeights& weights) {
  constexpr double kEnough = 65536;
  const double area = static_cast<double>(pixels.width) * pixels.height;
  const int step = std::max(1, static_cast<int>(std::lround(std::sqrt(area / kEnough))));
  std::array<std::uint64_t, 3> parts{};
  const std::array<double, 3> shares{weights.red, weights.green, weights.blue};
  for (std::size_t c = 0; c < parts.size(); ++c) {
    parts[c] = static_cast<std::uint64_t>(std::lround(1024 * shares[c]));
  }
  Weighed counts{};
  for (int y = 0; y < pixels.height; y += step) {
    for (int x = 0; x < pixels.width; x += step) {
      const std::uint8_t* pixel = pixels.row(y) + 4 * static_cast<std::ptrdiff_t>(x);
      for (std::size_t c = 0; c < parts.size(); ++c) counts[pixel[1 + c]] += parts[c];
    }
  }
  return counts;
}

}  // namespace

LumaProfile profileLuma(const ArgbRows& pixels, const LumaWeights& weights) {
  LumaProfile profile;
  if (pixels.data == nullptr || pixels.width <= 0 || pixels.height <= 0) return profile;
  profile.mean = meanLuma(pixels, weights);
  profile.components = quantilesOf(weighedComponents(pixels, weights));
  return profile;
}

double lumaBehind(const LumaProfile& profile, std::span<const double, 256> curve) {
  double before = 0;
  double behind = 0;
  for (const std::uint16_t component : profile.components) {
    const double level = component / 256.0;
    const std::size_t below = std::min<std::size_t>(component / 256U, curve.size() - 2);
    const double share = level - static_cast<double>(below);
    before += level;
    behind += curve[below] + share * (curve[below + 1] - curve[below]);
  }
  const double count = static_cast<double>(profile.components.size());
  // The sample says what the curve does, the mean of all pixels to what.
  return before > 0 ? profile.mean * behind / before : behind / count;
}

}  // namespace footage
