// ui/luminance_graph.cpp — the lower graph: input and desired levels of all frames.
#include "ui/luminance_graph.h"

#include <algorithm>
#include <cstring>
#include <span>

#include "plugin/param_index.h"
#include "resources/string_table.h"
#include "ui/luminance_curve.h"
#include "ui/luminance_scale.h"
#include "ui/panel_colors.h"
#include "ui/panel_switches.h"
#include "ui/panel_text.h"

namespace varilum {
namespace {

// Host memory for one point a frame.
class PointBuffer {
 public:
  PointBuffer(const PF_InData& in, std::size_t count) noexcept
      : in_(in),
        count_(count),
        handle_(in.utils->host_new_handle(
            std::max<std::uint64_t>(count * sizeof(DRAWBOT_PointF32), kLeastBytes))),
        lock_(in, handle_) {}
  PointBuffer(const PointBuffer&) = delete;
  PointBuffer& operator=(const PointBuffer&) = delete;
  ~PointBuffer() {
    lock_.unlock();
    if (handle_ != nullptr) in_.utils->host_dispose_handle(handle_);
  }

  explicit operator bool() const noexcept { return static_cast<bool>(lock_); }
  std::span<DRAWBOT_PointF32> points() const noexcept { return {lock_.get(), count_}; }

 private:
  static constexpr std::uint64_t kLeastBytes = 256;

  const PF_InData& in_;
  std::size_t count_;
  void** handle_;
  Locked<DRAWBOT_PointF32> lock_;
};

// How far a label of `length` characters reaches left of where it is meant to end.
float labelReach(int length, float fontSize) noexcept {
  return static_cast<float>(length) * (fontSize - 2.0F) * 0.5F;
}

void drawAxisLabels(Painter& painter, const Font& font, const PanelLayout& layout,
                    std::int32_t frameCount) {
  const DRAWBOT_RectF32& frame = layout.luminanceFrame;
  const float size = layout.fontSize;
  const float baseline = frame.top + frame.height + 2.0F + size;
  const auto label = [&](float x, const char* text) {
    DRAWBOT_PointF32 origin{x, baseline};
    painter.drawText(font, color::kLabel, origin, text, size);
  };
  label(frame.left - labelReach(1, size), "0");
  const char* axis = lookupString(kTextTimeInFrames);
  const auto axisWidth = static_cast<float>(std::strlen(axis)) * (size - 4.0F);
  label((frame.left + frame.left + kGraphWidth - axisWidth) * 0.5F, axis);
  const FormattedLine last{"%d", frameCount};
  label(frame.left + kGraphWidth - labelReach(last.length(), size), last.text());
}

void drawCurve(Painter& painter, const DRAWBOT_ColorRGBA& color, std::span<const double> values,
               std::span<const DRAWBOT_PointF32> points, double bottom) {
  Pen pen{painter, color};
  for (FrameRun run = nextRun(values, bottom, 0); run.first < run.end && !painter.failed();
       run = nextRun(values, bottom, run.end)) {
    if (run.end - run.first > 1) {
      pen.stroke(points.subspan(run.first, run.end - run.first));
    } else {
      const Stroke lone = loneFrameStroke(points, run.first);
      const DRAWBOT_PointF32 ends[] = {lone.from, lone.to};
      pen.stroke(ends);
    }
  }
}

void drawTimeLine(Painter& painter, const DRAWBOT_RectF32& plot, const PanelData& data) {
  if (data.frame.outOfRange || !data.frame.exists) return;
  const float x =
      plot.left + static_cast<float>(frameOffset(plot, data.frame.index, data.state.frameCount));
  const DRAWBOT_PointF32 ends[] = {{x, plot.top}, {x, plot.top + plot.height}};
  painter.strokeLine(color::kTimeLine, ends);
}

void drawCurves(Painter& painter, const Font& font, const PanelLayout& layout,
                const LuminanceScale& scale, const PanelData& data) {
  const std::span<const double> inputs = data.levels.inputLuminance();
  const std::span<const double> desired = data.levels.desiredLuminance();
  const DRAWBOT_RectF32& plot = layout.luminancePlot;
  const PointBuffer buffer{data.in, inputs.size()};
  if (!buffer) return;

  const Variance variance = layOutCurve(inputs, plot, scale, buffer.points());
  data.state.inputVariance = variance.value;
  drawCurve(painter, color::kInput, inputs, buffer.points(), scale.bottom);
  data.state.outputVariance = layOutCurve(desired, plot, scale, buffer.points()).value;
  drawCurve(painter, color::kDesiredCurve, desired, buffer.points(), scale.bottom);
  drawTimeLine(painter, plot, data);

  // The output's variance is kept, but not shown: beside the input's it has never been.
  if (variance.pairs < 1) return;
  DRAWBOT_PointF32 origin{layout.luminanceFrame.left + 2.0F,
                          layout.luminanceFrame.top + 2.0F + layout.fontSize};
  painter.drawText(font, color::kInput, origin,
                   FormattedLine{lookupString(kTextInputVariance), variance.value}.text(),
                   layout.fontSize);
}

void drawScaleLabels(Painter& painter, const Font& font, const PanelLayout& layout,
                     const LuminanceScale& scale) {
  const DRAWBOT_RectF32& frame = layout.luminanceFrame;
  const float x = frame.left + kGraphWidth + 2.0F;
  const auto label = [&](float y, std::int32_t level) {
    DRAWBOT_PointF32 origin{x, y};
    painter.drawText(font, color::kLabel, origin,
                     FormattedLine{"%-6.0f", static_cast<double>(level)}.text(), layout.fontSize);
  };
  label(frame.top + 2.0F, scale.top);
  label(frame.top + frame.height + 2.0F, scale.bottom);
}

}  // namespace

void drawLuminanceGraph(Painter& painter, const Font& font, const PanelLayout& layout,
                        const PanelData& data) {
  painter.paintRect(color::kGraphFrame, layout.luminanceFrame);
  painter.paintRect(color::kPlot, layout.luminancePlot);
  const bool hasFrames = !data.levels.inputLuminance().empty();
  LuminanceScale scale;
  if (hasFrames && isOn(data.params, PARAM_ZOOM_LUMINANCE)) {
    scale = zoomedScale(data.levels.inputLuminance(), data.levels.desiredLuminance());
  }
  DRAWBOT_PointF32 title = layout.luminanceTitle;
  painter.drawText(font, color::kLabel, title, lookupString(kTextLuminanceGraph), layout.fontSize);
  drawAxisLabels(painter, font, layout, data.state.frameCount);
  if (hasFrames) drawCurves(painter, font, layout, scale, data);
  drawScaleLabels(painter, font, layout, scale);
}

}  // namespace varilum
