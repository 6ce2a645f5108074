// analysis/histogram_current_frame.h — measuring the frame under the time cursor, for the panel.
//
// Both put the frame's statistics and histogram in hand and into the store, and its level and
// spread into the arrays, and compute all targets anew. They do nothing without an instance whose
// arrays lock, without pixels, or outside the layer's frames. They throw an error code when a
// suite is missing. params holds all parameters.
#pragma once

#include <cstdint>

#include "hostapi/command_data.h"
#include "hostapi/events.h"
#include "hostapi/parameters.h"
#include "plugin/global_state.h"

namespace varilum {

// [UI thread, DRAW] After Effects only: the layer as it is before this effect, rendered by the
// host in the background. While the frame is not there yet, nothing happens: the host sends
// another DRAW. Returns the first error of the host.
std::int32_t histogramCurrentFrameRendered(PF_InData& in, PF_OutData& out, PF_ParamDef** params,
                                           const GlobalState& global, PF_EventExtra& event);

// Any host: the input layer as the host checks it out. output may be null.
void histogramCurrentFrameInput(const PF_InData& in, PF_OutData& out, PF_ParamDef** params,
                                const GlobalState& global, const PF_EffectWorld* output);

}  // namespace varilum
