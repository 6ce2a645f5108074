// ui/histogram_graph.cpp — the upper graph: the current frame's histogram, levels and counts.
#include "ui/histogram_graph.h"

#include "access/param_checkout.h"
#include "plugin/param_index.h"
#include "resources/string_table.h"
#include "ui/histogram_outline.h"
#include "ui/panel_colors.h"
#include "ui/panel_switches.h"
#include "ui/panel_text.h"

namespace varilum {
namespace {

constexpr double kLeastClipping = 0.01;  // percent; less is not worth a line

struct Channel {
  std::uint32_t (FrameHistogram::*bins)[kLevels];
  std::int32_t showParameter;
  const DRAWBOT_ColorRGBA& color;
  std::uint32_t clippedText;
};

constexpr Channel kChannels[] = {
    {&FrameHistogram::red, PARAM_SHOW_RED, color::kRed, kTextRedClipped},
    {&FrameHistogram::green, PARAM_SHOW_GREEN, color::kGreen, kTextGreenClipped},
    {&FrameHistogram::blue, PARAM_SHOW_BLUE, color::kBlue, kTextBlueClipped},
};

void drawHistograms(Painter& painter, const PanelLayout& layout, const PanelData& data) {
  const FrameHistogram& histogram = data.state.currentHistogram;
  const std::int32_t peak = data.state.currentStats.peak;
  painter.paintShape(color::kOutline, color::kHistogramFill,
                     outlineHistogram(histogram.luminance, peak, layout.histogramPlot));
  for (const Channel& channel : kChannels) {
    if (!isOn(data.params, channel.showParameter)) continue;
    painter.strokeLine(channel.color,
                       outlineHistogram(histogram.*channel.bins, peak, layout.histogramPlot));
  }
}

void drawMarker(Painter& painter, const Marker& marker, const DRAWBOT_ColorRGBA& fill) {
  const DRAWBOT_PointF32 triangle[] = {marker.apex, marker.left, marker.right, marker.apex};
  painter.paintShape(color::kOutline, fill, triangle);
}

void drawMarkers(Painter& painter, const PanelLayout& layout, SequenceState& state) {
  const Marker input = inputMarker(layout, state.currentInput);
  const Marker desired = desiredHandle(layout, state.currentDesired);
  state.inputMarkerRect = input.hit;
  state.desiredHandleRect = desired.hit;
  drawMarker(painter, input, color::kInput);
  drawMarker(painter, desired, color::kDesiredHandle);
}

void drawLevels(Painter& painter, TextColumn& column, const PanelData& data) {
  if (data.state.currentStats.pixelCount < 1) {
    ParamCheckout passedOver{data.in, PARAM_DONT_DEFLICKER, data.in.current_time};
    painter.note(passedOver.error());
    const bool on = passedOver.error() == 0 && passedOver.value().u.bd.value != 0;
    column.line(color::kNotice, lookupString(on ? kTextPassedOver : kTextCalculating));
    painter.note(passedOver.checkIn());
    return;
  }
  const bool withSpread = data.state.correctionMethod == kCorrectionShift;
  const auto i = static_cast<std::size_t>(data.frame.index);
  // The shorter formats leave the spread out.
  const FormattedLine input{lookupString(withSpread ? kTextInputAndSpread : kTextInputLevel),
                            data.levels.inputLuminance()[i], data.levels.inputSpread()[i]};
  const FormattedLine desired{lookupString(withSpread ? kTextDesiredAndSpread : kTextDesiredLevel),
                              data.levels.desiredLuminance()[i], data.levels.desiredSpread()[i]};
  column.line(color::kInput, input.text());
  column.line(color::kDesiredHandle, desired.text());
}

void drawClipping(TextColumn& column, float right, const SequenceState& state) {
  const double count = state.currentStats.pixelCount;
  for (const Channel& channel : kChannels) {
    const double percent = (state.currentHistogram.*channel.bins)[kLevels - 1] * 100.0 / count;
    if (!(percent > kLeastClipping)) continue;
    const FormattedLine text{lookupString(channel.clippedText), percent};
    // Right-aligned by a guess of six pixels a character.
    column.origin().x = right - static_cast<float>((text.length() * 3 - 3) * 2);
    column.line(channel.color, text.text());
  }
}

void drawCounts(TextColumn& column, const SequenceState& state) {
  const std::int32_t count = state.currentStats.pixelCount;
  const std::int32_t total = state.currentStats.totalPixels;
  const bool isEmpty = count < 1 || total < 1;
  const DRAWBOT_ColorRGBA& color = isEmpty ? color::kNotice : color::kLabel;
  if (isEmpty) {
    column.line(color, lookupString(kTextEmptyRectangle));
  } else {
    column.line(color, FormattedLine{"%d of %d pixels analyzed", count, total}.text());
  }
  if (count < 1) {
    column.line(color, FormattedLine{"histIn->count = %d", count}.text());
  } else {
    const std::int64_t percent = std::int64_t{state.currentStats.belowTopCount} * 100 / count;
    column.line(color, FormattedLine{"%d%% unclipped", static_cast<int>(percent)}.text());
  }
}

void drawTexts(Painter& painter, const Font& font, const PanelLayout& layout,
               const PanelData& data) {
  const DRAWBOT_RectF32& frame = layout.histogramFrame;
  const float line = layout.fontSize;
  const float top = frame.top + 2.0F + line;
  const float right = frame.left + kGraphWidth + 2.0F;
  const bool inRange = !data.frame.outOfRange;

  if (inRange && data.frame.exists) {
    TextColumn levels{painter, font, {frame.left + 2.0F, top}, line};
    drawLevels(painter, levels, data);
  }
  if (inRange && data.state.currentStats.pixelCount > 0) {
    TextColumn clipping{painter, font, {right, top}, line};
    drawClipping(clipping, right, data.state);
  }
  TextColumn counts{painter, font, {right, top}, line};
  counts.line(color::kLabel, FormattedLine{"frame %d", data.frame.shown}.text());
  if (inRange) drawCounts(counts, data.state);
}

}  // namespace

void drawHistogramGraph(Painter& painter, const Font& font, const PanelLayout& layout,
                        const char* title, const PanelData& data) {
  painter.paintRect(color::kGraphFrame, layout.histogramFrame);
  painter.paintRect(color::kPlot, layout.histogramPlot);
  DRAWBOT_PointF32 titleOrigin = layout.histogramTitle;
  painter.drawText(font, color::kLabel, titleOrigin, title, layout.fontSize);
  if (!data.frame.outOfRange) {
    drawHistograms(painter, layout, data);
    drawMarkers(painter, layout, data.state);
  }
  drawTexts(painter, font, layout, data);
}

}  // namespace varilum
