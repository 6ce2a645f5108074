// stats/compute_frame_stats.h — from a frame's pixels to its statistics.
#pragma once

#include "stats/frame_stats.h"
#include "stats/pixel_buffer.h"

namespace varilum {

// Measures rect (clamped to the buffer and written back) of a frame with a sampling step (< 1
// counts as 1). When stats already hold a walk with this step and clamped rect, they are only
// marked analysed. Otherwise both records are made fresh and filled; without pixel data they stay
// fresh. Level: mean luminance rounded to single precision, or, with favorBrighter, the sum of
// squares divided by the sum, which weighs bright pixels more.
void computeFrameStats(FrameStats& stats, FrameHistogram& histogram, const PixelBuffer& pixels,
                       Rect& rect, std::int32_t frame, bool favorBrighter,
                       std::int32_t step) noexcept;

}  // namespace varilum
