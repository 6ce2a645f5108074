// plugin/panel_commands.cpp — the commands about the effect controls and the panel in them.
#include "plugin/panel_commands.h"

#include "hostapi/events.h"
#include "plugin/messages.h"
#include "stats/invalidation.h"

namespace varilum {

std::int32_t updateParamsUi(const Command& command) {
  const Locked<SequenceState> state{command.in, command.out.sequence_data};
  if (!state) return 0;
  state->analysisComplete = countAnalyzedFrames(command.in, *state) ? 1 : 0;
  return 0;
}

std::int32_t event(const Command& command) {
  const auto* extra = static_cast<const PF_EventExtra*>(command.extra);
  if (extra == nullptr || extra->e_type != PF_Event_CLOSE_CONTEXT) return 0;
  const Locked<SequenceState> state{command.in, command.out.sequence_data};
  const Locked<GlobalState> global{command.in, command.out.global_data};
  if (!state) return 0;
  return reportOutOfMemory(command.in, global.get(), resyncFrameCount(command.in, *state));
}

}  // namespace varilum
