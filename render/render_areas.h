// render/render_areas.h — rectangles of an output frame.
#pragma once

#include <cstdint>

#include "hostapi/geometry.h"
#include "hostapi/world.h"
#include "stats/frame_stats.h"

namespace varilum {

// A frame's place and size, in output pixels.
struct FrameArea {
  std::int32_t left;
  std::int32_t top;
  std::int32_t width;
  std::int32_t height;
};

// The notice: full width, an eighth of the width high, centred from top to bottom.
Rect bannerRect(const FrameArea& frame) noexcept;

// A quarter of the width, and a tenth of that high, in the upper left corner.
Rect cornerRect(const FrameArea& frame) noexcept;

// The part of the frame that both images have; empty when there is none.
PF_Rect clippedArea(const FrameArea& frame, const PF_EffectWorld& input,
                    const PF_EffectWorld& output) noexcept;

template <class AnyRect>
bool isEmpty(const AnyRect& rect) noexcept {
  return rect.left >= rect.right || rect.top >= rect.bottom;
}

// Smallest rectangle around both; an empty one adds nothing.
void uniteWith(PF_LRect& rect, const PF_LRect& other) noexcept;

}  // namespace varilum
