// cli/plot/plot.cpp — a clip's brightness over time as a picture, before and after.
#include "cli/plot/plot.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

#include "cli/plot/plot_canvas.h"
#include "cli/plot/plot_scale.h"
#include "footage/flicker.h"

namespace cli {
namespace {

constexpr int kWidth = 1600;
constexpr int kHeight = 900;
constexpr Box kLevels{124, 150, 1560, 580};
constexpr Box kChanges{124, 640, 1560, 790};
constexpr double kSecondsRow = 848;

constexpr Colour kPaper{0xFFFFFF};
constexpr Colour kInk{0x22272E};
constexpr Colour kSoftInk{0x66707C};
constexpr Colour kGrid{0xE6E9ED};
constexpr Colour kFrame{0xA9B1BA};
constexpr Colour kPartShade{0xF4F6F9};
constexpr Colour kMark{0xB4384A, 0.75};
constexpr Colour kInput{0x9AA5B4};
constexpr Colour kDesired{0xF09A36};
constexpr Colour kOutput{0x1459B3};

struct Curve {
  const char* name;
  const std::vector<double>* values;
  Colour colour;
  double width;
};

/// Maps frames and values of one panel to pixels.
struct Panel {
  Box box;
  double frames;  // in the clip
  ScaleRange range;

  double x(double frame) const {
    return box.left + (frame + 0.5) / std::max(1.0, frames) * box.width();
  }
  double y(double value) const {
    return box.bottom - (value - range.low) / range.length() * box.height();
  }
  std::vector<Pixel> pixels(std::span<const CurvePoint> points) const {
    std::vector<Pixel> out;
    out.reserve(points.size());
    for (const CurvePoint& p : points) out.push_back({x(p.frame), y(p.value)});
    return out;
  }
};

double crisp(double position) {
  return std::floor(position) + 0.5;
}

std::vector<Curve> curvesOf(const PlotData& data) {
  std::vector<Curve> curves{{"Input", &data.input, kInput, 1.6}};
  if (!data.desired.empty()) {
    curves.push_back({"Desired", &data.desired, kDesired, data.output.empty() ? 2.6 : 5.0});
  }
  if (!data.output.empty()) curves.push_back({"Output", &data.output, kOutput, 2.0});
  return curves;
}

void drawHeader(PlotCanvas& canvas, const PlotData& data, const std::vector<Curve>& curves) {
  canvas.text({kLevels.left, 44}, data.title,
              {.size = 30, .colour = kInk, .bold = true, .maxWidth = 900});
  std::string facts = fmt::format("{} frames", data.input.size());
  if (data.frameRate > 0.0) facts += fmt::format(" at {:.4g} frames/s", data.frameRate);
  canvas.text({kLevels.left, 84}, data.clipName.empty() ? facts : data.clipName + "   " + facts,
              {.size = 19, .colour = kSoftInk, .maxWidth = 900});
  double right = kLevels.right;
  for (auto curve = curves.rbegin(); curve != curves.rend(); ++curve) {
    right -=
        canvas.text({right, 46}, curve->name, {.size = 20, .colour = kInk, .align = Align::right});
    canvas.line({right - 46, 46}, {right - 10, 46}, curve->colour, std::max(4.0, curve->width));
    right -= 76;
  }
}

void drawParts(PlotCanvas& canvas, const Panel& panel, const PlotData& data, bool named) {
  for (std::size_t i = 0; i < data.parts.size(); ++i) {
    const PlotPart& part = data.parts[i];
    const double left = panel.x(static_cast<double>(part.first) - 0.5);
    const double right = panel.x(static_cast<double>(part.last) + 0.5);
    if (i % 2 == 0) canvas.fill({left, panel.box.top, right, panel.box.bottom}, kPartShade);
    if (named && right - left > 30.0) {
      canvas.text(
          {(left + right) / 2.0, panel.box.top - 18}, part.label,
          {.size = 17, .colour = kSoftInk, .align = Align::centre, .maxWidth = right - left - 6});
    }
  }
}

void drawValueAxis(PlotCanvas& canvas, const Panel& panel, int most, const std::string& unit,
                   const std::string& caption) {
  for (double tick : roundTicks(panel.range, most)) {
    const double y = crisp(panel.y(tick));
    canvas.line({panel.box.left, y}, {panel.box.right, y}, kGrid, 1.0);
    canvas.text({panel.box.left - 10, y}, tickLabel(tick) + unit,
                {.size = 17, .colour = kSoftInk, .align = Align::right});
  }
  canvas.text({26, (panel.box.top + panel.box.bottom) / 2.0}, caption,
              {.size = 17, .colour = kInk, .align = Align::centre, .turn = -90});
}

void drawBorder(PlotCanvas& canvas, const Box& box) {
  canvas.line({box.left, crisp(box.bottom)}, {box.right, crisp(box.bottom)}, kFrame, 1.0);
  canvas.line({crisp(box.left), box.top}, {crisp(box.left), box.bottom}, kFrame, 1.0);
}

void drawFrameGrid(PlotCanvas& canvas, const Panel& panel) {
  for (double tick : roundTicks({0.0, panel.frames - 1.0 + 1e-3}, 14, true)) {
    const double x = crisp(panel.x(tick));
    canvas.line({x, panel.box.top}, {x, panel.box.bottom}, kGrid, 1.0);
  }
}

void drawTimeAxes(PlotCanvas& canvas, const Panel& panel, double frameRate) {
  for (double tick : roundTicks({0.0, panel.frames - 1.0 + 1e-3}, 14, true)) {
    const double x = crisp(panel.x(tick));
    canvas.line({x, panel.box.bottom}, {x, panel.box.bottom + 6}, kFrame, 1.0);
    canvas.text({x, panel.box.bottom + 20}, tickLabel(tick),
                {.size = 17, .colour = kSoftInk, .align = Align::centre});
  }
  const TextStyle caption{.size = 17, .colour = kInk, .align = Align::right};
  canvas.text({panel.box.left - 40, panel.box.bottom + 20}, "frame", caption);
  if (frameRate <= 0.0) return;
  canvas.text({panel.box.left - 40, kSecondsRow}, "time", caption);
  canvas.line({panel.box.left, crisp(kSecondsRow - 16)}, {panel.box.right, crisp(kSecondsRow - 16)},
              kGrid, 1.0);
  const double total = panel.frames / frameRate;
  for (double tick : clockTicks(total, 14)) {
    const double x = crisp(panel.x(tick * frameRate));
    if (x > panel.box.right) continue;
    canvas.line({x, kSecondsRow - 16}, {x, kSecondsRow - 10}, kFrame, 1.0);
    canvas.text({x, kSecondsRow}, clockLabel(tick, total),
                {.size = 17, .colour = kSoftInk, .align = Align::centre});
  }
}

void drawMarks(PlotCanvas& canvas, const Panel& panel, const PlotData& data) {
  // Beyond this many the lines would hide the curves; ticks at the foot remain.
  const bool sparse = data.marks.size() <= 24;
  for (const PlotMark& mark : data.marks) {
    const double x = crisp(panel.x(static_cast<double>(mark.frame)));
    canvas.line({x, sparse ? panel.box.top : panel.box.bottom - 8}, {x, panel.box.bottom}, kMark,
                1.0, sparse ? 4.0 : 0.0);
    if (sparse && !mark.label.empty()) {
      canvas.text({x + 6, panel.box.top + 12}, mark.label, {.size = 15, .colour = kMark});
    }
  }
}

void drawCurve(PlotCanvas& canvas, const Panel& panel, std::span<const double> values,
               Colour colour, double width, bool filled) {
  for (const auto& line : thinnedCurve(values, static_cast<int>(panel.box.width()))) {
    const std::vector<Pixel> pixels = panel.pixels(line);
    if (filled) canvas.area(pixels, panel.box.bottom, {colour.rgb, 0.45});
    canvas.polyline(pixels, colour, width);
  }
}

/// "Frame-to-frame change, mean 8.10 % before, 0.41 % after (19.8 times less)".
std::string changeSummary(const PlotData& data) {
  const double before = footage::frameToFrameChange(data.input);
  if (data.output.empty()) return fmt::format("Frame-to-frame change   mean {:.2f} %", before);
  const double after = footage::frameToFrameChange(data.output);
  std::string text =
      fmt::format("Frame-to-frame change   mean {:.2f} % before, {:.2f} % after", before, after);
  if (after > 0.0 && before > after) text += fmt::format("  ({:.1f} times less)", before / after);
  return text;
}

double highestOf(const std::vector<double>& changes) {
  return changes.empty() ? 0.0 : *std::max_element(changes.begin(), changes.end());
}

/// Three times what all but the worst 5 % of the frames stay below, so that one flash or cut does
/// not flatten the rest of the strip; at least 0.1 %.
double usualTop(std::vector<double> changes) {
  if (changes.empty()) return 0.1;
  const auto rank = changes.begin() + static_cast<std::ptrdiff_t>((changes.size() - 1) * 19 / 20);
  std::nth_element(changes.begin(), rank, changes.end());
  return std::max(0.1, 3.0 * *rank);
}

void drawLevels(PlotCanvas& canvas, const PlotData& data, const std::vector<Curve>& curves) {
  const std::array all{data.input, data.desired, data.output};
  const Panel panel{kLevels, static_cast<double>(data.input.size()), levelRange(all, 4.0)};
  drawParts(canvas, panel, data, true);
  drawValueAxis(canvas, panel, 8, "", "Mean luminance (0-255)");
  drawFrameGrid(canvas, panel);
  canvas.clip(kLevels);
  drawMarks(canvas, panel, data);
  for (const Curve& curve : curves) {
    drawCurve(canvas, panel, *curve.values, curve.colour, curve.width, false);
  }
  canvas.unclip();
  drawBorder(canvas, kLevels);
}

void drawChanges(PlotCanvas& canvas, const PlotData& data) {
  const std::vector<double> before = frameChanges(data.input);
  const std::vector<double> after = frameChanges(data.output);
  const double highest = std::max(highestOf(before), highestOf(after));
  const double top = std::min(std::max(highest, 0.1), std::max(usualTop(before), usualTop(after)));
  const Panel panel{kChanges, static_cast<double>(data.input.size()), {0.0, top * 1.05}};
  drawParts(canvas, panel, data, false);
  drawValueAxis(canvas, panel, 5, " %", "Change");
  drawFrameGrid(canvas, panel);
  canvas.clip(kChanges);
  drawCurve(canvas, panel, before, kInput, 1.0, true);
  drawCurve(canvas, panel, after, kOutput, 1.6, true);
  canvas.unclip();
  drawBorder(canvas, kChanges);
  canvas.text({kChanges.left, kChanges.top - 20}, changeSummary(data),
              {.size = 18, .colour = kInk, .bold = true});
  if (highest > top) {
    canvas.text({kChanges.right, kChanges.top - 20},
                fmt::format("cut off: up to {:.0f} %", highest),
                {.size = 16, .colour = kSoftInk, .align = Align::right});
  }
  drawTimeAxes(canvas, panel, data.frameRate);
}

}  // namespace

void writeLuminancePlot(const std::filesystem::path& path, const PlotData& data) {
  PlotCanvas canvas{kWidth, kHeight, kPaper};
  const std::vector<Curve> curves = curvesOf(data);
  drawHeader(canvas, data, curves);
  drawLevels(canvas, data, curves);
  drawChanges(canvas, data);
  canvas.save(path);
}

}  // namespace cli
