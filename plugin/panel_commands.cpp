// plugin/panel_commands.cpp — the commands about the effect controls and the panel in them.
#include "plugin/panel_commands.h"

#include "hostapi/events.h"
#include "plugin/param_index.h"
#include "plugin/parameter_changes.h"
#include "plugin/parameter_ui.h"
#include "stats/invalidation.h"
#include "stats/target_checkouts.h"
#include "ui/events.h"

namespace varilum {
namespace {

// What is owed after a click or drag. True when it altered what is rendered.
bool followMouse(const Command& command, const PF_EventExtra& extra, SequenceState* state,
                 bool changedTargets) {
  if (state != nullptr) {
    // An error here is not the command's: the targets are computed again before they are used.
    recomputeTargets(command.in, command.params, *state);
    // The host takes a written value over after the command; these targets were of the old one.
    if (changedTargets) state->recomputeDesired = 1;
  }
  if (command.params != nullptr) {
    command.params[PARAM_LUMINANCE]->uu.change_flags = PF_ChangeFlag_CHANGED_VALUE;
  }
  if (extra.e_type != PF_Event_DRAG || extra.u.do_click.last_time == 0) return false;
  if (state != nullptr) ++state->changeCounter;
  return true;
}

}  // namespace

std::int32_t updateParamsUi(const Command& command) {
  const Locked<SequenceState> state{command.in, command.out.sequence_data};
  const Locked<GlobalState> global{command.in, command.out.global_data};
  if (!state) return 0;
  state->analysisComplete = countAnalyzedFrames(command.in, *state) ? 1 : 0;
  if (!global || command.params == nullptr) return 0;
  return updateParamUis(*global, command.in, command.params, *state);
}

std::int32_t event(const Command& command) {
  auto* extra = static_cast<PF_EventExtra*>(command.extra);
  if (extra == nullptr) return 0;
  bool changedResults = false;
  std::int32_t result = 0;
  {
    const Locked<SequenceState> state{command.in, command.out.sequence_data};
    const Locked<GlobalState> global{command.in, command.out.global_data};
    const bool isAfterEffects = global && global->isAfterEffects != 0;
    const EventResult handled =
        handleEvent(global.get(), command.in, command.out, command.params, command.output, *extra);
    result = handled.error;
    if (extra->e_type == PF_Event_DO_CLICK || extra->e_type == PF_Event_DRAG) {
      changedResults = followMouse(command, *extra, state.get(), handled.changedTargets);
      if (isAfterEffects) command.out.out_flags |= PF_OutFlag_REFRESH_UI;
    }
    // The label of Clear follows the analysis.
    if (extra->e_type == PF_Event_DRAW && isAfterEffects && state && command.params != nullptr) {
      result = updateParamUi(*global, command.in, command.params, PARAM_CLEAR, *state);
    }
  }
  if (changedResults && command.params != nullptr) bumpCounter(command.params);
  return result;
}

}  // namespace varilum
