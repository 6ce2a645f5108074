// analysis/frame_loop.h — measuring every frame of the layer, one after the other.
#pragma once

#include <cstdint>

#include "analysis/analysis_progress.h"
#include "hostapi/command_data.h"
#include "hostapi/parameters.h"

namespace varilum {

// A run over the instance in out, asked for by its refreshPending flag (or, unattended, made
// whenever the analysis is not complete). Stores each frame's statistics and levels, says whether
// the analysis is complete now, and computes the targets. Without its data, or without a reason
// to run, it only computes targets that are due. Returns the first error; being cancelled is none.
// May throw error codes, when a suite is missing.
std::int32_t runAnalysis(const PF_InData& in, PF_OutData& out, PF_ParamDef** params,
                         AnalysisProgress& progress);

}  // namespace varilum
