// cli/plot/plot_file.cpp — the plot that --plot asks for.
#include "cli/plot/plot_file.h"

#include <fmt/format.h>

#include <filesystem>

#include "cli/error.h"
#include "cli/output_file.h"
#include "cli/plot/plot.h"

namespace cli {

void requirePlotWritable(const std::string& path, bool force) {
  if (!path.empty()) requireWritable(path, force);
}

void writePlot(const std::string& path, const media::ClipInfo& clip, const Levels& levels,
               std::span<const ShotFindings> shots, std::span<const FrameResult> rendered) {
  PlotData data;
  data.title = "Luminance over time";
  data.clipName = std::filesystem::path(clip.path).filename().string();
  data.input = levels.input;
  data.desired = levels.desired;
  for (const FrameResult& frame : rendered) data.output.push_back(frame.output);
  data.frameRate = clip.frameRate.value();
  for (std::size_t i = 0; i < shots.size(); ++i) {
    const ShotFrames& frames = shots[i].frames;
    if (shots.size() > 1) {
      data.parts.push_back({static_cast<std::size_t>(frames.first()),
                            static_cast<std::size_t>(frames.last()),
                            fmt::format("shot {}", i + 1)});
    }
    for (const ShotOutlier& outlier : shots[i].outliers) {
      data.marks.push_back({static_cast<std::size_t>(outlier.found.first),
                            std::string(footage::name(outlier.found.kind))});
    }
  }
  writeLuminancePlot(path, data);
}

}  // namespace cli
