// cli/demo/demo_noise.cpp — randomness that is the same on every machine: hashes and tileable
// textures.
#include "cli/demo/demo_noise.h"

#include <cmath>
#include <numbers>

namespace cli {
namespace {

std::uint64_t mix(std::uint64_t x) noexcept {
  x += 0x9E3779B97F4A7C15U;
  x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9U;
  x = (x ^ (x >> 27)) * 0x94D049BB133111EBU;
  return x ^ (x >> 31);
}

/// Fades from one lattice point to the next without a kink.
double fade(double t) {
  return t * t * (3.0 - 2.0 * t);
}

double between(double a, double b, double t) {
  return a + (b - a) * t;
}

/// One octave: random values on a lattice of `cells` by `cells` that wraps around.
double lattice(std::uint64_t seed, int cells, double u, double v) {
  const double x = u * cells;
  const double y = v * cells;
  const auto column = static_cast<std::uint64_t>(x);
  const auto row = static_cast<std::uint64_t>(y);
  const auto count = static_cast<std::uint64_t>(cells);
  const double s = fade(x - std::floor(x));
  const double t = fade(y - std::floor(y));
  const auto value = [&](std::uint64_t c, std::uint64_t r) {
    return demoUniform(seed, c % count, r % count);
  };
  return between(between(value(column, row), value(column + 1, row), s),
                 between(value(column, row + 1), value(column + 1, row + 1), s), t);
}

/// The fractional part, 0 <= result <= 1; a conversion is much quicker than std::floor here.
float withinTile(float place) noexcept {
  const float part = place - static_cast<float>(static_cast<int>(place));
  return part < 0.0F ? part + 1.0F : part;
}

}  // namespace

std::uint64_t demoHash(std::uint64_t seed, std::uint64_t a, std::uint64_t b) noexcept {
  return mix(mix(mix(seed) ^ a) ^ b);
}

double demoUniform(std::uint64_t seed, std::uint64_t a, std::uint64_t b) noexcept {
  return static_cast<double>(demoHash(seed, a, b) >> 11) * 0x1.0p-53;
}

double demoNormal(std::uint64_t seed, std::uint64_t a) noexcept {
  double sum = 0.0;
  for (std::uint64_t i = 0; i < 4; ++i) sum += demoUniform(seed, a, i);
  return (sum - 2.0) * std::numbers::sqrt3;
}

NoiseTile::NoiseTile(std::uint64_t seed, int coarsestCells, int octaves, double persistence)
    : values_(static_cast<std::size_t>(kSize) * kSize) {
  double whole = 0.0;
  double strength = 1.0;
  for (int octave = 0; octave < octaves; ++octave, strength *= persistence) whole += strength;
  for (int y = 0; y < kSize; ++y) {
    for (int x = 0; x < kSize; ++x) {
      double sum = 0.0;
      strength = 1.0;
      for (int octave = 0; octave < octaves; ++octave, strength *= persistence) {
        sum +=
            strength * lattice(seed + static_cast<std::uint64_t>(octave), coarsestCells << octave,
                               static_cast<double>(x) / kSize, static_cast<double>(y) / kSize);
      }
      values_[static_cast<std::size_t>(y * kSize + x)] = static_cast<float>(sum / whole);
    }
  }
}

float NoiseTile::at(float u, float v) const noexcept {
  const float x = withinTile(u) * static_cast<float>(kSize);
  const float y = withinTile(v) * static_cast<float>(kSize);
  const int left = static_cast<int>(x);
  const int top = static_cast<int>(y);
  const float s = x - static_cast<float>(left);
  const float t = y - static_cast<float>(top);
  const auto value = [&](int c, int r) {
    return values_[static_cast<std::size_t>((r & (kSize - 1)) * kSize + (c & (kSize - 1)))];
  };
  const float upper = value(left, top) + (value(left + 1, top) - value(left, top)) * s;
  const float lower = value(left, top + 1) + (value(left + 1, top + 1) - value(left, top + 1)) * s;
  return upper + (lower - upper) * t;
}

}  // namespace cli
