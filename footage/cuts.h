// footage/cuts.h — hard cuts between shots.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "footage/frame_measure.h"

namespace footage {

/// The frames that begin a new shot, rising; never frame 0, empty for a clip of one shot.
///
/// Pictures are compared with their exposure taken out, and across the frame in question: what was
/// before against what comes after. So exposure jumps, flashes of a few frames, black frames,
/// dissolves, fades, pans and repeated frames are no cuts, in colour or black and white.
std::vector<std::int64_t> findCuts(std::span<const FrameMeasure> frames);

/// Consecutive frames.
struct Shot {
  std::int64_t first = 0;
  std::int64_t count = 0;

  friend bool operator==(const Shot&, const Shot&) = default;
};

/// The shots between cuts, in order, covering frames 0..frameCount - 1. `cuts` rise, and may name 0
/// or frames beyond the end, which change nothing.
std::vector<Shot> shotsBetween(std::span<const std::int64_t> cuts, std::int64_t frameCount);

}  // namespace footage
