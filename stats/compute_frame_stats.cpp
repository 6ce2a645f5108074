// stats/compute_frame_stats.cpp — levels, spread and counts from the histograms of a frame.
#include "stats/compute_frame_stats.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include "stats/pixel_walk.h"

namespace varilum {
namespace {

std::int32_t saturate(std::uint64_t value) noexcept {
  constexpr auto kMost = std::numeric_limits<std::int32_t>::max();
  return value > std::uint64_t{kMost} ? kMost : static_cast<std::int32_t>(value);
}

// Sums over all sampled pixels. Whole numbers: exact, and so are their conversions to double, as a
// frame has fewer than 2^32 pixels.
struct Sums {
  std::uint64_t count = 0;
  std::uint64_t luminance = 0;
  std::uint64_t squares = 0;
};

Sums sumLevels(const FrameHistogram& histogram) noexcept {
  Sums sums;
  for (std::uint64_t level = 0; level < kLevels; ++level) {
    const std::uint64_t count = histogram.luminance[level];
    sums.count += count;
    sums.luminance += count * level;
    sums.squares += count * level * level;
  }
  return sums;
}

double levelOf(const Sums& sums, bool favorBrighter) noexcept {
  const auto luminance = static_cast<double>(sums.luminance);
  if (favorBrighter && sums.luminance > 0) return static_cast<double>(sums.squares) / luminance;
  // The plain mean has always been kept in single precision.
  return static_cast<float>(luminance / static_cast<double>(sums.count));
}

void describe(const FrameHistogram& histogram, const Sums& sums, bool favorBrighter,
              FrameStats& stats) noexcept {
  const double mean = levelOf(sums, favorBrighter);
  double deviation = 0.0;
  std::uint64_t belowTop = histogram.luminance[0];
  std::uint32_t peak = 0;
  for (int level = 1; level < kLevels - 1; ++level) {
    const std::uint32_t count = histogram.luminance[level];
    deviation += count * std::fabs(level - mean);
    belowTop += count;
    peak = std::max(peak, count);
  }
  stats.pixelCount = saturate(sums.count);
  stats.luminanceSum = saturate(sums.luminance);
  stats.belowTopCount = saturate(belowTop);
  stats.peak = saturate(peak);
  stats.inputLuminance = mean;
  stats.inputSpread = deviation / static_cast<double>(sums.count);
  stats.analyzed = 1;
}

}  // namespace

void computeFrameStats(FrameStats& stats, FrameHistogram& histogram, const PixelBuffer& pixels,
                       Rect& rect, std::int32_t frame, bool favorBrighter,
                       std::int32_t step) noexcept {
  step = std::max(step, 1);
  rect.left = std::max(rect.left, 0);
  rect.top = std::max(rect.top, 0);
  rect.right = std::min(rect.right, pixels.width);
  rect.bottom = std::min(rect.bottom, pixels.height);
  if (stats.walked != 0 && stats.step == static_cast<std::uint32_t>(step) && stats.rect == rect) {
    stats.analyzed = 1;
    return;
  }
  resetFrameStats(stats);
  resetFrameHistogram(histogram);
  if (pixels.data == nullptr) return;

  stats.frame = frame;
  const std::int64_t total = std::int64_t{pixels.width} * pixels.height;
  stats.totalPixels = total < 0 ? 0 : saturate(static_cast<std::uint64_t>(total));
  walkPixels(pixels, rect, step, histogram);
  const Sums sums = sumLevels(histogram);
  if (sums.count > 0) describe(histogram, sums, favorBrighter, stats);

  stats.step = static_cast<std::uint32_t>(step);
  stats.rect = rect;
  stats.width = pixels.width;
  stats.height = pixels.height;
  stats.walked = 1;
}

}  // namespace varilum
