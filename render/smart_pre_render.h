// render/smart_pre_render.h — SMART_PRE_RENDER: what a frame needs, and what it will look like.
#pragma once

#include <cstdint>

#include "hostapi/command_data.h"
#include "hostapi/smart_render.h"

namespace varilum {

// Hands a PreRenderBlock to the host, mixes the frame's target into the host's cache key, and
// checks out the layer. PF_Err_OUT_OF_MEMORY without the instance's arrays or memory for the
// block. May throw error codes, when a suite is missing.
std::int32_t smartPreRender(const PF_InData& in, PF_OutData& out, PF_PreRenderExtra& extra);

}  // namespace varilum
