// ui/histogram_outline.h — the outline of one histogram in its plot.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "hostapi/suites/drawbot.h"
#include "stats/frame_stats.h"

namespace varilum {

// From the plot's lower left corner over the tops of all bins to its lower right corner.
using HistogramOutline = std::array<DRAWBOT_PointF32, kLevels + 2>;

// A bin of maximum (below 1: counts as 1) reaches the top of the plot; larger ones are cut there.
HistogramOutline outlineHistogram(std::span<const std::uint32_t, kLevels> counts,
                                  std::int32_t maximum, const DRAWBOT_RectF32& plot) noexcept;

}  // namespace varilum
