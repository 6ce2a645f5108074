// ui/events.cpp — the host's events of the custom panel.
#include "ui/events.h"

#include "access/handle_lock.h"
#include "stats/invalidation.h"
#include "stats/sequence_state.h"
#include "ui/click.h"
#include "ui/draw.h"

namespace varilum {
namespace {

// Whether the mouse action asked for new targets; an older request stays.
template <class Action>
bool changesTargets(SequenceState* state, Action action) noexcept {
  if (state == nullptr) {
    action();
    return false;
  }
  const std::uint8_t before = state->recomputeDesired;
  state->recomputeDesired = 0;
  action();
  const bool changed = state->recomputeDesired != 0;
  if (!changed) state->recomputeDesired = before;
  return changed;
}

}  // namespace

EventResult handleEvent(const GlobalState* global, PF_InData& in, PF_OutData& out,
                        PF_ParamDef** params, PF_EffectWorld* output, PF_EventExtra& event) {
  const Locked<SequenceState> lock{in, out.sequence_data};
  SequenceState* state = lock.get();
  switch (event.e_type) {
    case PF_Event_DO_CLICK:
      return {0, changesTargets(state, [&] { handleClick(in, params, event, state); })};
    case PF_Event_DRAG:
      return {0, changesTargets(state, [&] { handleDrag(in, params, event, state); })};
    case PF_Event_DRAW:
      return {drawPanels(global, in, out, params, output, event, state), false};
    case PF_Event_CLOSE_CONTEXT:
      return {state != nullptr ? resyncFrameCount(in, *state) : 0, false};
    case PF_Event_ADJUST_CURSOR:
      if (state != nullptr) event.evt_out_flags = PF_EO_HANDLED_EVENT;
      return {0, false};
    default:
      return {0, false};
  }
}

}  // namespace varilum
