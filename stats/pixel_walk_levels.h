// stats/pixel_walk_levels.h — the levels of a single pixel, at three depths.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "stats/pixel_walk_kernels.h"

namespace varilum {

struct Read8 {
  static constexpr std::size_t kBytes = 4;
  static LevelWord levels(const std::byte* pixel) noexcept {
    LevelWord word;
    std::memcpy(&word, pixel, sizeof word);
    return word;
  }
};

struct Read16 {
  static constexpr std::size_t kBytes = 8;
  static LevelWord levels(const std::byte* pixel) noexcept {
    std::uint64_t channels;
    std::memcpy(&channels, pixel, sizeof channels);
    const auto level = [channels](int shift) {
      return static_cast<unsigned>(channels >> (shift + 7)) & 255;
    };
    return packLevels(level(16), level(32), level(48));
  }
};

struct ReadFloat {
  static constexpr std::size_t kBytes = 16;
  static unsigned level(float value) noexcept {
    const double scaled = value * 255.0;
    // False for NaN too. The one whole number at the lower end that it leaves out has 0 in its low
    // bits anyway.
    const bool fits = std::fabs(scaled) < 2147483648.0;
    return static_cast<unsigned>(fits ? static_cast<std::int32_t>(scaled) : 0) & 255;
  }
  static LevelWord levels(const std::byte* pixel) noexcept {
    float channels[4];
    std::memcpy(channels, pixel, sizeof channels);
    return packLevels(level(channels[1]), level(channels[2]), level(channels[3]));
  }
};

}  // namespace varilum
