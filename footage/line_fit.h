// footage/line_fit.h — a straight line through points of which many may be wrong.
#pragma once

#include <span>
#include <vector>

namespace footage {

/// The middle one by size, or the mean of the two middle ones. Takes a copy to sort; of an empty
/// one 0.
double median(std::vector<double> values);

/// Level at x is `level + slope * (x - origin)`.
struct FittedLine {
  double origin = 0;
  double level = 0;
  double slope = 0;

  double at(double x) const noexcept { return level + slope * (x - origin); }
};

struct FrameLevel {
  double frame = 0;
  double level = 0;
};

/// Theil & Sen: the median of the slopes of all pairs (of at most kMostPaired points, evenly
/// chosen), and the median of what that leaves. Up to 29 % of the points may be anywhere. Frames
/// rise. One point: level; none: 0.
FittedLine fitRobustLine(std::span<const FrameLevel> points);
inline constexpr std::size_t kMostPaired = 60;

}  // namespace footage
