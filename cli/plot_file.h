// cli/plot_file.h — the plot that --plot asks for.
#pragma once

#include <string>
#include <vector>

#include "cli/levels.h"
#include "media/clip_info.h"

namespace cli {

/// Throws Failure when --plot was given and its file may not be written. Empty path: nothing.
void requirePlotWritable(const std::string& path, bool force);

/// Input and desired levels from the analysis; output levels as measured while rendering, or empty.
/// Frames that were not to be deflickered leave a gap.
void writePlot(const std::string& path, const media::ClipInfo& clip, const Levels& levels,
               const std::vector<double>& output);

}  // namespace cli
