// stats/pixel_walk.h — one pass over a frame's sampled pixels, into histograms.
#pragma once

#include "stats/frame_stats.h"
#include "stats/pixel_buffer.h"
#include "stats/pixel_walk_kernels.h"

namespace varilum {

// Adds every step-th pixel of every step-th row of rect, from its top left corner on, to the four
// histograms. rect lies within the buffer; step >= 1. Levels of a pixel:
// 8-bit: the byte; 16-bit: (value >> 7) & 255, so that white, 32768, counts in bin 0;
// float: value x 255 in double, truncated, low 8 bits (values beyond 0..1 wrap; NaN and values
// beyond 32 bits count as level 0). Reads only; any thread; takes about 120 KB of stack.
// histogram.frame is left alone.
void walkPixels(const PixelBuffer& pixels, const Rect& rect, std::int32_t step,
                FrameHistogram& histogram) noexcept;

// The same, by kernels of the caller's choice: all give the same counts.
void walkPixels(const PixelBuffer& pixels, const Rect& rect, std::int32_t step,
                FrameHistogram& histogram, const WalkKernels& kernels) noexcept;

}  // namespace varilum
