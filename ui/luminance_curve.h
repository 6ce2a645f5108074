// ui/luminance_curve.h — the points of a curve over all frames, and where it has gaps.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "hostapi/suites/drawbot.h"
#include "ui/luminance_scale.h"

namespace varilum {

// Mean absolute change from one frame to the next, over the pairs of frames that both have a
// level; with a single pair its change, without any 0.
struct Variance {
  double value = 0.0;
  std::int64_t pairs = 0;
};

// Offset of a frame from the plot's left edge; 0 in a layer of one frame.
std::int64_t frameOffset(const DRAWBOT_RectF32& plot, std::int64_t frame,
                         std::int64_t count) noexcept;

// One point a value, kept on the panel and above the plot's lower edge, and the values' variance,
// in one pass. points holds at least as many as values.
Variance layOutCurve(std::span<const double> values, const DRAWBOT_RectF32& plot,
                     const LuminanceScale& scale, std::span<DRAWBOT_PointF32> points) noexcept;

// Consecutive frames [first, end).
struct FrameRun {
  std::size_t first;
  std::size_t end;
};

// The next longest run, from `from` on, of values above bottom; empty at the end of values when
// there is none.
FrameRun nextRun(std::span<const double> values, double bottom, std::size_t from) noexcept;

// The stroke that shows a lone frame, at its height: to the next frame, or, where there is none,
// one pixel up to it (in a layer of one frame, from it).
struct Stroke {
  DRAWBOT_PointF32 from;
  DRAWBOT_PointF32 to;
};
Stroke loneFrameStroke(std::span<const DRAWBOT_PointF32> points, std::size_t frame) noexcept;

}  // namespace varilum
