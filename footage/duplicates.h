// footage/duplicates.h — frames that repeat the one before: pull-down, held frames.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <span>
#include <utility>
#include <vector>

#include "footage/frame_measure.h"

namespace footage {

/// Finds the frames of a shot that repeat one before while they come in, in order. However long the
/// shot, it holds the few frames that are not decided yet and the one that may be repeated.
///
/// Repeats are exact or differ by no more than a codec's noise. A picture whose exposure moved is
/// no repeat, however still it stands; nor is one that moved a little, as in slow motion.
class DuplicateFinder {
 public:
  /// Told of each frame in order: the number (in the shot) of the frame that it repeats, or its own
  /// number. What is repeated is always the first of its run and no repeat itself, so frames
  /// between the two repeat the same one.
  using Sink = std::function<void(std::int64_t original, const FrameMeasure& frame)>;

  explicit DuplicateFinder(Sink sink) : sink_(std::move(sink)) {}

  /// The sink is told of a frame some 24 frames later.
  void add(const FrameMeasure& frame);
  /// After the last frame of the shot: tells the sink of the rest.
  void finish();

 private:
  void decide();
  double changeAround() const;

  Sink sink_;
  std::deque<FrameMeasure> pending_;  // not decided, and the frame before them if there is one
  std::deque<double> changes_;        // of the frames around the one that is next, from `first_` on
  std::int64_t first_ = 0;
  std::int64_t added_ = 0;
  std::int64_t decided_ = 0;
  std::int64_t original_ = 0;
  FrameMeasure originalFrame_;
};

/// For each frame of a shot what it repeats, as a DuplicateFinder tells it.
std::vector<std::int64_t> findDuplicates(std::span<const FrameMeasure> shot);

}  // namespace footage
