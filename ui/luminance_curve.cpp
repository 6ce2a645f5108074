// ui/luminance_curve.cpp — the points of a curve over all frames, and where it has gaps.
#include "ui/luminance_curve.h"

#include <cmath>

#include "stats/number_conversion.h"
#include "ui/layout.h"

namespace varilum {
namespace {

constexpr double kLeastLevel = 0.1;  // below it a frame has none

}  // namespace

std::int64_t frameOffset(const DRAWBOT_RectF32& plot, std::int64_t frame,
                         std::int64_t count) noexcept {
  return count > 1 ? frame * plotWidth(plot) / (count - 1) : 0;
}

Variance layOutCurve(std::span<const double> values, const DRAWBOT_RectF32& plot,
                     const LuminanceScale& scale, std::span<DRAWBOT_PointF32> points) noexcept {
  const auto count = static_cast<std::int64_t>(values.size());
  const std::int64_t left = truncateToInt(plot.left);
  const double height = plotHeight(plot);
  const double levels = scale.top - scale.bottom;
  const double base = double{plot.top} + double{plot.height};
  const float lowest = plot.top + plot.height - 1.0F;

  Variance variance;
  double previous = 0.0;
  for (std::size_t i = 0; i < values.size(); ++i) {
    const double value = values[i];
    const std::int64_t x = left + frameOffset(plot, static_cast<std::int64_t>(i), count);
    auto y = static_cast<float>(base - (value - scale.bottom) * height / levels);
    if (!(y > 0.0F)) y = 0.0F;
    if (y > lowest) y = lowest;
    points[i] = {static_cast<float>(x), y};

    if (value > kLeastLevel && previous > kLeastLevel) {
      ++variance.pairs;
      variance.value += std::fabs(value - previous);
    }
    previous = value;
  }
  if (variance.pairs > 1) variance.value /= static_cast<double>(variance.pairs);
  return variance;
}

FrameRun nextRun(std::span<const double> values, double bottom, std::size_t from) noexcept {
  std::size_t first = from;
  while (first < values.size() && !(values[first] > bottom)) ++first;
  std::size_t end = first;
  while (end < values.size() && values[end] > bottom) ++end;
  return {first, end};
}

Stroke loneFrameStroke(std::span<const DRAWBOT_PointF32> points, std::size_t frame) noexcept {
  const DRAWBOT_PointF32 point = points[frame];
  if (frame + 1 < points.size()) return {point, {points[frame + 1].x, point.y}};
  if (points.size() == 1) return {point, {point.x + 1.0F, point.y}};
  return {{point.x - 1.0F, point.y}, point};
}

}  // namespace varilum
