// render/smart_render.h — SMART_RENDER: the pixels of a frame that was settled before.
#pragma once

#include <cstdint>

#include "hostapi/command_data.h"
#include "hostapi/smart_render.h"

namespace varilum {

// 8, 16 or 32 bits. 0 without a PreRenderBlock; PF_Err_BAD_CALLBACK_PARAM for other pixels. Reads
// only the block, no instance. May throw error codes, when a suite is missing.
std::int32_t smartRender(PF_InData& in, PF_SmartRenderExtra& extra);

}  // namespace varilum
