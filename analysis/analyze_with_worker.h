// analysis/analyze_with_worker.h — the analysis on a thread of its own, under the effect's dialog.
#pragma once

#include <cstdint>

#include "hostapi/command_data.h"
#include "hostapi/parameters.h"
#include "platform/worker_dialog.h"

namespace varilum {

// What the worker gets: the command that the host's thread waits in.
struct AnalysisContext {
  const PF_InData* in;
  PF_OutData* out;
  PF_ParamDef** params;
  std::uint32_t cancelState;  // 0
};

// [worker thread] Analyses the instance of the block's AnalysisContext, and tells the dialog of it.
// Errors end the run; they are not reported. Always true.
bool analysisWorker(WorkerBlock& block);

// [UI thread] Analyses the instance in out behind a modal dialog, which also offers to stop.
void analyzeWithWorker(const PF_InData& in, PF_OutData& out, PF_ParamDef** params);

}  // namespace varilum
