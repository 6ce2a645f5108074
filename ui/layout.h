// ui/layout.h — where everything stands in the panel.
//
// All in the coordinates of the effect window, in pixels. Plain arithmetic, no host calls.
#pragma once

#include <cstdint>

#include "hostapi/geometry.h"
#include "hostapi/suites/drawbot.h"
#include "stats/frame_stats.h"

namespace varilum {

inline constexpr float kPanelWidth = 400.0F;
inline constexpr float kPanelHeight = 332.0F;
inline constexpr float kGraphWidth = 339.0F;
inline constexpr float kHistogramGraphHeight = 139.0F;

struct PanelLayout {
  DRAWBOT_RectF32 panel;
  DRAWBOT_RectF32 histogramFrame;
  DRAWBOT_RectF32 histogramPlot;  // inside the frame's one-pixel border
  DRAWBOT_RectF32 luminanceFrame;
  DRAWBOT_RectF32 luminancePlot;
  DRAWBOT_PointF32 histogramTitle;  // start of the baseline, as of all texts
  DRAWBOT_PointF32 luminanceTitle;
  float fontSize;  // also the distance between lines
};

// The panel in the area that the host gave its control.
PanelLayout layOutPanel(const PF_Rect& area, float fontSize) noexcept;

// What is kept of a layout for the mouse. Both bottoms count from the left edge: they have always
// been kept so, and nobody reads them.
Rect keptPanelRect(const PanelLayout& layout) noexcept;
Rect keptPlotRect(const PanelLayout& layout) noexcept;

// A plot's size in whole pixels.
std::int32_t plotWidth(const DRAWBOT_RectF32& plot) noexcept;
std::int32_t plotHeight(const DRAWBOT_RectF32& plot) noexcept;

// Position of a level (0..255, its whole part counts) on the histogram's axis.
float levelX(const DRAWBOT_RectF32& plot, double level) noexcept;

// A triangle on the histogram's axis and the area where it takes clicks.
struct Marker {
  DRAWBOT_PointF32 apex;
  DRAWBOT_PointF32 left;  // corners of the base
  DRAWBOT_PointF32 right;
  Rect hit;
};

// Points down onto the plot's bottom edge, from inside.
Marker inputMarker(const PanelLayout& layout, double level) noexcept;
// Points up at the plot, from below its frame.
Marker desiredHandle(const PanelLayout& layout, double level) noexcept;

// Right and bottom edges are outside. Points are 64-bit: they are sums of what the host gives.
bool contains(const Rect& rect, std::int64_t x, std::int64_t y) noexcept;

}  // namespace varilum
