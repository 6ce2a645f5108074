// cli/plot/plot_scale.cpp — the arithmetic of a plot: ranges, ticks, and curves thinned to pixel
// columns.
#include "cli/plot/plot_scale.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace cli {
namespace {

bool measured(double value) {
  return value >= 0.0 && std::isfinite(value);
}

/// Smallest 1, 2 or 5 times a power of ten that is not below `least`.
double roundStep(double least) {
  const double power = std::pow(10.0, std::floor(std::log10(least)));
  for (double factor : {1.0, 2.0, 5.0}) {
    if (factor * power >= least * (1.0 - 1e-9)) return factor * power;
  }
  return 10.0 * power;
}

/// Multiples of `step` in `range`, whose ends may be missed by a rounding error.
std::vector<double> multiples(ScaleRange range, double step) {
  std::vector<double> ticks;
  const double first = std::ceil(range.low / step - 1e-9);
  const double last = std::floor(range.high / step + 1e-9);
  for (double k = first; k <= last; k += 1.0) ticks.push_back(k * step);
  return ticks;
}

void appendColumn(std::span<const double> values, std::size_t first, std::size_t last,
                  std::vector<CurvePoint>& line) {
  const auto begin = values.begin() + static_cast<std::ptrdiff_t>(first);
  const auto end = values.begin() + static_cast<std::ptrdiff_t>(last + 1);
  const auto [lowest, highest] = std::minmax_element(begin, end);
  std::array<std::size_t, 4> kept{first, static_cast<std::size_t>(lowest - values.begin()),
                                  static_cast<std::size_t>(highest - values.begin()), last};
  std::sort(kept.begin(), kept.end());
  const auto unique = std::unique(kept.begin(), kept.end());
  std::for_each(kept.begin(), unique, [&](std::size_t i) {
    line.push_back({static_cast<double>(i), values[i]});
  });
}

}  // namespace

ScaleRange levelRange(std::span<const std::vector<double>> curves, double minimumLength) {
  bool any = false;
  ScaleRange range{0.0, 0.0};
  for (const auto& curve : curves) {
    for (double value : curve) {
      if (!measured(value)) continue;
      range.low = any ? std::min(range.low, value) : value;
      range.high = any ? std::max(range.high, value) : value;
      any = true;
    }
  }
  if (!any) return {0.0, 255.0};
  const double margin = std::max(range.length() / 20.0, (minimumLength - range.length()) / 2.0);
  return {std::max(0.0, range.low - margin), range.high + margin};
}

std::vector<double> roundTicks(ScaleRange range, int most, bool wholeOnly) {
  double step = roundStep(range.length() / std::max(1, most - 1));
  if (wholeOnly) step = std::max(1.0, step);
  return multiples(range, step);
}

std::vector<double> clockTicks(double seconds, int most) {
  constexpr std::array kSteps{0.1,  0.2,   0.5,   1.0,   2.0,   5.0,    10.0,   15.0,   30.0,
                              60.0, 120.0, 300.0, 600.0, 900.0, 1800.0, 3600.0, 7200.0, 14400.0};
  const double least = seconds / std::max(1, most - 1);
  double step = roundStep(std::max(least, 0.01));
  if (least > 0.1 && least <= kSteps.back()) {
    step = *std::find_if(kSteps.begin(), kSteps.end(), [&](double s) { return s >= least; });
  }
  return multiples({0.0, seconds}, step);
}

std::string clockLabel(double seconds, double total) {
  if (total < 120.0) return fmt::format("{} s", tickLabel(seconds));
  const auto whole = std::llround(seconds);
  if (total < 3600.0) return fmt::format("{}:{:02}", whole / 60, whole % 60);
  return fmt::format("{}:{:02}:{:02}", whole / 3600, whole / 60 % 60, whole % 60);
}

std::string tickLabel(double value) {
  const double rounded = std::round(value * 1e6) / 1e6;
  return fmt::format("{}", rounded == 0.0 ? 0.0 : rounded);
}

std::vector<std::vector<CurvePoint>> thinnedCurve(std::span<const double> values, int columns) {
  const std::size_t perColumn = values.size() / static_cast<std::size_t>(std::max(1, columns));
  std::vector<std::vector<CurvePoint>> lines;
  for (std::size_t i = 0; i < values.size();) {
    if (!measured(values[i])) {
      ++i;
      continue;
    }
    std::size_t end = i;
    while (end < values.size() && measured(values[end])) ++end;
    auto& line = lines.emplace_back();
    while (i < end) {
      if (perColumn <= 2) {
        line.push_back({static_cast<double>(i), values[i]});
        ++i;
      } else {
        const std::size_t next = std::min(end, (i / perColumn + 1) * perColumn);
        appendColumn(values, i, next - 1, line);
        i = next;
      }
    }
  }
  return lines;
}

std::vector<double> frameChanges(std::span<const double> levels) {
  double sum = 0.0;
  std::size_t count = 0;
  for (double level : levels) {
    if (!measured(level)) continue;
    sum += level;
    ++count;
  }
  const double mean = count == 0 ? 0.0 : sum / static_cast<double>(count);
  std::vector<double> changes(levels.size(), -1.0);
  for (std::size_t i = 1; i < levels.size(); ++i) {
    if (!measured(levels[i - 1]) || !measured(levels[i])) continue;
    changes[i] = mean > 0.0 ? 100.0 * std::abs(levels[i] - levels[i - 1]) / mean : 0.0;
  }
  return changes;
}

}  // namespace cli
