// cli/plot_file.cpp — the plot that --plot asks for.
#include "cli/plot_file.h"

#include <filesystem>

#include "cli/error.h"
#include "cli/output_file.h"
#include "cli/plot.h"

namespace cli {

void requirePlotWritable(const std::string& path, bool force) {
  if (!path.empty()) requireWritable(path, force);
}

void writePlot(const std::string& path, const media::ClipInfo& clip, const Levels& levels,
               const std::vector<double>& output) {
  PlotData data;
  data.title = "Luminance over time";
  data.clipName = std::filesystem::path(clip.path).filename().string();
  data.input = levels.input;
  data.desired = levels.desired;
  data.output = output;
  data.frameRate = clip.frameRate.value();
  writeLuminancePlot(path, data);
}

}  // namespace cli
