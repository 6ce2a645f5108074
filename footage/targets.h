// footage/targets.h — which level each frame of a shot should have.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace footage {

// All take the input level of each frame of a shot, in any unit, and give the target of each frame,
// frames without a level included. A level of 0 or less (or NaN) marks a frame without one; it
// takes no part. Without any level the targets are all 0.
//
// Near the ends of a shot windows do not shrink to one side: a straight rise stays straight up to
// the first and last frame.

/// Robust line (Theil & Sen) through the levels of 2 * radius + 1 frames, which is their median
/// where the light is steady, smoothed. Every fourth frame may be an outlier.
std::vector<double> medianTarget(std::span<const double> levels, int radius);

/// Quadratic least-squares fit to the levels of 2 * radius + 1 frames (Savitzky & Golay 1964),
/// taken in its middle; within radius of an end, the fit to that end's window.
std::vector<double> savitzkyGolayTarget(std::span<const double> levels, int radius);

/// Locally weighted straight line (loess; Cleveland 1979) over 2 * radius + 1 frames, near an end
/// over those at that end. The weight (1 - u^2)^2, u = distance / (farthest frame's distance + 1),
/// lets no frame enter or leave the window with a jolt, as a plain mean does: of kernels that long
/// about the smallest second difference that uncorrelated flicker can leave.
std::vector<double> loessTarget(std::span<const double> levels, int radius);

/// The median level, for all frames.
std::vector<double> constantTarget(std::span<const double> levels);

/// A straight line from the level around frame `from` to that around frame `to` (indices into
/// `levels`, either order, clamped), held before and after. The levels are robust: frames
/// within `radius` on both sides are looked at, so neither frame needs to be a good one.
std::vector<double> rampTarget(std::span<const double> levels, std::int64_t from, std::int64_t to,
                               int radius);

/// A point of a curve.
struct LevelPoint {
  std::int64_t frame = 0;
  double level = 0;
};

/// Straight between points, held before the first and after the last; one target a frame for frames
/// 0..frameCount - 1. Points rise by frame (frames outside the shot count for the slopes). No
/// points: all 0.
std::vector<double> pointsTarget(std::span<const LevelPoint> points, std::int64_t frameCount);

}  // namespace footage
