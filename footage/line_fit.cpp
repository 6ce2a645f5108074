// footage/line_fit.cpp — a straight line through points of which many may be wrong.
#include "footage/line_fit.h"

#include <algorithm>
#include <cstddef>

namespace footage {

double median(std::vector<double> values) {
  if (values.empty()) return 0;
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  if (values.size() % 2 == 1) return *middle;
  return 0.5 * (*middle + *std::max_element(values.begin(), middle));
}

FittedLine fitRobustLine(std::span<const FrameLevel> points) {
  if (points.empty()) return {};
  const std::size_t stride = (points.size() + kMostPaired - 1) / kMostPaired;
  std::vector<double> slopes;
  for (std::size_t i = 0; i < points.size(); i += stride) {
    for (std::size_t j = i + stride; j < points.size(); j += stride) {
      slopes.push_back((points[j].level - points[i].level) / (points[j].frame - points[i].frame));
    }
  }
  FittedLine line{points.front().frame, 0, median(std::move(slopes))};
  std::vector<double> rests;
  rests.reserve(points.size());
  for (const FrameLevel& point : points) {
    rests.push_back(point.level - line.slope * (point.frame - line.origin));
  }
  line.level = median(std::move(rests));
  return line;
}

}  // namespace footage
