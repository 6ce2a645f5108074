// cli/demo/demo_report.cpp — what the demo found: each kind of flicker, before and after, and what
// is left.
#include "cli/demo/demo_report.h"

#include <fmt/format.h>

#include <cmath>

#include "cli/demo/demo_flicker.h"
#include "footage/flicker.h"

namespace cli {
namespace {

/// Levels relative to the clean ones, so that only the exposure is left.
std::vector<double> exposures(std::span<const double> levels, std::span<const double> clean) {
  std::vector<double> ratios;
  for (std::size_t i = 0; i < levels.size(); ++i) {
    ratios.push_back(clean[i] > 0.0 ? levels[i] / clean[i] : -1.0);
  }
  return ratios;
}

DemoFigures figuresOf(const std::string& name, int first, int last, const DemoLevels& levels) {
  const auto part = [&](const std::vector<double>& all) {
    return std::span(all).subspan(static_cast<std::size_t>(first),
                                  static_cast<std::size_t>(last - first + 1));
  };
  const auto clean = part(levels.clean);
  DemoFigures figures;
  figures.name = name;
  figures.first = first;
  figures.last = last;
  figures.changeClean = footage::frameToFrameChange(clean);
  figures.changeInput = footage::frameToFrameChange(part(levels.input));
  figures.changeDesired = footage::frameToFrameChange(part(levels.desired));
  figures.changeOutput = footage::frameToFrameChange(part(levels.output));
  figures.errorInput = footage::flickerRms(exposures(part(levels.input), clean));
  figures.errorOutput = footage::flickerRms(exposures(part(levels.output), clean));
  return figures;
}

}  // namespace

std::vector<DemoFigures> demoFigures(const DemoLevels& levels) {
  std::vector<DemoFigures> figures;
  int first = 0;
  for (const FlickerPart& part : kFlickerParts) {
    const int last = first + kFramesPerPart - 1;
    figures.push_back(figuresOf(std::string(part.name), first, last, levels));
    first = last + 1;
  }
  figures.push_back(figuresOf("Whole clip", 0, kDemoFrames - 1, levels));
  return figures;
}

std::vector<std::string> demoTable(std::span<const DemoFigures> figures) {
  std::vector<std::string> lines{
      fmt::format("{:27}  {:-^48}  {:-^18}", "", " Frame-to-frame luminance change ",
                  " Exposure error "),
      fmt::format("{:<18}{:>9}  {:>8} {:>8} {:>10} {:>9} {:>9}  {:>9} {:>8}", "Kind of flicker",
                  "Frames", "before", "after", "times less", "desired", "original", "before",
                  "after")};
  for (const DemoFigures& f : figures) {
    lines.push_back(fmt::format(
        "{:<18}{:>9}  {:>7.2f}% {:>7.3f}% {:>10.1f} {:>8.3f}% {:>8.3f}%  {:>8.2f}% {:>7.3f}%",
        f.name, fmt::format("{}-{}", f.first, f.last), f.changeInput, f.changeOutput, f.factor(),
        f.changeDesired, f.changeClean, f.errorInput, f.errorOutput));
  }
  return lines;
}

std::vector<std::string> demoRemainder(std::span<const DemoFigures> figures, int smoothing,
                                       double pictureErrorInput, double pictureErrorOutput) {
  const DemoFigures& random = figures.front();
  const int window = 2 * smoothing + 1;
  return {
      "What is left:",
      fmt::format(
          "- The desired level is the mean of {} frames around each frame. It moves with the "
          "scene, by 1/{} of",
          window, window),
      fmt::format("  each step in the flicker, and wanders slowly by about 1/{:.1f} of the "
                  "flicker's deviation.",
                  std::sqrt(window)),
      fmt::format("- In the per-frame random part that is {:.3f} % of the {:.3f} % left; the clean "
                  "original itself moves",
                  random.changeDesired, random.changeOutput),
      fmt::format("  by {:.3f} %. The rest is rounding to 8 bits, grain, the codec, and measuring "
                  "a sample of the pixels.",
                  random.changeClean),
      fmt::format("- A flash of {:+.0f} % clips the brightest highlights, which cannot be brought "
                  "back, and lifts the {}",
                  100.0 * (kBrightFlash - 1.0), window - 1),
      fmt::format("  frames whose windows hold it by up to {:.1f} %.",
                  100.0 * (kBrightFlash - 1.0) / window),
      fmt::format("- Brightness aside, pictures differ from the clean original by {:.2f} of 255 "
                  "levels before and {:.2f} after.",
                  pictureErrorInput, pictureErrorOutput),
  };
}

std::string demoCsv(const DemoLevels& levels, std::span<const double> gains) {
  std::string csv = "frame,seconds,kind,gain,clean_level,input_level,desired_level,output_level\n";
  for (std::size_t i = 0; i < gains.size(); ++i) {
    csv += fmt::format("{},{:.2f},{},{:.6f},{:.4f},{:.4f},{:.4f},{:.4f}\n", i,
                       static_cast<double>(i) / kDemoFrameRate,
                       kFlickerParts[i / kFramesPerPart].name, gains[i], levels.clean[i],
                       levels.input[i], levels.desired[i], levels.output[i]);
  }
  return csv;
}

}  // namespace cli
