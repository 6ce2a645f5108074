// cli/plot/plot_file.h — the plot that --plot asks for.
#pragma once

#include <span>
#include <string>

#include "cli/job/job_result.h"
#include "cli/shots/levels.h"
#include "cli/shots/shot_findings.h"
#include "media/clip_info.h"

namespace cli {

/// Throws Failure when --plot was given and its file may not be written. Empty path: nothing.
void requirePlotWritable(const std::string& path, bool force);

/// Input and desired levels from the analysis; output levels as measured while rendering, from the
/// first frame on, or none. Shots are shaded in turn, outliers pointed at. Frames that were not to
/// be deflickered leave a gap.
void writePlot(const std::string& path, const media::ClipInfo& clip, const Levels& levels,
               std::span<const ShotFindings> shots, std::span<const FrameResult> rendered);

}  // namespace cli
