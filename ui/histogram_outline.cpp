// ui/histogram_outline.cpp — the outline of one histogram in its plot.
#include "ui/histogram_outline.h"

#include <algorithm>

#include "stats/number_conversion.h"
#include "ui/layout.h"

namespace varilum {

HistogramOutline outlineHistogram(std::span<const std::uint32_t, kLevels> counts,
                                  std::int32_t maximum, const DRAWBOT_RectF32& plot) noexcept {
  const std::int32_t width = plotWidth(plot);
  const std::int32_t height = plotHeight(plot);
  const std::int32_t left = truncateToInt(plot.left);
  const double scale = std::max(maximum, 1);

  HistogramOutline outline;
  outline.front() = {plot.left, plot.top + plot.height};
  for (std::size_t bin = 0; bin < counts.size(); ++bin) {
    // truncateToInt saturates: on a large frame a black bar is higher than 32 bits.
    const std::int32_t bar = truncateToInt(counts[bin] * double(height) / scale);
    const float top = plot.top + static_cast<float>(height) - static_cast<float>(bar);
    const auto offset = static_cast<std::int64_t>(bin) * width / kLevels;
    outline[bin + 1] = {static_cast<float>(left + offset), std::max(plot.top, top)};
  }
  outline.back() = {plot.left + plot.width, plot.top + plot.height};
  return outline;
}

}  // namespace varilum
