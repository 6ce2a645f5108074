// ui/luminance_scale.cpp — which levels the Luminance Graph spans.
#include "ui/luminance_scale.h"

#include <algorithm>

#include "stats/number_conversion.h"

namespace varilum {
namespace {

constexpr double kHeadroom = 10.0;
constexpr double kRounding = 5.0;
constexpr double kLeastLevel = 0.5;

struct Range {
  double low = 255.0;
  double high = 0.0;

  void include(std::span<const double> values) noexcept {
    for (const double value : values) {
      if (value < low && value > kLeastLevel) low = value;
      if (value > high) high = value;
    }
  }
};

std::int32_t wholeTens(double level) noexcept {
  return truncateToInt(level) / 10 * 10;
}

}  // namespace

LuminanceScale zoomedScale(std::span<const double> inputs,
                           std::span<const double> desired) noexcept {
  Range range;
  range.include(inputs);
  range.include(desired);
  const std::int32_t top = wholeTens(range.high + kHeadroom + kRounding);
  const std::int32_t bottom = wholeTens(range.low - kHeadroom - kRounding);
  if (bottom >= top) return {};
  return {std::max(bottom, 0), std::min(top, 255)};
}

}  // namespace varilum
