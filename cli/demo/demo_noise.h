// cli/demo/demo_noise.h — randomness that is the same on every machine: hashes and tileable
// textures.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace cli {

/// 64 well-mixed bits for a seed and up to two whole numbers.
std::uint64_t demoHash(std::uint64_t seed, std::uint64_t a, std::uint64_t b = 0) noexcept;

/// 0 <= result < 1, of the same arguments.
double demoUniform(std::uint64_t seed, std::uint64_t a, std::uint64_t b = 0) noexcept;

/// Nearly normal, mean 0, deviation 1, never beyond +-3.47: the sum of four uniform numbers.
double demoNormal(std::uint64_t seed, std::uint64_t a) noexcept;

/// A square of smooth noise that continues over its edges, values around 0.5 within 0..1: octaves
/// of interpolated lattice noise, each half as coarse and `persistence` times as strong.
class NoiseTile {
 public:
  static constexpr int kSize = 512;

  NoiseTile(std::uint64_t seed, int coarsestCells, int octaves, double persistence);

  /// At any place, in tiles: (0, 0) and (1, 1) are the same corner. Bilinear.
  float at(float u, float v) const noexcept;

 private:
  std::vector<float> values_;
};

}  // namespace cli
