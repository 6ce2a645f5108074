// footage/duplicates.cpp — frames that repeat the one before: pull-down, held frames.
#include "footage/duplicates.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <utility>

namespace footage {
namespace {

// What re-encoding does to a repeated picture, in levels of the thumbnail's cells, which are means
// of many pixels.
constexpr double kNoiseMean = 0.35;
constexpr double kNoiseMost = 4;
// Of what pictures change by around here, exposure aside. Where all stand still, whether or not the
// light flickers, none is taken for another.
constexpr double kShareOfChange = 0.3;
constexpr std::size_t kNeighbours = 24;
constexpr std::ptrdiff_t kPassedOver = 2;  // larger changes around: flashes
// A gain that explains more than this of a difference is an exposure, not noise.
constexpr double kExplainedByGain = 0.5;

// And more than this: nothing but the light changed.
constexpr double kAllLight = 0.9;
constexpr double kClipped = 200;  // above, some of a cell's pixels may be clipped

struct Difference {
  double mean = 0;       // absolute, levels
  double most = 0;       // of one cell
  double explained = 0;  // share of the squares that a gain accounts for
  double rest = 0;       // mean that the gain leaves
};

Difference differenceOf(const FrameMeasure& a, const FrameMeasure& b) {
  Difference difference;
  double squares = 0;
  double products = 0;
  double light = 0;
  const auto levels = [&](std::size_t i) {
    return std::pair{a.thumbnail[i] / 256.0, b.thumbnail[i] / 256.0};
  };
  for (std::size_t i = 0; i < a.thumbnail.size(); ++i) {
    const auto [before, after] = levels(i);
    const double step = after - before;
    difference.mean += std::abs(step);
    difference.most = std::max(difference.most, std::abs(step));
    if (std::max(before, after) > kClipped) continue;
    squares += step * step;
    products += step * before;
    light += before * before;
  }
  const double gain = light > 0 ? products / light : 0;
  for (std::size_t i = 0; i < a.thumbnail.size(); ++i) {
    const auto [before, after] = levels(i);
    if (std::max(before, after) <= kClipped) {
      difference.rest += std::abs(after - before - gain * before);
    }
  }
  difference.mean /= kThumbnailCells;
  difference.rest /= kThumbnailCells;
  if (squares > 0) difference.explained = gain * products / squares;
  return difference;
}

bool sameSize(const FrameMeasure& a, const FrameMeasure& b) {
  return a.width == b.width && a.height == b.height;
}

/// The third largest change around a frame: in a repeating clip that of pictures that differ.
double changeAround(const std::vector<double>& changes, std::size_t frame) {
  const std::size_t first = frame < kNeighbours ? 1 : frame - kNeighbours + 1;
  const std::size_t last = std::min(frame + kNeighbours, changes.size() - 1);
  std::vector<double> around;
  for (std::size_t i = std::max<std::size_t>(first, 1); i <= last; ++i) {
    if (i != frame) around.push_back(changes[i]);
  }
  if (static_cast<std::ptrdiff_t>(around.size()) <= kPassedOver) return 0;
  const auto at = around.begin() + kPassedOver;
  std::nth_element(around.begin(), at, around.end(), std::greater<>());
  return *at;
}

bool isNoise(const Difference& difference, double changing) {
  return difference.mean <= kNoiseMean && difference.most <= kNoiseMost &&
         difference.rest < kShareOfChange * changing && difference.explained <= kExplainedByGain;
}

}  // namespace

std::vector<std::int64_t> findDuplicates(std::span<const FrameMeasure> shot) {
  std::vector<double> changes(shot.size(), 0.0);
  for (std::size_t i = 1; i < shot.size(); ++i) {
    const Difference difference = differenceOf(shot[i - 1], shot[i]);
    // What all but a little of comes from the light tells nothing about movement: colours that are
    // clipped leave a rest, too.
    if (difference.explained < kAllLight) changes[i] = difference.rest;
  }
  std::vector<std::int64_t> originals(shot.size());
  std::size_t original = 0;
  for (std::size_t i = 0; i < shot.size(); ++i) {
    // The original as well as the frame before: else slow movement would creep through.
    const bool repeats =
        i > 0 && sameSize(shot[original], shot[i]) &&
        (shot[original].hash == shot[i].hash ||
         (isNoise(differenceOf(shot[i - 1], shot[i]), changeAround(changes, i)) &&
          isNoise(differenceOf(shot[original], shot[i]), changeAround(changes, i))));
    if (!repeats) original = i;
    originals[i] = static_cast<std::int64_t>(original);
  }
  return originals;
}

}  // namespace footage
