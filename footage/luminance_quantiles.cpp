// footage/luminance_quantiles.cpp — how light is spread over a frame, in 64 bytes.
#include "footage/luminance_quantiles.h"

#include <algorithm>

namespace footage {

LuminanceQuantiles quantilesOf(const FrameMeasure& frame) {
  LuminanceQuantiles means{};
  // A pixel has as many parts as there are quantiles, so that each quantile has as many as there
  // are pixels.
  const std::uint64_t parts = frame.sampled;
  std::uint64_t room = parts;
  std::uint64_t sum = 0;
  std::size_t filled = 0;
  for (std::size_t level = 0; level < frame.histogram.size(); ++level) {
    std::uint64_t left = means.size() * frame.histogram[level];
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

}  // namespace footage
