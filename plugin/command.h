// plugin/command.h — what comes with a command of the host, and what the handlers share.
#pragma once

#include <cstdint>

#include "access/handle_lock.h"
#include "hostapi/command_data.h"
#include "hostapi/commands.h"
#include "hostapi/parameters.h"
#include "plugin/global_state.h"
#include "stats/sequence_state.h"

namespace varilum {

struct Command {
  PF_InData& in;
  PF_OutData& out;
  PF_ParamDef** params;    // null in many commands
  PF_EffectWorld* output;  // RENDER only
  void* extra;             // of the kind that the command defines
};

// Out-flags after which the host redraws the controls and renders again.
inline constexpr std::int32_t kRedrawAndRerender =
    PF_OutFlag_REFRESH_UI | PF_OutFlag_FORCE_RERENDER;

// Marks a parameter's value as written by the effect.
inline void markChanged(PF_ParamDef& param) noexcept {
  param.uu.change_flags |= PF_ChangeFlag_CHANGED_VALUE;
}

}  // namespace varilum
