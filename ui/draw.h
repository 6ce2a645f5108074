// ui/draw.h — drawing the panel.
#pragma once

#include <cstdint>

#include "hostapi/command_data.h"
#include "hostapi/events.h"
#include "hostapi/parameters.h"
#include "plugin/global_state.h"
#include "stats/sequence_state.h"

namespace varilum {

// Draws both graphs into the event's context, unless the event says not to, is not about the
// control, or the instance's arrays cannot be had. The event counts as handled when nothing
// failed. Returns the first error of the host; its message, if it has one, is in out.
std::int32_t drawPanels(const GlobalState* global, PF_InData& in, PF_OutData& out,
                        PF_ParamDef** params, PF_EffectWorld* output, PF_EventExtra& event,
                        SequenceState* state);

}  // namespace varilum
