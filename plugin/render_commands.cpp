// plugin/render_commands.cpp — the commands that make pictures, or tell what they are like.
#include "plugin/render_commands.h"

#include "plugin/messages.h"
#include "render/render_frame.h"
#include "render/smart_pre_render.h"
#include "render/smart_render.h"
#include "stats/invalidation.h"

namespace varilum {
namespace {

std::int32_t renderInstance(const Command& command, const GlobalState* global,
                            SequenceState* state) {
  PF_InData& in = command.in;
  if (state != nullptr) {
    const std::int32_t error = reportOutOfMemory(in, global, resyncFrameCount(in, *state));
    if (error != 0) return error;
  }
  const bool wasComplete = state != nullptr && state->analysisComplete != 0;
  const bool wasPending = state != nullptr && state->refreshPending != 0;
  const std::int32_t result = renderFrame(in, command.out, command.params, command.output);
  if (state == nullptr) return result;

  state->refreshPending = 0;
  const bool becameComplete = (wasPending || !wasComplete) && state->analysisComplete != 0;
  if (becameComplete && global != nullptr && global->isPremiere != 0) {
    command.out.out_flags |= PF_OutFlag_FORCE_RERENDER;
  }
  return result;
}

}  // namespace

std::int32_t renderCommand(const Command& command) {
  const Locked<SequenceState> state{command.in, command.out.sequence_data};
  const Locked<GlobalState> global{command.in, command.out.global_data};
  command.out.out_flags |= PF_OutFlag_REFRESH_UI;
  return renderInstance(command, global.get(), state.get());
}

std::int32_t smartPreRenderCommand(const Command& command) {
  if (command.extra == nullptr) return 0;
  return smartPreRender(command.in, command.out, *static_cast<PF_PreRenderExtra*>(command.extra));
}

std::int32_t smartRenderCommand(const Command& command) {
  if (command.extra == nullptr) return 0;
  return smartRender(command.in, *static_cast<PF_SmartRenderExtra*>(command.extra));
}

std::int32_t queryDynamicFlags(const Command& command) {
  const Locked<SequenceState> state{command.in, command.out.sequence_data};
  if (!state) return 0;
  if (state->analysisComplete == 0) {
    command.out.out_flags2 |= PF_OutFlag2_OUTPUT_IS_WATERMARKED;
  } else {
    command.out.out_flags2 &= ~PF_OutFlag2_OUTPUT_IS_WATERMARKED;
  }
  return 0;
}

}  // namespace varilum
