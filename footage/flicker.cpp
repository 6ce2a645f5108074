// footage/flicker.cpp — how much a clip flickers, in three figures.
#include "footage/flicker.h"

#include <algorithm>
#include <cmath>

namespace footage {
namespace {

bool measured(double level) {
  return level >= 0.0 && std::isfinite(level);
}

/// A sum that knows how many it added; its mean is 0 when there were none.
struct Average {
  double sum = 0.0;
  std::size_t count = 0;

  void add(double value) {
    sum += value;
    ++count;
  }
  double value() const { return count == 0 ? 0.0 : sum / static_cast<double>(count); }
};

double meanLevel(std::span<const double> levels) {
  Average average;
  for (double level : levels) {
    if (measured(level)) average.add(level);
  }
  return average.value();
}

double percentOf(double value, double whole) {
  return whole > 0.0 ? 100.0 * value / whole : 0.0;
}

}  // namespace

double flickerRms(std::span<const double> levels) {
  constexpr std::size_t kHalf = kFlickerWindow / 2;
  Average squares;
  for (std::size_t i = 0; i < levels.size(); ++i) {
    if (!measured(levels[i])) continue;
    const std::size_t first = i < kHalf ? 0 : i - kHalf;
    const std::size_t last = std::min(i + kHalf, levels.size() - 1);
    const double around = meanLevel(levels.subspan(first, last - first + 1));
    const double deviation = around > 0.0 ? levels[i] / around - 1.0 : 0.0;
    squares.add(deviation * deviation);
  }
  return 100.0 * std::sqrt(squares.value());
}

double frameToFrameChange(std::span<const double> levels) {
  Average steps;
  for (std::size_t i = 1; i < levels.size(); ++i) {
    if (measured(levels[i - 1]) && measured(levels[i])) {
      steps.add(std::abs(levels[i] - levels[i - 1]));
    }
  }
  return percentOf(steps.value(), meanLevel(levels));
}

double jerk(std::span<const double> levels) {
  Average bends;
  for (std::size_t i = 2; i < levels.size(); ++i) {
    if (measured(levels[i - 2]) && measured(levels[i - 1]) && measured(levels[i])) {
      bends.add(std::abs(levels[i] - 2.0 * levels[i - 1] + levels[i - 2]));
    }
  }
  return percentOf(bends.value(), meanLevel(levels));
}

}  // namespace footage
