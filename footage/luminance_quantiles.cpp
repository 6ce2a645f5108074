// footage/luminance_quantiles.cpp — how light is spread over a frame, in 64 bytes.
#include "footage/luminance_quantiles.h"

#include <algorithm>
#include <numeric>

namespace footage {

LuminanceQuantiles quantilesOf(const std::array<std::uint64_t, 256>& counts) {
  LuminanceQuantiles means{};
  // A pixel has as many parts as there are quantiles, so that each quantile has as many as there
  // are pixels.
  const std::uint64_t parts = std::accumulate(counts.begin(), counts.end(), std::uint64_t{0});
  std::uint64_t room = parts;
  std::uint64_t sum = 0;
  std::size_t filled = 0;
  for (std::size_t level = 0; level < counts.size(); ++level) {
    std::uint64_t left = means.size() * counts[level];
    while (left > 0 && filled < means.size()) {
      const std::uint64_t taken = std::min(left, room);
      sum += taken * level;
      left -= taken;
      room -= taken;
      if (room > 0) continue;
      means[filled++] = static_cast<std::uint16_t>((256 * sum + parts / 2) / parts);
      room = parts;
      sum = 0;
    }
  }
  return means;
}

LuminanceQuantiles quantilesOf(const FrameMeasure& frame) {
  std::array<std::uint64_t, 256> counts{};
  std::copy(frame.histogram.begin(), frame.histogram.end(), counts.begin());
  return quantilesOf(counts);
}

}  // namespace footage
