// cli/plot/plot_scale.h — the arithmetic of a plot: ranges, ticks, and curves thinned to pixel
// columns.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace cli {

/// Values from low to high, low < high.
struct ScaleRange {
  double low = 0.0;
  double high = 1.0;

  double length() const noexcept { return high - low; }
};

/// The range of all measured (0 or more) values of `curves`, with a margin of one twentieth on both
/// sides, at least `minimumLength` long and never below 0. Nothing measured: 0..255.
ScaleRange levelRange(std::span<const std::vector<double>> curves, double minimumLength);

/// Multiples of 1, 2 or 5 times a power of ten within `range`, at most `most` (2 or more) of them.
/// `wholeOnly`: whole numbers, as frames are.
std::vector<double> roundTicks(ScaleRange range, int most, bool wholeOnly = false);

/// Ticks in seconds from 0 to `seconds`, at most `most`, at steps that clocks have (1, 2, 5, 10,
/// 15, 30 s, 1 min ...), or tenths for short clips.
std::vector<double> clockTicks(double seconds, int most);

/// "2.5 s" up to two minutes in all, "4:30" up to an hour, else "1:02:30".
std::string clockLabel(double seconds, double total);

/// The shortest decimal text of a tick: "120", "0.25".
std::string tickLabel(double value);

/// A vertex of a curve in plot coordinates: x in frames, y in the curve's unit.
struct CurvePoint {
  double frame = 0.0;
  double value = 0.0;
};

/// The curve as polylines, broken where values are negative or NaN (not measured). With more than
/// two frames a column, each column keeps only its first, lowest, highest and last value: what is
/// drawn looks the same and costs the same for a hundred thousand frames.
std::vector<std::vector<CurvePoint>> thinnedCurve(std::span<const double> values, int columns);

/// Absolute change from each frame to the next in percent of the clip's mean level; one value a
/// frame, -1 for the first and wherever one of the two is not measured.
std::vector<double> frameChanges(std::span<const double> levels);

}  // namespace cli
