// tests/footage/developing.cpp — what happens to a scene's light between lens and file.
#include "tests/footage/developing.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace footage::test {
namespace {

/// Normal noise from a table long enough for a frame's start to be its own.
double grainAt(std::uint64_t index) {
  constexpr std::size_t kCount = 1 << 16;
  static const std::vector<double> table = [] {
    RandomNumbers random(1);
    std::vector<double> values(kCount);
    for (double& value : values) value = random.normal();
    return values;
  }();
  return table[index % kCount];
}

}  // namespace

FrameMeasure develop(const Frame& frame, const Treatment& treatment, bool blackWhite, double grain,
                     RandomNumbers& random) {
  std::vector<std::uint8_t> bytes(4 * frame.pixels.size());
  const std::uint64_t grainStart = random.seed();
  for (std::size_t i = 0; i < frame.pixels.size(); ++i) {
    Colour colour = frame.pixels[i];
    if (blackWhite) {
      const float grey = 0.3F * colour[0] + 0.59F * colour[1] + 0.11F * colour[2];
      colour = {grey, grey, grey};
    }
    const double x = static_cast<double>(i % static_cast<std::size_t>(frame.width)) / frame.width;
    const double side = 1 + (treatment.sideGain - 1) *
                                std::clamp(1 - 1.5 * std::abs(x - treatment.sideX), 0.0, 1.0);
    const double grains = grain * grainAt(grainStart + i);
    for (std::size_t c = 0; c < 3; ++c) {
      double level = colour[c];
      if (treatment.gamma != 1) level = 255 * std::pow(level / 255, treatment.gamma);
      level = std::min(255.0, level * treatment.gain[c] * side);
      level += treatment.white * (255 - level);
      level = level * treatment.fade + grains;
      bytes[4 * i + 1 + c] = static_cast<std::uint8_t>(std::lround(std::clamp(level, 0.0, 255.0)));
    }
  }
  return measureFrame({bytes.data(), 4 * frame.width, frame.width, frame.height});
}

}  // namespace footage::test
