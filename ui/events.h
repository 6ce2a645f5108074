// ui/events.h — the host's events of the custom panel.
#pragma once

#include <cstdint>

#include "hostapi/command_data.h"
#include "hostapi/events.h"
#include "hostapi/parameters.h"
#include "plugin/global_state.h"

namespace varilum {

struct EventResult {
  std::int32_t error;  // 0, or the first error of the host
  // A click or drag wrote a parameter that decides about targets. The host takes the new value
  // over only after the command, so targets computed within it are of the old one.
  bool changedTargets;
};

// [UI thread] Draws, clicks and drags the panel of the instance in out.sequence_data (none: as
// little as possible), brings its arrays to the layer's length when the panel closes, and leaves
// the cursor to the host; all other events are not the panel's. The result for the host is in
// event.evt_out_flags. global may be null: then nothing is measured. Locks what it needs; the
// caller may hold the same handles. Parameters are written in place and marked changed. Throws no
// error that a draw could meet.
EventResult handleEvent(const GlobalState* global, PF_InData& in, PF_OutData& out,
                        PF_ParamDef** params, PF_EffectWorld* output, PF_EventExtra& event);

}  // namespace varilum
