// validate/claims.cpp — what an effect says that it can do; only that is demanded of it.
#include "validate/claims.h"

#include "host/effect_state.h"
#include "host/parameter_store.h"

namespace validate {
namespace {

bool hasPanel(const host::EffectState& effect) {
  if ((effect.outFlags & PF_OutFlag_CUSTOM_UI) == 0) return false;
  if ((effect.eventMask & PF_CustomEFlag_EFFECT) == 0) return false;
  for (const host::ParameterDeclaration& declaration : effect.declarations) {
    if ((declaration.definition.ui_flags & PF_PUI_CONTROL) != 0) return true;
  }
  return false;
}

void sortParameters(const host::EffectState& effect, Claims& claims) {
  for (std::size_t i = 1; i < effect.declarations.size(); ++i) {
    const auto index = static_cast<std::int32_t>(i);
    const PF_ParamDef& definition = effect.declarations[i].definition;
    const host::ValueKind kind = host::valueKind(definition.param_type);
    if (definition.param_type == PF_Param_BUTTON) {
      claims.buttons.push_back(index);
    } else if (kind == host::ValueKind::arbitrary) {
      claims.arbitrary.push_back(index);
    } else if (kind != host::ValueKind::none) {
      claims.valued.push_back(index);
      if ((definition.flags & PF_ParamFlag_SUPERVISE) != 0) claims.supervised.push_back(index);
    }
  }
}

}  // namespace

Claims claimsOf(host::Effect& effect) {
  const host::EffectState& state = effect.state();
  const bool afterEffects = state.state.role == host::Role::afterEffects;
  Claims claims;
  claims.depths = {host::Depth::bits8};
  const bool smart = afterEffects && state.supports(PF_OutFlag2_SUPPORTS_SMART_RENDER);
  if (smart) claims.path = host::RenderPath::smart;
  if (afterEffects && (state.outFlags & PF_OutFlag_DEEP_COLOR_AWARE) != 0) {
    claims.depths.push_back(host::Depth::bits16);
    if (smart && state.supports(PF_OutFlag2_FLOAT_COLOR_AWARE)) {
      claims.depths.push_back(host::Depth::float32);
    }
  }
  claims.panel = hasPanel(state);
  claims.flattens = (state.outFlags & PF_OutFlag_SEQUENCE_DATA_NEEDS_FLATTENING) != 0;
  claims.flattensCopies = state.supports(PF_OutFlag2_SUPPORTS_GET_FLATTENED_SEQUENCE_DATA);
  claims.dynamicFlags = state.supports(PF_OutFlag2_SUPPORTS_QUERY_DYNAMIC_FLAGS);
  claims.rendersThreaded = state.supports(PF_OutFlag2_SUPPORTS_THREADED_RENDERING);
  claims.threadSafe = claims.rendersThreaded || state.supports(PF_OutFlag2_AE13_5_THREADSAFE);
  sortParameters(state, claims);
  return claims;
}

const char* nameOf(host::Depth depth) noexcept {
  switch (depth) {
    case host::Depth::bits8:
      return "8 bits";
    case host::Depth::bits16:
      return "16 bits";
    case host::Depth::float32:
      break;
  }
  return "float";
}

}  // namespace validate
