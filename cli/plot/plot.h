// cli/plot/plot.h — a clip's brightness over time as a picture, before and after.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace cli {

/// A frame worth pointing at.
struct PlotMark {
  std::size_t frame = 0;
  std::string label;  // may be empty
};

/// A part of the clip, shaded and named.
struct PlotPart {
  std::size_t first = 0;
  std::size_t last = 0;  // included
  std::string label;
};

/// Levels are one a frame on the 0..255 scale; negative (or NaN) means not measured and leaves a
/// gap. `desired` and `output` may be empty, or shorter than `input`.
struct PlotData {
  std::string title;
  std::string clipName;
  std::vector<double> input;
  std::vector<double> desired;
  std::vector<double> output;
  double frameRate = 0.0;  // frames a second; 0: no time axis
  std::vector<PlotMark> marks;
  std::vector<PlotPart> parts;
};

/// Writes a PNG of 1600 x 900: the levels above, the change from frame to frame below. An existing
/// file is replaced, and only when the new one is whole. Throws std::runtime_error with a sentence
/// for the user.
void writeLuminancePlot(const std::filesystem::path& path, const PlotData& data);

}  // namespace cli
