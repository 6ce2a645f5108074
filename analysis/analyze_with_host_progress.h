// analysis/analyze_with_host_progress.h — the analysis under the host's own progress dialog.
#pragma once

#include <cstdint>

#include "hostapi/command_data.h"
#include "hostapi/parameters.h"

namespace varilum {

// [UI thread] Analyses the instance in out. Returns the first error; a message for the user and
// PF_Err_INTERNAL_STRUCT_DAMAGED when there is no instance. Cancelled by the user: 0.
std::int32_t analyzeWithHostProgress(const PF_InData& in, PF_OutData& out, PF_ParamDef** params);

}  // namespace varilum
