// hostapi/suites/aegp_effect.h — references to effect instances.
#pragma once

#include <cstdint>

#include "hostapi/scalars.h"

struct A_Time;
union PF_ParamDefUnion;

struct AEGP_EffectSuite4 {
  std::int32_t (*AEGP_GetLayerNumEffects)(AEGP_LayerH, std::int32_t*);
  std::int32_t (*AEGP_GetLayerEffectByIndex)(std::int32_t, AEGP_LayerH, std::int32_t,
                                             AEGP_EffectRefH*);
  std::int32_t (*AEGP_GetInstalledKeyFromLayerEffect)(AEGP_EffectRefH, std::int32_t*);
  std::int32_t (*AEGP_GetEffectParamUnionByIndex)(std::int32_t, AEGP_EffectRefH, std::int32_t,
                                                  std::int32_t*, PF_ParamDefUnion*);
  std::int32_t (*AEGP_GetEffectFlags)(AEGP_EffectRefH, std::int32_t*);
  std::int32_t (*AEGP_SetEffectFlags)(AEGP_EffectRefH, std::int32_t, std::int32_t);
  std::int32_t (*AEGP_ReorderEffect)(AEGP_EffectRefH, std::int32_t);
  std::int32_t (*AEGP_EffectCallGeneric)(std::int32_t, AEGP_EffectRefH, const A_Time*, std::int32_t,
                                         void*);
  // effect reference
  std::int32_t (*AEGP_DisposeEffect)(AEGP_EffectRefH);
  std::int32_t (*AEGP_ApplyEffect)(std::int32_t, AEGP_LayerH, std::int32_t, AEGP_EffectRefH*);
  std::int32_t (*AEGP_DeleteLayerEffect)(AEGP_EffectRefH);
  std::int32_t (*AEGP_GetNumInstalledEffects)(std::int32_t*);
  std::int32_t (*AEGP_GetNextInstalledEffect)(std::int32_t, std::int32_t*);
  std::int32_t (*AEGP_GetEffectName)(std::int32_t, char*);
  std::int32_t (*AEGP_GetEffectMatchName)(std::int32_t, char*);
  std::int32_t (*AEGP_GetEffectCategory)(std::int32_t, char*);
  std::int32_t (*AEGP_DuplicateEffect)(AEGP_EffectRefH, AEGP_EffectRefH*);
  std::int32_t (*AEGP_NumEffectMask)(AEGP_EffectRefH, std::uint32_t*);
  std::int32_t (*AEGP_GetEffectMaskID)(AEGP_EffectRefH, std::uint32_t, std::int32_t*);
  std::int32_t (*AEGP_AddEffectMask)(AEGP_EffectRefH, std::int32_t, AEGP_StreamRefH*);
  std::int32_t (*AEGP_RemoveEffectMask)(AEGP_EffectRefH, std::int32_t);
  std::int32_t (*AEGP_SetEffectMask)(AEGP_EffectRefH, std::uint32_t, std::int32_t,
                                     AEGP_StreamRefH*);
};

inline constexpr const char* kAEGPEffectSuite = "AEGP Effect Suite";

inline constexpr std::int32_t kAEGPEffectSuiteVersion4 = 4;
