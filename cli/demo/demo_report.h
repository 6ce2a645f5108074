// cli/demo/demo_report.h — what the demo found: each kind of flicker, before and after, and what is
// left.
#pragma once

#include <span>
#include <string>
#include <vector>

namespace cli {

/// Per-frame mean luminance of the same clip in four states, 0..255, of equal length.
struct DemoLevels {
  std::vector<double> clean;    ///< the scene as drawn
  std::vector<double> input;    ///< decoded from the flickering clip
  std::vector<double> desired;  ///< what the effect aimed for
  std::vector<double> output;   ///< decoded from the steady clip
};

/// One line of the table. All in percent.
struct DemoFigures {
  std::string name;
  int first = 0;
  int last = 0;  ///< included
  // Frame-to-frame luminance change.
  double changeClean = 0.0;
  double changeInput = 0.0;
  double changeDesired = 0.0;
  double changeOutput = 0.0;
  // Flicker of the clip's level divided by the clean level: exposure alone, without the scene.
  double errorInput = 0.0;
  double errorOutput = 0.0;

  /// How many times smaller the change became; 0 when nothing is left to divide by.
  double factor() const noexcept { return changeOutput > 0.0 ? changeInput / changeOutput : 0.0; }
};

/// One for every part of the clip, then one for the whole clip.
std::vector<DemoFigures> demoFigures(const DemoLevels& levels);

/// The table, one row a line. "Exposure error" is errorInput and errorOutput.
std::vector<std::string> demoTable(std::span<const DemoFigures> figures);

/// Lines on where the remaining change comes from, with the numbers that it rests on.
/// `smoothing`: the effect's number of smoothing frames. Picture errors in levels of 255.
std::vector<std::string> demoRemainder(std::span<const DemoFigures> figures, int smoothing,
                                       double pictureErrorInput, double pictureErrorOutput);

/// A line a frame: frame, time, part, gain and the four levels, with a heading.
std::string demoCsv(const DemoLevels& levels, std::span<const double> gains);

}  // namespace cli
