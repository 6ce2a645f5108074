// render/render_frame.cpp — RENDER: one corrected frame, 8 or 16 bits.
#include "render/render_frame.h"

#include <cstring>

#include "access/bounded_text.h"
#include "access/handle_lock.h"
#include "hostapi/commands.h"
#include "plugin/global_state.h"
#include "plugin/param_index.h"
#include "render/render_areas.h"
#include "resources/string_table.h"
#include "stats/correction_table.h"
#include "stats/frame_count.h"
#include "stats/invalidation.h"
#include "stats/number_conversion.h"
#include "stats/pixel_kernels.h"
#include "stats/sequence_arrays.h"
#include "stats/sequence_state.h"
#include "stats/target_checkouts.h"

namespace varilum {
namespace {

bool coversInput(const PF_InData& in, const PF_EffectWorld& input, const PF_EffectWorld& output) {
  return output.extent_hint.left == input.extent_hint.left &&
         output.extent_hint.top == input.extent_hint.top && in.width == input.width &&
         in.height == input.height;
}

bool isDeep(const PF_EffectWorld& world) noexcept {
  return (world.world_flags & PF_WorldFlag_DEEP) != 0;
}

void copyFrameLevels(const LevelLocks& levels, std::size_t frame, SequenceState& state) noexcept {
  state.frameDesiredLuminance = levels.desiredLuminance()[frame];
  state.frameDesiredSpread = static_cast<float>(levels.desiredSpread()[frame]);
  state.frameInputLuminance = levels.inputLuminance()[frame];
  state.frameInputSpread = static_cast<float>(levels.inputSpread()[frame]);
}

FrameCorrection correctionOf(const SequenceState& state, bool dontDeflicker) noexcept {
  FrameCorrection correction;
  correction.analyzed = state.analysisComplete != 0;
  correction.dontDeflicker = dontDeflicker;
  correction.method = state.correctionMethod;
  std::memcpy(correction.table, state.correctionTable, sizeof correction.table);
  correction.banner = placeBanner(state.banner);
  prepareCorrection(
      correction, {state.frameDesiredLuminance, state.frameInputLuminance, state.frameDesiredSpread,
                   state.frameInputSpread, state.gammaValue});
  return correction;
}

std::int32_t copyInput(const PF_InData& in, PF_EffectWorld& input, PF_EffectWorld& output) {
  if (input.width == output.width && input.height == output.height) {
    return in.utils->copy(in.effect_ref, &input, &output, nullptr, nullptr);
  }
  // Areas of different sizes would be stretched.
  PF_Rect common = clippedArea({0, 0, output.width, output.height}, input, output);
  if (isEmpty(common)) return 0;
  return in.utils->copy(in.effect_ref, &input, &output, &common, &common);
}

}  // namespace

std::int32_t renderFrame(PF_InData& in, PF_OutData& out, PF_ParamDef** params,
                         PF_EffectWorld* output) {
  if (out.sequence_data == nullptr) {
    copyText(out.return_msg, lookupString(kTextNoSequenceData));
    out.out_flags |= PF_OutFlag_DISPLAY_ERROR_MESSAGE;
    return PF_Err_INTERNAL_STRUCT_DAMAGED;
  }
  if (params == nullptr || output == nullptr) return 0;
  PF_EffectWorld& input = params[PARAM_INPUT]->u.ld;
  if (!coversInput(in, input, *output)) {
    const std::int32_t error = in.utils->fill(in.effect_ref, nullptr, &output->extent_hint, output);
    if (error != 0) return error;
  }

  const Locked<SequenceState> state{in, out.sequence_data};
  const Locked<GlobalState> global{in, out.global_data};
  if (!state) return 0;
  const LevelLocks levels{in, *state};
  if (!levels) return 0;

  state->inputDeep = isDeep(input) ? 1 : 0;
  state->outputDeep = isDeep(*output) ? 1 : 0;
  if (state->analysisComplete == 0 && countAnalyzedFrames(in, *state)) {
    state->analysisComplete = 1;
    state->recomputeDesired = 1;
  }
  std::int32_t error = 0;
  if (state->recomputeDesired != 0) error = computeTargets(in, params, *state, levels.arrays());

  const std::int32_t frame = frameAt(in.current_time, in.time_step, state->frameCount);
  copyFrameLevels(levels, static_cast<std::size_t>(frame), *state);
  const bool dontDeflicker = params[PARAM_DONT_DEFLICKER]->u.bd.value != 0;
  state->adjustClipping = params[PARAM_ADJUST_CLIPPING]->u.bd.value != 0 ? 1 : 0;
  state->clippingPercent = fixedToDouble(params[PARAM_CLIPPING_PERCENT]->u.fd.value);
  state->correctionMethod = static_cast<std::uint8_t>(params[PARAM_CORRECTION_METHOD]->u.pd.value);
  buildCorrectionTable(*state, dontDeflicker, in.utils->ansi.log);

  const FrameArea area{in.output_origin_x, in.output_origin_y, output->width, output->height};
  const bool analyzed = state->analysisComplete != 0;
  if (!analyzed) state->banner = bannerRect(area);

  std::int32_t result = 0;
  if (dontDeflicker && analyzed) {
    result = copyInput(in, input, *output);
  } else if (const PF_Rect clipped = clippedArea(area, input, *output); !isEmpty(clipped)) {
    FrameCorrection correction = correctionOf(*state, dontDeflicker);
    // Without the global data the host still tells what it is: an 8-bit kernel would spoil 16 bits.
    const bool isAfterEffects =
        global ? global->isAfterEffects != 0 : in.appl_id == kAfterEffectsApplication;
    const bool deep = isAfterEffects && state->inputDeep != 0 && state->outputDeep != 0;
    result = deep ? in.utils->iterate16(&in, 0, area.height, &input, &clipped, &correction,
                                        pixelKernel16(correction), output)
                  : in.utils->iterate(&in, 0, area.height, &input, &clipped, &correction,
                                      pixelKernel8(correction), output);
  }
  return error != 0 ? error : result;
}

}  // namespace varilum
