// ui/layout.cpp — where everything stands in the panel.
#include "ui/layout.h"

#include <algorithm>
#include <limits>

#include "stats/number_conversion.h"

namespace varilum {
namespace {

constexpr float kGraphLeft = 8.0F;
constexpr float kHistogramTop = 12.0F;
constexpr float kLuminanceTop = 160.0F;  // of the lower half, above its title
constexpr float kBelowTitle = 2.0F;
constexpr float kLuminanceHeight = 156.0F;  // of the graph, were its two text lines not there
constexpr float kMarkerSize = 8.0F;         // half the width, and the height
constexpr std::int64_t kTopLevel = 255;

DRAWBOT_RectF32 inset(const DRAWBOT_RectF32& frame) noexcept {
  return {frame.left + 1.0F, frame.top + 1.0F, frame.width - 2.0F, frame.height - 2.0F};
}

std::int32_t saturatedSum(std::int32_t a, std::int32_t b) noexcept {
  return static_cast<std::int32_t>(
      std::clamp<std::int64_t>(std::int64_t{a} + b, std::numeric_limits<std::int32_t>::min(),
                               std::numeric_limits<std::int32_t>::max()));
}

// Left, top, and both sizes counted from the left edge.
Rect keptRect(const DRAWBOT_RectF32& rect) noexcept {
  const std::int32_t left = truncateToInt(rect.left);
  return {left, truncateToInt(rect.top), saturatedSum(left, truncateToInt(rect.width)),
          saturatedSum(left, truncateToInt(rect.height))};
}

// The pixels of a marker: its outline needs one more than its size.
Rect markerHit(float x, float top) noexcept {
  const std::int32_t left = truncateToInt(x - kMarkerSize);
  const std::int32_t y = truncateToInt(top);
  return {left, y, saturatedSum(left, 17), saturatedSum(y, 9)};
}

}  // namespace

PanelLayout layOutPanel(const PF_Rect& area, float fontSize) noexcept {
  const auto left = static_cast<float>(area.left);
  const auto top = static_cast<float>(area.top);
  const auto bottom = static_cast<float>(area.bottom);

  PanelLayout layout{};
  layout.panel = {left, top, kPanelWidth, std::min(bottom, top + kPanelHeight) - top};
  layout.histogramFrame = {left + kGraphLeft, top + kHistogramTop, kGraphWidth,
                           kHistogramGraphHeight};
  layout.histogramPlot = inset(layout.histogramFrame);
  layout.luminanceFrame = {left + kGraphLeft, top + kLuminanceTop + fontSize + kBelowTitle,
                           kGraphWidth, kLuminanceHeight - 2.0F * fontSize};
  layout.luminancePlot = inset(layout.luminanceFrame);
  layout.histogramTitle = {left, top + fontSize - 2.0F};
  layout.luminanceTitle = {left, top + kLuminanceTop + fontSize};
  layout.fontSize = fontSize;
  return layout;
}

Rect keptPanelRect(const PanelLayout& layout) noexcept {
  return keptRect(layout.panel);
}

Rect keptPlotRect(const PanelLayout& layout) noexcept {
  return keptRect(layout.histogramPlot);
}

std::int32_t plotWidth(const DRAWBOT_RectF32& plot) noexcept {
  return truncateToInt(plot.width);
}

std::int32_t plotHeight(const DRAWBOT_RectF32& plot) noexcept {
  return truncateToInt(plot.height);
}

float levelX(const DRAWBOT_RectF32& plot, double level) noexcept {
  const std::int64_t offset = std::int64_t{truncateToInt(level)} * plotWidth(plot) / kTopLevel;
  return plot.left + static_cast<float>(offset);
}

Marker inputMarker(const PanelLayout& layout, double level) noexcept {
  const float x = levelX(layout.histogramPlot, level);
  const float y = layout.histogramFrame.top + layout.histogramFrame.height - 1.0F;
  const float base = y - kMarkerSize;
  return {{x, y}, {x - kMarkerSize, base}, {x + kMarkerSize, base}, markerHit(x, base)};
}

Marker desiredHandle(const PanelLayout& layout, double level) noexcept {
  const float x = levelX(layout.histogramPlot, level);
  const float y = layout.histogramFrame.top + layout.histogramFrame.height;
  const float base = y + kMarkerSize;
  return {{x, y}, {x - kMarkerSize, base}, {x + kMarkerSize, base}, markerHit(x, y)};
}

bool contains(const Rect& rect, std::int64_t x, std::int64_t y) noexcept {
  return x >= rect.left && x < rect.right && y >= rect.top && y < rect.bottom;
}

}  // namespace varilum
