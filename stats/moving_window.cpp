// stats/moving_window.cpp — means that equal the plain rule's.
#include "stats/moving_window.h"

namespace varilum {

double meanOfPositive(std::span<const double> levels, double fallback) noexcept {
  double sum = 0.0;
  std::int64_t count = 0;
  for (const double level : levels) {
    const bool counts = level > 0.0;
    sum += counts ? level : 0.0;
    count += counts ? 1 : 0;
  }
  return count > 0 ? sum / static_cast<double>(count) : fallback;
}

double LevelMeans::over(std::size_t first, std::size_t end, double fallback) noexcept {
  window_.moveTo(first, end);
  if (!window_.isExact()) return meanOfPositive(window_.levels(), fallback);
  const auto count = static_cast<double>(window_.count());
  return window_.count() > 0 ? window_.sum() / count : fallback;
}

float RoundedMeans::over(std::size_t first, std::size_t end, double fallback) noexcept {
  window_.moveTo(first, end);
  if (window_.count() == 0) return static_cast<float>(fallback);
  if (window_.isKnown()) {
    const auto count = static_cast<double>(window_.count());
    // Each addition of the plain rule, and each operation here, may be off by 2^-53 of its result.
    const double error = (count + 8.0) * 0x1p-52;
    const auto lowest = static_cast<float>(window_.sum() / count * (1.0 - error));
    const auto highest =
        static_cast<float>((window_.sum() + window_.uncertainty()) / count * (1.0 + error));
    if (lowest == highest) return lowest;
  }
  return static_cast<float>(meanOfPositive(window_.levels(), fallback));
}

}  // namespace varilum
