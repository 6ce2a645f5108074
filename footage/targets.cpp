// footage/targets.cpp — which level each frame of a shot should have.
#include "footage/targets.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <iterator>

#include "footage/line_fit.h"

namespace footage {
namespace {

bool hasLevel(double level) {
  return level > 0 && std::isfinite(level);
}

std::vector<double> presentLevels(std::span<const double> levels) {
  std::vector<double> present;
  std::copy_if(levels.begin(), levels.end(), std::back_inserter(present), hasLevel);
  return present;
}

/// Frames first..last, both within a shot.
struct Window {
  std::size_t first = 0;
  std::size_t last = 0;
};

std::vector<FrameLevel> pointsIn(std::span<const double> levels, const Window& window) {
  std::vector<FrameLevel> points;
  for (std::size_t i = window.first; i <= window.last; ++i) {
    if (hasLevel(levels[i])) points.push_back({static_cast<double>(i), levels[i]});
  }
  return points;
}

Window around(std::size_t frame, std::size_t radius, std::size_t count) {
  return {frame - std::min(frame, radius), std::min(frame + radius, count - 1)};
}

/// 2 * radius + 1 frames around the frame, or those at the end that it is too near to.
Window fullWindow(std::size_t frame, std::size_t radius, std::size_t count) {
  const std::size_t width = std::min(2 * radius + 1, count);
  const std::size_t first = std::min(frame - std::min(frame, radius), count - width);
  return {first, first + width - 1};
}

/// `curve` of the frames from the first to the last with a level, held beyond them.
template <typename Curve>
std::vector<double> overLevels(std::span<const double> levels, Curve curve) {
  const auto first = std::find_if(levels.begin(), levels.end(), hasLevel);
  if (first == levels.end()) return std::vector<double>(levels.size(), 0.0);
  const auto last = std::find_if(levels.rbegin(), levels.rend(), hasLevel).base();
  std::vector<double> targets = curve(std::span<const double>(first, last));
  targets.insert(targets.begin(), static_cast<std::size_t>(first - levels.begin()),
                 targets.front());
  targets.resize(levels.size(), targets.back());
  return targets;
}

std::size_t windowRadius(int radius) {
  return static_cast<std::size_t>(std::max(radius, 0));
}

/// Whether a window has levels on both sides of the frame (or at it): else its fit would reach out
/// into a gap.
bool holds(std::span<const double> levels, const Window& window, std::size_t frame) {
  const auto begin = levels.begin();
  const auto at = [begin](std::size_t i) { return begin + static_cast<std::ptrdiff_t>(i); };
  return std::any_of(at(window.first), at(frame + 1), hasLevel) &&
         std::any_of(at(frame), at(window.last + 1), hasLevel);
}

/// Applies fit(window, frame) to each frame that its window holds; the others are filled in.
template <typename Fit>
std::vector<double> fitted(std::span<const double> levels, std::size_t radius, Fit fit) {
  std::vector<LevelPoint> points;
  for (std::size_t i = 0; i < levels.size(); ++i) {
    const Window window = fullWindow(i, radius, levels.size());
    if (holds(levels, window, i)) {
      points.push_back({static_cast<std::int64_t>(i), fit(window, i)});
    }
  }
  return pointsTarget(points, static_cast<std::int64_t>(levels.size()));
}

/// Means of windows that shrink on both sides alike near the ends, so that a slope stays one.
std::vector<double> evenMeans(std::span<const double> values, std::size_t radius) {
  std::vector<double> means(values.size());
  for (std::size_t i = 0; i < values.size(); ++i) {
    const std::size_t reach = std::min({radius, i, values.size() - 1 - i});
    double sum = 0;
    for (std::size_t j = i - reach; j <= i + reach; ++j) sum += values[j];
    means[i] = sum / static_cast<double>(2 * reach + 1);
  }
  return means;
}

/// Sums of the least-squares problem with x = 0 at the frame in question, in units of `scale`.
struct Moments {
  double n = 0, x = 0, xx = 0, xxx = 0, xxxx = 0, y = 0, xy = 0, xxy = 0;
};

/// `weigh` takes a frame's distance from the one in question.
template <typename Weigh>
Moments momentsOf(std::span<const double> levels, const Window& window, std::size_t frame,
                  Weigh weigh) {
  const double scale = static_cast<double>(window.last - window.first + 1);
  Moments m;
  for (std::size_t i = window.first; i <= window.last; ++i) {
    const double y = levels[i];
    if (!hasLevel(y)) continue;
    const double x = (static_cast<double>(i) - static_cast<double>(frame)) / scale;
    const double w = weigh(frame > i ? frame - i : i - frame);
    m.n += w;
    m.x += w * x;
    m.xx += w * x * x;
    m.xxx += w * x * x * x;
    m.xxxx += w * x * x * x * x;
    m.y += w * y;
    m.xy += w * x * y;
    m.xxy += w * x * x * y;
  }
  return m;
}

/// Value at x = 0 of the least-squares line (a mean when there is but one x).
double lineAtZero(const Moments& m) {
  const double determinant = m.n * m.xx - m.x * m.x;
  if (determinant < 1e-12) return m.y / m.n;
  return (m.xx * m.y - m.x * m.xy) / determinant;
}

/// Value at x = 0 of the least-squares parabola, by Cramer's rule; the line's where three x lack.
double parabolaAtZero(const Moments& m) {
  const double a = m.xx * m.xxxx - m.xxx * m.xxx;
  const double b = m.x * m.xxxx - m.xx * m.xxx;
  const double c = m.x * m.xxx - m.xx * m.xx;
  const double determinant = m.n * a - m.x * b + m.xx * c;
  if (m.n < 3 || std::abs(determinant) < 1e-9) return lineAtZero(m);
  return (m.y * a - m.xy * b + m.xxy * c) / determinant;
}

double robustLevel(std::span<const double> levels, std::size_t frame, std::size_t radius) {
  for (;; radius = 2 * radius + 1) {
    const Window window = around(frame, radius, levels.size());
    const std::vector<FrameLevel> points = pointsIn(levels, window);
    if (!points.empty()) return fitRobustLine(points).at(static_cast<double>(frame));
  }
}

}  // namespace

std::vector<double> medianTarget(std::span<const double> levels, int radius) {
  const std::size_t reach = windowRadius(radius);
  return overLevels(levels, [reach](std::span<const double> shot) {
    // Lines through medians rather than medians, which lag behind a rise where a window is uneven.
    const std::vector<double> medians =
        fitted(shot, reach, [shot](const Window& window, std::size_t frame) {
          return fitRobustLine(pointsIn(shot, window)).at(static_cast<double>(frame));
        });
    return evenMeans(medians, (reach + 1) / 2);
  });
}

std::vector<double> savitzkyGolayTarget(std::span<const double> levels, int radius) {
  const std::size_t reach = windowRadius(radius);
  return overLevels(levels, [reach](std::span<const double> shot) {
    return fitted(shot, reach, [shot, reach](const Window& window, std::size_t frame) {
      const Moments moments = momentsOf(shot, window, frame, [](std::size_t) { return 1.0; });
      const std::size_t inside = std::min({frame, shot.size() - 1 - frame, reach});
      // A parabola's end follows the last frame too much; a line's less than half as much.
      const double share =
          reach == 0 ? 1.0 : static_cast<double>(inside) / static_cast<double>(reach);
      return share * parabolaAtZero(moments) + (1 - share) * lineAtZero(moments);
    });
  });
}

std::vector<double> loessTarget(std::span<const double> levels, int radius) {
  const std::size_t reach = windowRadius(radius);
  return overLevels(levels, [reach](std::span<const double> shot) {
    return fitted(shot, reach, [shot](const Window& window, std::size_t frame) {
      const std::size_t farthest = std::max(frame - window.first, window.last - frame);
      return lineAtZero(momentsOf(shot, window, frame, [farthest](std::size_t distance) {
        const double u = static_cast<double>(distance) / static_cast<double>(farthest + 1);
        return (1 - u * u) * (1 - u * u);
      }));
    });
  });
}

std::vector<double> constantTarget(std::span<const double> levels) {
  return std::vector<double>(levels.size(), median(presentLevels(levels)));
}

std::vector<double> rampTarget(std::span<const double> levels, std::int64_t from, std::int64_t to,
                               int radius) {
  if (std::none_of(levels.begin(), levels.end(), hasLevel)) {
    return std::vector<double>(levels.size(), 0.0);
  }
  const auto last = static_cast<std::int64_t>(levels.size()) - 1;
  const auto pointAt = [&](std::int64_t frame) -> LevelPoint {
    const std::int64_t inside = std::clamp<std::int64_t>(frame, 0, last);
    return {inside, robustLevel(levels, static_cast<std::size_t>(inside), windowRadius(radius))};
  };
  const std::array<LevelPoint, 2> points{pointAt(std::min(from, to)), pointAt(std::max(from, to))};
  return pointsTarget(points, last + 1);
}

std::vector<double> pointsTarget(std::span<const LevelPoint> points, std::int64_t frameCount) {
  std::vector<double> targets(static_cast<std::size_t>(std::max<std::int64_t>(frameCount, 0)), 0.0);
  if (points.empty()) return targets;
  std::size_t next = 0;  // first point at or after the frame
  for (std::int64_t frame = 0; frame < frameCount; ++frame) {
    while (next < points.size() && points[next].frame < frame) ++next;
    double& target = targets[static_cast<std::size_t>(frame)];
    if (next == points.size()) {
      target = points.back().level;
    } else if (next == 0 || points[next].frame == frame) {
      target = points[next].level;
    } else {
      const LevelPoint& before = points[next - 1];
      const LevelPoint& after = points[next];
      const double share = static_cast<double>(frame - before.frame) /
                           static_cast<double>(after.frame - before.frame);
      target = before.level + share * (after.level - before.level);
    }
  }
  return targets;
}

}  // namespace footage
