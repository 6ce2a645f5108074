// render/render_frame.h — RENDER: one corrected frame, 8 or 16 bits.
#pragma once

#include <cstdint>

#include "hostapi/command_data.h"
#include "hostapi/parameters.h"

namespace varilum {

// Renders the frame at in.current_time into output, from params[0]. Recomputes targets that are
// due. Returns the first error. Without an instance: a message and PF_Err_INTERNAL_STRUCT_DAMAGED.
// Without its arrays the output stays as it is, with result 0.
std::int32_t renderFrame(PF_InData& in, PF_OutData& out, PF_ParamDef** params,
                         PF_EffectWorld* output);

}  // namespace varilum
