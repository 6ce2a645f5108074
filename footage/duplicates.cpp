// footage/duplicates.cpp — frames that repeat the one before: pull-down, held frames.
#include "footage/duplicates.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <iterator>
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
constexpr std::int64_t kNeighbours = 24;
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

bool isNoise(const Difference& difference, double changing) {
  return difference.mean <= kNoiseMean && difference.most <= kNoiseMost &&
         difference.rest < kShareOfChange * changing && difference.explained <= kExplainedByGain;
}

}  // namespace

void DuplicateFinder::add(const FrameMeasure& frame) {
  double change = 0;
  if (added_ > 0) {
    const Difference difference = differenceOf(pending_.back(), frame);
    // What all but a little of comes from the light tells nothing about movement: colours that are
    // clipped leave a rest, too.
    if (difference.explained < kAllLight) change = difference.rest;
  }
  pending_.push_back(frame);
  changes_.push_back(change);
  ++added_;
  if (added_ > decided_ + kNeighbours) decide();
}

void DuplicateFinder::finish() {
  while (decided_ < added_) decide();
}

/// The third largest change around the frame that is next: in a repeating clip that of pictures
/// that differ.
double DuplicateFinder::changeAround() const {
  std::vector<double> around;
  const std::int64_t last = std::min(decided_ + kNeighbours, added_ - 1);
  for (std::int64_t i = std::max<std::int64_t>(first_, 1); i <= last; ++i) {
    if (i != decided_) around.push_back(changes_[static_cast<std::size_t>(i - first_)]);
  }
  if (std::ssize(around) <= kPassedOver) return 0;
  const auto at = around.begin() + kPassedOver;
  std::nth_element(around.begin(), at, around.end(), std::greater<>());
  return *at;
}

void DuplicateFinder::decide() {
  const bool begins = decided_ == 0;
  const FrameMeasure& frame = pending_[begins ? 0 : 1];
  // The original as well as the frame before: else slow movement would creep through.
  const auto repeats = [&] {
    if (begins || !sameSize(originalFrame_, frame)) return false;
    if (originalFrame_.hash == frame.hash) return true;
    const double changing = changeAround();
    return isNoise(differenceOf(pending_.front(), frame), changing) &&
           isNoise(differenceOf(originalFrame_, frame), changing);
  };
  if (!repeats()) {
    original_ = decided_;
    originalFrame_ = frame;
  }
  sink_(original_, frame);
  if (!begins) pending_.pop_front();
  ++decided_;
  if (first_ + kNeighbours <= decided_) {
    changes_.pop_front();
    ++first_;
  }
}

std::vector<std::int64_t> findDuplicates(std::span<const FrameMeasure> shot) {
  std::vector<std::int64_t> originals;
  DuplicateFinder finder(
      [&](std::int64_t original, const FrameMeasure&) { originals.push_back(original); });
  for (const FrameMeasure& frame : shot) finder.add(frame);
  finder.finish();
  return originals;
}

}  // namespace footage
