// plugin/panel_commands.cpp — the commands about the effect controls and the panel in them.
#include "plugin/panel_commands.h"

#include "hostapi/events.h"
#include "plugin/messages.h"
#include "plugin/param_index.h"
#include "plugin/parameter_ui.h"
#include "stats/invalidation.h"

namespace varilum {

std::int32_t updateParamsUi(const Command& command) {
  const Locked<SequenceState> state{command.in, command.out.sequence_data};
  const Locked<GlobalState> global{command.in, command.out.global_data};
  if (!state) return 0;
  state->analysisComplete = countAnalyzedFrames(command.in, *state) ? 1 : 0;
  if (!global || command.params == nullptr) return 0;
  return updateParamUis(*global, command.in, command.params, *state);
}

std::int32_t event(const Command& command) {
  const auto* extra = static_cast<const PF_EventExtra*>(command.extra);
  const Locked<SequenceState> state{command.in, command.out.sequence_data};
  const Locked<GlobalState> global{command.in, command.out.global_data};
  if (extra == nullptr || !state) return 0;
  if (extra->e_type == PF_Event_CLOSE_CONTEXT) {
    return reportOutOfMemory(command.in, global.get(), resyncFrameCount(command.in, *state));
  }
  // The label of Clear follows the analysis.
  if (extra->e_type == PF_Event_DRAW && global && global->isAfterEffects != 0 &&
      command.params != nullptr) {
    return updateParamUi(*global, command.in, command.params, PARAM_CLEAR, *state);
  }
  return 0;
}

}  // namespace varilum
