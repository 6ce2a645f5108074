// host/suites_pf.cpp — suites of the effect interface: handles, parameters, worlds, iteration.
#include "host/command.h"
#include "host/effect_state.h"
#include "host/effect_worlds.h"
#include "host/handle_callbacks.h"
#include "host/iterate.h"
#include "host/parameter_declaration.h"
#include "host/pixel_callbacks.h"
#include "host/sequence_copy.h"
#include "host/suite_tables.h"
#include "host/unused_slot.h"
#include "hostapi/suites/handle.h"
#include "hostapi/suites/iterate.h"
#include "hostapi/suites/param_utils.h"
#include "hostapi/suites/world.h"

namespace host {
namespace {

std::int32_t updateParamUi(PF_ProgPtr ref, std::int32_t index, const PF_ParamDef* wanted) {
  Command* command = commandOf(ref, "PF_UpdateParamUI");
  if (command == nullptr || wanted == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  HostState& state = command->effect.state;
  if (const std::int32_t error = state.faults.check(CallKind::updateParamUi)) return error;
  if (command->copy == nullptr || index < 1 ||
      index >= static_cast<std::int32_t>(command->copy->definitions.size())) {
    state.report("PF_UpdateParamUI: no such parameter");
    return PF_Err_INVALID_INDEX;
  }
  for (const PF_ParamDef& own : command->params) {
    if (wanted != &own) continue;
    state.report("PF_UpdateParamUI: wants a copy, not a record of the command's own array");
    return PF_Err_BAD_CALLBACK_PARAM;
  }
  redefine(command->copy->definitions[static_cast<std::size_t>(index)], *wanted);
  return PF_Err_NONE;
}

}  // namespace

const void* handleSuite() {
  static const PF_HandleSuite1 table{effectNewHandle,     effectLockHandle, effectUnlockHandle,
                                     effectDisposeHandle, effectHandleSize, effectResizeHandle};
  return &table;
}

const void* paramUtilsSuite() {
  static const PF_ParamUtilsSuite3 table = [] {
    PF_ParamUtilsSuite3 t{};
    t.PF_UpdateParamUI = updateParamUi;
    HOST_UNUSED(t, PF_GetCurrentState);
    HOST_UNUSED(t, PF_AreStatesIdentical);
    HOST_UNUSED(t, PF_IsIdenticalCheckout);
    HOST_UNUSED(t, PF_FindKeyframeTime);
    HOST_UNUSED(t, PF_GetKeyframeCount);
    HOST_UNUSED(t, PF_CheckoutKeyframe);
    HOST_UNUSED(t, PF_CheckinKeyframe);
    HOST_UNUSED(t, PF_KeyIndexToTime);
    return t;
  }();
  return &table;
}

const void* worldSuite() {
  static const PF_WorldSuite2 table = [] {
    PF_WorldSuite2 t{};
    t.PF_NewWorld = newWorldOfFormat;
    t.PF_DisposeWorld = disposeWorld;
    t.PF_GetPixelFormat = formatOfWorld;
    return t;
  }();
  return &table;
}

const void* iterate8Suite() {
  static const PF_Iterate8Suite1 table = [] {
    PF_Iterate8Suite1 t{};
    t.iterate = iterate8;
    HOST_UNUSED(t, iterate_origin);
    HOST_UNUSED(t, iterate_lut);
    HOST_UNUSED(t, iterate_origin_non_clip_src);
    t.iterate_generic = iterateGeneric;
    return t;
  }();
  return &table;
}

const void* iterate16Suite() {
  static const PF_Iterate16Suite1 table = [] {
    PF_Iterate16Suite1 t{};
    t.iterate = iterate16;
    HOST_UNUSED(t, iterate_origin);
    HOST_UNUSED(t, iterate_origin_non_clip_src);
    return t;
  }();
  return &table;
}

const void* iterateFloatSuite() {
  static const PF_IterateFloatSuite1 table = [] {
    PF_IterateFloatSuite1 t{};
    t.iterate = iterateFloat;
    HOST_UNUSED(t, iterate_origin);
    HOST_UNUSED(t, iterate_origin_non_clip_src);
    return t;
  }();
  return &table;
}

}  // namespace host
