// footage/flicker.h — how much a clip flickers, in three figures.
#pragma once

#include <cstddef>
#include <span>

namespace footage {

/// Frames in the centred window of flickerRms(), fewer at both ends of the clip.
inline constexpr std::size_t kFlickerWindow = 15;

// All take the mean level of each frame, in any unit, in order. A negative level (or NaN) marks a
// frame without a measurement: it takes no part, and no difference is taken across it. 0 is a black
// frame and counts like any other. All give percent, never NaN; where there is nothing to compare
// (too few frames, nothing but black) they give 0.

/// Each level divided by the mean of the kFlickerWindow frames around it, minus 1; root mean
/// square. Movement slower than the window hardly counts.
double flickerRms(std::span<const double> levels);

/// Mean absolute first difference, relative to the mean level: the step from frame to frame.
double frameToFrameChange(std::span<const double> levels);

/// Mean absolute second difference, relative to the mean level: a steady ramp has none.
double jerk(std::span<const double> levels);

}  // namespace footage
