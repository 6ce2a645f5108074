// render/render_areas.cpp — rectangles of an output frame.
#include "render/render_areas.h"

#include <algorithm>
#include <limits>

namespace varilum {
namespace {

// Sizes and origins come from outside: their sums are kept in range.
std::int32_t saturated(std::int64_t value) noexcept {
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(
      value, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()));
}
std::int32_t add(std::int32_t a, std::int32_t b) noexcept {
  return saturated(std::int64_t{a} + b);
}

}  // namespace

Rect bannerRect(const FrameArea& frame) noexcept {
  const std::int32_t height = frame.width / 8;
  const std::int32_t top = saturated((std::int64_t{frame.height} - height) / 2 + frame.top);
  return {frame.left, top, add(frame.left, frame.width), add(top, height)};
}

Rect cornerRect(const FrameArea& frame) noexcept {
  const std::int32_t width = frame.width / 4;
  return {frame.left, frame.top, add(frame.left, width), add(frame.top, width / 10)};
}

PF_Rect clippedArea(const FrameArea& frame, const PF_EffectWorld& input,
                    const PF_EffectWorld& output) noexcept {
  return {std::max(frame.left, 0), std::max(frame.top, 0),
          std::min({add(frame.left, frame.width), input.width, output.width}),
          std::min({add(frame.top, frame.height), input.height, output.height})};
}

void uniteWith(PF_LRect& rect, const PF_LRect& other) noexcept {
  if (isEmpty(other)) return;
  if (isEmpty(rect)) {
    rect = other;
    return;
  }
  rect = {std::min(rect.left, other.left), std::min(rect.top, other.top),
          std::max(rect.right, other.right), std::max(rect.bottom, other.bottom)};
}

}  // namespace varilum
