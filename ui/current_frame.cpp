// ui/current_frame.cpp — the frame under the time cursor, and its statistics at hand.
#include "ui/current_frame.h"

#include "analysis/histogram_current_frame.h"
#include "plugin/param_index.h"

namespace varilum {
namespace {

bool isAtHand(const SequenceState& state, std::int32_t frame) noexcept {
  return state.currentStats.frame == frame && state.currentHistogram.frame == frame &&
         state.currentStats.analyzed != 0;
}

void measure(const GlobalState& global, PF_InData& in, PF_OutData& out, PF_ParamDef** params,
             PF_EffectWorld* output, PF_EventExtra& event, const SequenceState& state,
             const CurrentFrame& frame) {
  try {
    if (global.isAfterEffects == 0) {
      histogramCurrentFrameInput(in, out, params, global, output);
    } else if (std::int64_t{state.currentStats.frame} != std::int64_t{frame.index} + 1) {
      // Statistics of the next frame are trusted, for as long as they are in hand.
      histogramCurrentFrameRendered(in, out, params, global, event);
    }
  } catch (std::int32_t) {
    // Drawn as "Calculating histogram...": a later draw tries again.
  }
}

}  // namespace

CurrentFrame currentFrame(std::int32_t currentTime, std::int32_t timeStep,
                          std::int32_t frameCount) noexcept {
  const std::int32_t shown = timeStep < 1 ? 0 : currentTime / timeStep;
  std::int32_t index = shown;
  if (shown < 0) {
    index = 0;
  } else if (shown >= frameCount) {
    index = frameCount - 1;
  }
  return {shown, index, index != shown, index >= 0 && index < frameCount};
}

void bringFrameToHand(const GlobalState* global, PF_InData& in, PF_OutData& out,
                      PF_ParamDef** params, PF_EffectWorld* output, PF_EventExtra& event,
                      SequenceState& state, const LevelLocks& levels, const CurrentFrame& frame) {
  if (state.currentStats.frame != frame.index) {
    state.redrawCounter =
        static_cast<std::int32_t>(static_cast<std::uint32_t>(state.redrawCounter) + 1U);
    fetchFrameStats(in, state, frame.index, state.currentStats, state.currentHistogram);
  }
  if (params != nullptr) {
    state.correctionMethod = static_cast<std::uint8_t>(params[PARAM_CORRECTION_METHOD]->u.pd.value);
  }
  if (!frame.exists) return;
  if (!frame.outOfRange && (!isAtHand(state, frame.index) || state.currentStats.slot < 0)) {
    if (global != nullptr && params != nullptr) {
      measure(*global, in, out, params, output, event, state, frame);
    }
    state.histogramSource = isAtHand(state, frame.index) ? 1 : 0;
  }
  const auto i = static_cast<std::size_t>(frame.index);
  state.currentInput = levels.inputLuminance()[i];
  state.currentDesired = levels.desiredLuminance()[i];
  state.currentSpread = static_cast<float>(levels.inputSpread()[i]);
}

}  // namespace varilum
