// analysis/analysis_rect.cpp — which part of a frame is measured, and how finely.
#include "analysis/analysis_rect.h"

#include <algorithm>
#include <limits>

#include "stats/number_conversion.h"

namespace varilum {
namespace {

constexpr std::int64_t kLeastSamples = 60;  // across the shorter side

std::int32_t wholePart(std::int32_t fixed) noexcept {
  return fixed >> 16;
}

}  // namespace

std::int32_t scaledSize(std::int32_t size, const PF_RationalScale& scale) noexcept {
  if (scale.den == 0) return size;
  const std::int64_t scaled = std::int64_t{size} * scale.num / std::int64_t{scale.den};
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(
      scaled, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()));
}

Rect worldAnalysisRect(const PF_PointDef& corner1, const PF_PointDef& corner2, std::int32_t width,
                       std::int32_t height) noexcept {
  const auto [left, right] = std::minmax({wholePart(corner1.x_value), wholePart(corner2.x_value)});
  const auto [top, bottom] = std::minmax({wholePart(corner1.y_value), wholePart(corner2.y_value)});
  return {std::max(left, 0), std::max(top, 0), std::min(right, width), std::min(bottom, height)};
}

Rect layerAnalysisRect(const PF_InData& in, bool useSubrect, const PF_PointDef& corner1,
                       const PF_PointDef& corner2) noexcept {
  const std::int32_t width = scaledSize(in.width, in.downsample_x);
  const std::int32_t height = scaledSize(in.height, in.downsample_y);
  if (!useSubrect) return {0, 0, width, height};
  return worldAnalysisRect(corner1, corner2, width, height);
}

std::int32_t samplingStep(std::int32_t speed, const Rect& rect) noexcept {
  const std::int64_t shorter =
      std::min(std::int64_t{rect.right} - rect.left, std::int64_t{rect.bottom} - rect.top);
  if (shorter < kLeastSamples) return 1;
  // The largest step with shorter / step >= 60 is shorter / 60.
  const std::int64_t largest = shorter / kLeastSamples;
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(roundFixed(speed), 1, largest));
}

}  // namespace varilum
