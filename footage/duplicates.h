// footage/duplicates.h — frames that repeat the one before: pull-down, held frames.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "footage/frame_measure.h"

namespace footage {

/// For each frame of a shot the index (in `shot`) of the frame that it repeats, or its own. An
/// original is always the first of its run and an original itself, so result[result[i]] ==
/// result[i] <= i, and frames between the two repeat the same one.
///
/// Repeats are exact or differ by no more than a codec's noise. A picture whose exposure moved is
/// no repeat, however still it stands; nor is one that moved a little, as in slow motion.
std::vector<std::int64_t> findDuplicates(std::span<const FrameMeasure> shot);

}  // namespace footage
