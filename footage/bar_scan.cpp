// footage/bar_scan.cpp — how far dark, even bars reach into one frame.
#include "footage/bar_scan.h"

#include <algorithm>
#include <cmath>

namespace footage {
namespace {

// Levels 0..255. A bar of scanned film is grey and grainy, but never this bright.
constexpr double kBrightestBar = 44;
constexpr double kLevelTolerance = 3;  // between a line's mean and the bar's
constexpr double kBrighter = 10;       // above the bar: no longer its noise
constexpr double kFewBrighter = 0.01;  // of a line: specks of dust
constexpr double kDeepestBar = 0.36;   // of the frame: an upright picture in a wide one
constexpr double kReach = 1.0 / 60;    // of the frame: where a soft edge has to end
constexpr int kSamplesALine = 200;
constexpr int kStrides = 100;  // of lines through the frame; where a bar ends, line by line

/// The frame seen from one edge: line 0 is the outermost.
class EdgeView {
 public:
  EdgeView(const std::uint8_t* first, std::ptrdiff_t toNextLine, std::ptrdiff_t toNextPixel,
           int lines, int length)
      : first_(first),
        toNextLine_(toNextLine),
        toNextSample_(toNextPixel * std::max(1, length / kSamplesALine)),
        lines_(lines),
        samples_(1 + (length - 1) / std::max(1, length / kSamplesALine)) {}

  int lines() const noexcept { return lines_; }
  int samples() const noexcept { return samples_; }
  double level(int line, int sample) const noexcept {
    const std::uint8_t* pixel = first_ + line * toNextLine_ + sample * toNextSample_;
    return 0.3 * pixel[1] + 0.59 * pixel[2] + 0.11 * pixel[3];
  }

 private:
  const std::uint8_t* first_;
  std::ptrdiff_t toNextLine_;
  std::ptrdiff_t toNextSample_;
  int lines_;
  int samples_;
};

struct Line {
  double mean = 0;
  double brighter = 0;  // share of the samples above `limit`
};

Line readLine(const EdgeView& view, int line, double limit) {
  double sum = 0;
  int brighter = 0;
  for (int sample = 0; sample < view.samples(); ++sample) {
    const double level = view.level(line, sample);
    sum += level;
    brighter += level > limit ? 1 : 0;
  }
  return {sum / view.samples(), static_cast<double>(brighter) / view.samples()};
}

/// Where the picture beyond a bar of `extent` lines is brighter than the bar, within reach.
double brighterBeyond(const EdgeView& view, int extent, double limit) {
  const int reach = std::max(3, static_cast<int>(std::lround(view.lines() * kReach)));
  const int last = std::min(extent + reach, view.lines());
  int brighter = 0;
  for (int sample = 0; sample < view.samples(); ++sample) {
    for (int line = extent; line < last; ++line) {
      if (view.level(line, sample) > limit) {
        ++brighter;
        break;
      }
    }
  }
  return static_cast<double>(brighter) / view.samples();
}

Bar scanEdge(const EdgeView& view) {
  const double outermost = readLine(view, 0, 0).mean;
  if (outermost > kBrightestBar) return {};
  double sum = outermost;  // of means, so that noise in the first line does not set the bar's level
  int counted = 1;
  double limit = outermost + kBrighter;
  const auto belongs = [&](int line) {
    const double level = sum / counted;
    limit = level + kBrighter;
    const Line read = readLine(view, line, limit);
    if (std::abs(read.mean - level) > kLevelTolerance || read.brighter > kFewBrighter) return false;
    sum += read.mean;
    ++counted;
    return true;
  };
  const int deepest = static_cast<int>(view.lines() * kDeepestBar);
  const int stride = std::max(1, view.lines() / kStrides);
  int extent = 0;
  while (extent <= deepest && belongs(extent)) extent += stride;
  if (extent > deepest) return {static_cast<std::uint16_t>(view.lines()), 0};
  const int end = extent;
  for (extent = std::max(0, end - stride + 1); extent < end && belongs(extent);) ++extent;
  if (extent == 0) return {};
  const double edge = brighterBeyond(view, extent, limit);
  return {static_cast<std::uint16_t>(extent), static_cast<std::uint8_t>(std::lround(100 * edge))};
}

}  // namespace

void scanBars(const ArgbRows& pixels, FrameMeasure& measure) {
  const std::uint8_t* topLeft = pixels.row(0);
  const std::uint8_t* bottomLeft = pixels.row(pixels.height - 1);
  const std::uint8_t* topRight = topLeft + 4 * static_cast<std::ptrdiff_t>(pixels.width - 1);
  const int width = std::min(pixels.width, 65535);
  const int height = std::min(pixels.height, 65535);
  measure.top = scanEdge({topLeft, pixels.rowBytes, 4, height, width});
  measure.bottom = scanEdge({bottomLeft, -pixels.rowBytes, 4, height, width});
  measure.left = scanEdge({topLeft, 4, pixels.rowBytes, width, height});
  measure.right = scanEdge({topRight, -4, pixels.rowBytes, width, height});
}

}  // namespace footage
