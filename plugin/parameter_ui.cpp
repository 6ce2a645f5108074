// plugin/parameter_ui.cpp — labels and greying of the controls.
#include "plugin/parameter_ui.h"

#include <cstddef>
#include <string_view>

#include "access/bounded_text.h"
#include "access/suite.h"
#include "hostapi/suites/param_utils.h"
#include "plugin/param_index.h"
#include "plugin/parameter_table.h"
#include "resources/string_table.h"
#include "stats/invalidation.h"

namespace varilum {
namespace {

// What the rules look at.
struct ControlState {
  bool isPremiere;
  std::int32_t deflickerMethod;
  std::int32_t correctionMethod;
  bool adjustClipping;
  bool useSubrect;
};

// In Premiere Pro most controls are never greyed.
bool shiftSpreadApplies(const ControlState& state) {
  return state.isPremiere || (state.deflickerMethod == kDeflickerKeyframes &&
                              state.correctionMethod == kCorrectionShift);
}
bool smoothingApplies(const ControlState& state) {
  return state.isPremiere || state.deflickerMethod == kDeflickerSmoothing;
}
bool clippingApplies(const ControlState& state) {  // on every host
  return state.correctionMethod == kCorrectionLinear || state.correctionMethod == kCorrectionShift;
}
bool clippingPercentApplies(const ControlState& state) {
  return state.isPremiere || (clippingApplies(state) && state.adjustClipping);
}
bool cornersApply(const ControlState& state) {
  return state.isPremiere || state.useSubrect;
}

struct Control {
  std::int32_t trigger;  // index that asks for it
  std::int32_t index;
  bool (*applies)(const ControlState&);
  std::int32_t flags;
  std::int32_t greyedFlags;
};

// In the order of the calls.
constexpr Control kControls[] = {
    {PARAM_SHIFT_SPREAD, PARAM_SHIFT_SPREAD, shiftSpreadApplies, kVaries, kVariesCollapsed},
    {PARAM_DEFLICKER_METHOD, PARAM_SHIFT_SPREAD, shiftSpreadApplies, kVaries, kVariesCollapsed},
    {PARAM_DEFLICKER_METHOD, PARAM_SMOOTHING_FRAMES, smoothingApplies, kVaries, kVariesCollapsed},
    {PARAM_CORRECTION_METHOD, PARAM_SHIFT_SPREAD, shiftSpreadApplies, kVaries, kVariesCollapsed},
    {PARAM_CORRECTION_METHOD, PARAM_SMOOTHING_FRAMES, smoothingApplies, kVaries, kVariesCollapsed},
    {PARAM_CORRECTION_METHOD, PARAM_ADJUST_CLIPPING, clippingApplies, kFixed, kFixed},
    {PARAM_CORRECTION_METHOD, PARAM_CLIPPING_PERCENT, clippingPercentApplies, kFixed,
     kFixedCollapsed},
    {PARAM_USE_SUBRECT, PARAM_CORNER1, cornersApply, kVaries, kVaries},
    {PARAM_USE_SUBRECT, PARAM_CORNER2, cornersApply, kVaries, kVaries},
};

constexpr const ParameterRow& rowOf(std::int32_t index) {
  return kParameters[static_cast<std::size_t>(index) - 1];
}

ControlState readControls(const GlobalState& global, PF_ParamDef** params) noexcept {
  return {global.isPremiere != 0, params[PARAM_DEFLICKER_METHOD]->u.pd.value,
          params[PARAM_CORRECTION_METHOD]->u.pd.value,
          params[PARAM_ADJUST_CLIPPING]->u.bd.value != 0,
          params[PARAM_USE_SUBRECT]->u.bd.value != 0};
}

// A definition with the parameter's type and present value.
PF_ParamDef redefine(PF_ParamDef** params, std::int32_t index, std::string_view name) noexcept {
  const ParameterRow& row = rowOf(index);
  PF_ParamDef definition{};
  definition.param_type = row.type;
  definition.u = params[index]->u;
  if (row.type == PF_Param_BUTTON) definition.u.button_d.u.namesptr = lookupString(row.textId);
  if (row.type == PF_Param_CHECKBOX) definition.u.bd.u.nameptr = lookupString(row.textId);
  copyText(definition.name, name);
  return definition;
}

std::int32_t tellHost(const PF_InData& in, std::int32_t index, const PF_ParamDef& definition) {
  const Suite<PF_ParamUtilsSuite3> utilities{in, kPFParamUtilsSuite, kPFParamUtilsSuiteVersion3};
  return utilities->PF_UpdateParamUI(in.effect_ref, index, &definition);
}

std::int32_t relabel(const PF_InData& in, PF_ParamDef** params, std::int32_t index,
                     std::string_view name) {
  PF_ParamDef definition = redefine(params, index, name);
  definition.flags = kFixed;
  return tellHost(in, index, definition);
}

std::int32_t grey(const PF_InData& in, PF_ParamDef** params, const Control& control,
                  const ControlState& state) {
  const bool applies = control.applies(state);
  PF_ParamDef definition =
      redefine(params, control.index, lookupString(rowOf(control.index).nameId));
  definition.flags = applies ? control.flags : control.greyedFlags;
  definition.ui_flags = applies ? PF_PUI_NONE : PF_PUI_DISABLED;
  return tellHost(in, control.index, definition);
}

// Longer texts are cut in the label, and would never be found equal to it.
bool showsStatus(const PF_ParamDef& clear, const SequenceState& state) noexcept {
  const auto cut = [](std::string_view text) {
    return text.substr(0, static_cast<std::size_t>(PF_MAX_EFFECT_PARAM_NAME_LEN));
  };
  return cut(clear.name) == cut(state.statusText);
}

}  // namespace

std::int32_t updateParamUi(const GlobalState& global, const PF_InData& in, PF_ParamDef** params,
                           std::int32_t index, SequenceState& state) {
  if (index == PARAM_ANALYZE) {
    state.analysisComplete = countAnalyzedFrames(in, state) ? 1 : 0;
    return relabel(
        in, params, index,
        lookupString(state.analysisComplete != 0 ? kTextAnalyzed : kTextAnalyzeRequired));
  }
  if (index == PARAM_CLEAR) return relabel(in, params, index, state.statusText);

  const ControlState controls = readControls(global, params);
  for (const Control& control : kControls) {
    if (control.trigger != index) continue;
    if (const std::int32_t error = grey(in, params, control, controls); error != 0) return error;
  }
  return 0;
}

std::int32_t updateParamUis(const GlobalState& global, const PF_InData& in, PF_ParamDef** params,
                            SequenceState& state) {
  if (global.isAfterEffects == 0) {
    if (showsStatus(*params[PARAM_CLEAR], state)) return 0;
    return updateParamUi(global, in, params, PARAM_CLEAR, state);
  }
  std::int32_t result = 0;
  for (const std::int32_t index :
       {PARAM_ANALYZE, PARAM_CLEAR, PARAM_SHIFT_SPREAD, PARAM_DEFLICKER_METHOD,
        PARAM_CORRECTION_METHOD, PARAM_USE_SUBRECT}) {
    result = updateParamUi(global, in, params, index, state);
  }
  return result;
}

}  // namespace varilum
