// plugin/parameter_setup.cpp — PARAMS_SETUP: declaring the parameters and the panel.
#include "plugin/parameter_setup.h"

#include "plugin/luminance_value.h"
#include "plugin/parameter_table.h"
#include "resources/string_table.h"

namespace varilum {
namespace {

constexpr std::int32_t kAppend = -1;

constexpr std::int32_t toFixed(std::int32_t value) noexcept {
  return value * A_Fixed_ONE;
}

void fillValue(const ParameterRow& row, PF_ParamDefUnion& u) noexcept {
  switch (row.type) {
    case PF_Param_FIX_SLIDER:
      u.fd.valid_min = u.fd.slider_min = toFixed(row.least);
      u.fd.valid_max = u.fd.slider_max = toFixed(row.greatest);
      u.fd.dephault = toFixed(row.initial);
      u.fd.precision = row.precision;
      break;
    case PF_Param_FLOAT_SLIDER:
      u.fs_d.value = row.initial;
      u.fs_d.valid_min = u.fs_d.slider_min = static_cast<float>(row.least);
      u.fs_d.valid_max = u.fs_d.slider_max = static_cast<float>(row.greatest);
      u.fs_d.dephault = static_cast<float>(row.initial);
      u.fs_d.precision = row.precision;
      u.fs_d.curve_tolerance = kCounterTolerance;
      break;
    case PF_Param_CHECKBOX:
      u.bd.dephault = static_cast<char>(row.initial);
      u.bd.u.nameptr = lookupString(row.textId);
      break;
    case PF_Param_POPUP:
      u.pd.num_choices = static_cast<std::int16_t>(row.greatest);
      u.pd.dephault = static_cast<std::int16_t>(row.initial);
      u.pd.u.namesptr = lookupString(row.textId);
      break;
    case PF_Param_BUTTON:
      u.button_d.u.namesptr = lookupString(row.textId);
      break;
    case PF_Param_POINT:
      u.td.x_dephault = u.td.y_dephault = toFixed(row.initial);
      break;
    case PF_Param_ARBITRARY_DATA:
      u.arb_d.id = static_cast<std::int16_t>(row.index);
      u.arb_d.refconPV = reinterpret_cast<void*>(std::uintptr_t{kLuminanceRefcon});
      break;
    default:  // groups have no value
      break;
  }
}

PF_ParamDef declare(const PF_InData& in, const ParameterRow& row, bool isAfterEffects) noexcept {
  PF_ParamDef definition{};
  definition.uu.id = row.index;
  definition.param_type = row.type;
  in.utils->ansi.strcpy(definition.name,
                        row.literal != nullptr ? row.literal : lookupString(row.nameId));
  definition.flags = row.flags;
  definition.ui_flags = row.uiFlags;
  if (row.visibility == Visibility::notInAfterEffects && isAfterEffects) {
    definition.ui_flags |= PF_PUI_INVISIBLE;
  }
  if (row.type == PF_Param_ARBITRARY_DATA) {
    definition.ui_width = kPanelWidth;
    definition.ui_height = kPanelHeight;
  }
  fillValue(row, definition.u);
  return definition;
}

std::int32_t addLuminance(const PF_InData& in, PF_ParamDef& definition) {
  const std::int32_t error = newLuminanceValue(in, &definition.u.arb_d.dephault);
  if (error != 0) return error;
  // The host takes the default over, but not when it refuses the parameter.
  void** value = definition.u.arb_d.dephault;
  const std::int32_t added = in.inter.add_param(in.effect_ref, kAppend, &definition);
  if (added != 0 && value != nullptr) in.utils->host_dispose_handle(value);
  return added;
}

// The panel stands in the effect controls only.
std::int32_t registerPanel(const PF_InData& in) {
  PF_CustomUIInfo info{};
  info.events = PF_CustomEFlag_EFFECT;
  return in.inter.register_ui(in.effect_ref, &info);
}

}  // namespace

std::int32_t parameterSetup(const Command& command) {
  const PF_InData& in = command.in;
  const Locked<GlobalState> global{in, command.out.global_data};
  const bool isAfterEffects = global && global->isAfterEffects != 0;
  std::int32_t result = 0;
  for (const ParameterRow& row : kParameters) {
    PF_ParamDef definition = declare(in, row, isAfterEffects);
    if (row.index == PARAM_LUMINANCE) {
      if (const std::int32_t error = addLuminance(in, definition); error != 0) return error;
      result = registerPanel(in);
      continue;
    }
    const std::int32_t error = in.inter.add_param(in.effect_ref, kAppend, &definition);
    if (error != 0) return error;
  }
  command.out.num_params = PARAM_COUNT;
  return result;
}

}  // namespace varilum
